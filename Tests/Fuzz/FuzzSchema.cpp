// Any document gives a schema or an error, and a schema that was read can be written and read
// again.

#include <cstdlib>

#include "Core/Ptr.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/ISchema.h"

using Core::Ptr;
using namespace Data::Interfaces;

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Ptr<IJsonDocument> document, written;
  Ptr<ISchema> schema, again;
  Ptr<Core::IErrorCode> error;
  Data_CreateJsonDocument(document.Receive());
  document->SetContent(data, size);
  if (!Data_ParseSchema(document.Get(), schema.Receive(), error.Receive())) return 0;
  if (schema->ToJson(written.Receive(), ' ', 2, error.Receive()))
    Data_ParseSchema(written.Get(), again.Receive(), error.Receive());
  return 0;
}
