#include "Data/Exports.h"
#include "Exports/Factory.h"
#include "Schema/SchemaReader.h"

using namespace Data;
using namespace Data::Interfaces;

bool Data_CreateSchema(const Structures::_UUID* uuid, const char* title, const char* description,
                       ISchema** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(uuid);
    Core::CheckArgument(title);
    Core::CheckArgument(description);
    Core::CheckOutPointer(out);
    *out = Core::MakePtr<SchemaImpl>(SchemaHeader{*uuid, title, description}).Detach();
  });
}

bool Data_ParseSchema(IJsonDocument* document, ISchema** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(document);
    Core::CheckOutPointer(out);
    *out = ReadSchema(*document).Detach();
  });
}
