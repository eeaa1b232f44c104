// A valid document that equals itself (repeated names can prevent that) equals its compact form.
// Converting it to a table and back gives valid JSON.

#include <cstdlib>

#include "Core/Ptr.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/ITable.h"

using Core::Ptr;
using namespace Data::Interfaces;

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Ptr<IJsonDocument> document, compact, back;
  Ptr<IString> text;
  Ptr<ITable> table;
  Ptr<Core::IErrorCode> error;
  Data_CreateJsonDocument(document.Receive());
  document->SetContent(data, size);
  if (!document->ToCompactString(text.Receive(), error.Receive())) std::abort();
  if (!document->IsValid()) return 0;
  Data_CreateJsonDocument(compact.Receive());
  const char* bytes = text->GetUtf8();
  compact->SetContent(bytes, text->GetLength());
  if (document->Equals(document.Get()) != document->Equals(compact.Get())) std::abort();
  if (Data_JsonToTable(document.Get(), table.Receive(), error.Receive())) {
    if (!Data_TableToJson(table.Get(), back.Receive(), error.Receive())) std::abort();
    if (!back->IsValid()) std::abort();
  }
  return 0;
}
