// Any bytes give a table or an error, and a table can be written and its text read again.

#include <cstdlib>

#include "Core/Ptr.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/ITable.h"

using Core::Ptr;
using namespace Data::Interfaces;

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Ptr<ITable> table, separated;
  Ptr<IObjectList> problems;
  Ptr<Core::IErrorCode> error;
  Data_ParseCsvWithSeparator(data, "::", separated.Receive(), size, error.Receive());
  if (!Data_ParseCsvWithErrors(data, table.Receive(), problems.Receive(), size, 1, error.Receive()))
    return 0;
  Ptr<IString> csv;
  Ptr<IJsonDocument> json;
  if (!Data_ConvertTableToCsv(table.Get(), ",", csv.Receive(), true, error.Receive())) std::abort();
  Data_TableToJson(table.Get(), json.Receive(), error.Receive());  // refuses NaN and infinity
  const char* text = csv->GetUtf8();
  Ptr<ITable> again;
  Data_ParseCsv(text, csv->GetLength(), again.Receive(), error.Receive());
  return 0;
}
