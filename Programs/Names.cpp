#include "Names.h"

namespace program {

namespace {

/// Takes the first entry off a list.
std::string TakeEntry(std::string& list) {
  std::size_t end = std::string::npos;
  std::string entry;
  if (list.starts_with('"') && (end = list.find('"', 1)) != std::string::npos &&
      (end + 1 == list.size() || list[end + 1] == ',')) {
    entry = list.substr(1, end - 1);
    ++end;
  } else {
    end = list.find(',');
    entry = list.substr(0, end);
  }
  list = end < list.size() ? list.substr(end + 1) : std::string();
  return entry;
}

}  // namespace

std::vector<std::string> SplitLists(const std::vector<std::string>& lists) {
  std::vector<std::string> entries;
  for (std::string rest : lists)
    while (!rest.empty()) entries.push_back(TakeEntry(rest));
  return entries;
}

std::string NamesSomething(const std::string& list) {
  return list.empty() ? "it names no column" : "";
}

void RequireColumns(const layerdata::Table& table, const std::vector<std::string>& names,
                    const std::string& source) {
  for (const std::string& name : names) {
    if (table.HasColumn(name)) continue;
    std::string message = source + " has no column '" + name + "'; its columns are ";
    if (table.ColumnCount() == 0) message += "none";
    const char* separator = "";
    for (const layerdata::Column column : table.Columns())
      message += std::exchange(separator, ", ") + column.Name();
    throw layerdata::Error(message);
  }
}

void AddColumnsOption(CLI::App& command, std::vector<std::string>& lists) {
  command
      .add_option("-c,--columns", lists, "Only these columns, in this order; separated by commas")
      ->check(NamesSomething)
      ->allow_extra_args(false);
}

layerdata::Table SelectColumns(const layerdata::Table& table, const std::vector<std::string>& lists,
                               const std::string& source) {
  const std::vector<std::string> names = SplitLists(lists);
  if (names.empty()) return table;
  RequireColumns(table, names, source);
  return table.Select(names);
}

}  // namespace program
