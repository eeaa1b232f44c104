// The C++ layer in one page: reads a table, describes it, filters, computes, groups, joins, sorts,
// writes it in two formats, and infers its schema.
//
//   Airports airports.csv

#include <LayerData/Print.h>
#include <LayerData/Schema.h>
#include <LayerData/Table.h>

#include <iostream>

using namespace layerdata;

int main(int count, char** arguments) try {
  const Table airports = Table::ReadCsv(count > 1 ? arguments[1] : "airports.csv");
  std::cout << airports.Describe();

  Table north = airports.Filter([](const Row& row) { return row["latitude"].As<double>() > 60; });
  north.AddColumn("polar night",
                  [](const Row& row) { return row["latitude"].As<double>() > 67.4; });
  const Table states = airports.GroupBy({"state"}, {Count("airports in state")});
  north = north.Join(states, "state").SortBy({"latitude", Order::Descending});
  std::cout << north;

  north.WriteCsv("north.csv");
  north.WriteJson("north.json");
  std::cout << Schema::Infer(north, "Northern airports");
} catch (const Error& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
