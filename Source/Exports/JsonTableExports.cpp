#include "Core/Guard.h"
#include "Data/Exports.h"
#include "Documents/DocumentText.h"
#include "Documents/JsonText.h"
#include "Documents/JsonToTable.h"
#include "Documents/TableToJson.h"
#include "Exports/Factory.h"

using namespace Data::Interfaces;
using namespace Data::impl;

bool Data_JsonToTable(IJsonDocument* document, ITable** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(document);
    Core::CheckOutPointer(out);
    // The caller's own document may release itself while it is being called.
    const Core::Ptr<IJsonDocument> held(document);
    if (!document->IsValid()) throw std::runtime_error("JsonDocument content is not valid");
    const DocumentText content(*ContentOf(*document));
    Core::Parts onePart;
    *out = ReadJsonTable(JsonTextOf(content.View()), {}, onePart).table.Detach();
  });
}

bool Data_TableToJson(ITable* table, IJsonDocument** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(table);
    Core::CheckOutPointer(out);
    Core::Parts parts;
    MemoryText json;
    WriteJsonTable(*table, {}, parts, json);
    *out = JsonDocumentImpl::FromJson(json.Take()).Detach();
  });
}

bool Data_TableRowToJson(IRow* row, IJsonDocument** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(row);
    Core::CheckOutPointer(out);
    *out = WriteJsonRow(*row).Detach();
  });
}
