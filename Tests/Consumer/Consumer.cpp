// Uses both libraries: the contract's headers and the C++ layer.
#include <LayerData/Table.h>

#include <iostream>
#include <string_view>

#include "Core/Ptr.h"
#include "Data/Exports.h"
#include "Data/Ranges.h"
#include "Data/Version.h"

int main() {
  constexpr std::string_view text = "name,length\nUpper Bridge,12.5\nLower Bridge,7\n";
  double total = 0;
  for (const layerdata::Row row : layerdata::Table::ParseCsv(text))
    total += row["length"].As<double>();

  Core::Ptr<Data::Interfaces::ITable> table;
  if (!Data_ParseCsv(text.data(), text.size(), table.Receive(), nullptr)) return 1;
  for (const Data::Row row : Data::Rows(table)) total -= row.GetOr("length", 0.0);
  std::cout << "LayerData " << LAYERDATA_VERSION << ", difference " << total << "\n";
}
