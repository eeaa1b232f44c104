// Rows with values of every type as JSON: a table can be written exactly when each of its rows can,
// the result is valid JSON, and reading it as a table does not crash.

#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/ITable.h"
#include "Fuzz.h"

using namespace Data::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Input input(data, std::min<std::size_t>(size, 400));
  const auto table = New(Data_CreateTable);
  const std::uint32_t columns = 1 + input.Below(4);
  for (std::uint32_t i = 0; i < columns; ++i)
    table->AddColumn((input.Text(6) + static_cast<char>('a' + i)).c_str());
  bool areWritten = true;
  while (!input.IsEmpty()) {
    Variant values[4];
    const auto count = static_cast<std::uint64_t>(table->GetColumnCount());
    for (std::uint64_t i = 0; i < count; ++i) values[i] = AnyValue(input);
    IRow* row = table->AddRow(values, count);
    Ptr<IJsonDocument> document;
    const bool isWritten = Data_TableRowToJson(row, document.Receive(), nullptr);
    Require(!isWritten || document->IsValid());
    areWritten = areWritten && isWritten;
  }
  Ptr<IJsonDocument> whole;
  Ptr<ITable> again;
  Require(Data_TableToJson(table.Get(), whole.Receive(), nullptr) == areWritten);
  if (!areWritten) return 0;
  Require(whole->IsValid());
  Data_JsonToTable(whole.Get(), again.Receive(), nullptr);
  CsvOf(table);
  return 0;
}
