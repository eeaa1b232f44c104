// Values and objects for a debugger to show.

#include <LayerData/Table.h>

#include "Core/Ptr.h"
#include "Core/Variant.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/ITable.h"

extern "C" void StopHere() { asm volatile(""); }

namespace {

void ShowContract() {
  Core::Ptr<Data::Interfaces::IString> text, none;
  Data_CreateString(text.Receive());
  text->SetUtf8("Jungfrau \"4158\"", 15);
  Core::Ptr<Data::Interfaces::ITable> table;
  Data_CreateTable(table.Receive(), nullptr);
  table->AddColumn("name");
  table->AddColumn("height");
  const Core::Variant cells[] = {"a text that is longer than a record", 4158};
  Data::Interfaces::IRow* const added = table->AddRow(cells, 2);
  const Core::Ptr<Data::Interfaces::IRow> row(added);
  const Core::Variant integer(-7), real(2.5), truth(true), inlined("Eiger"), null;
  const Core::Variant reference(text);
  StopHere();
}

void ShowLayer() {
  const layerdata::Table table = layerdata::Table::ParseCsv("name,first\nEiger,1858-08-11\n,\n");
  const layerdata::Row row = table[0];
  const layerdata::Column column = table["first"];
  const layerdata::Cell cell = row["name"];
  const layerdata::Value date(row["first"]), number(std::uint64_t{1} << 63);
  const layerdata::Text text = table.ToCsv();
  const layerdata::Json json = layerdata::Json::Parse("{\"a\": 1}");
  ld_table* const handle = table.Get();
  const ld_variant record = date.Record();
  layerdata::Table moved = table;
  const layerdata::Table taken = std::move(moved);
  StopHere();
  static_cast<void>(handle);
  static_cast<void>(record);
}

}  // namespace

int main() {
  ShowContract();
  ShowLayer();
}
