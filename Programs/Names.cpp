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

void RequireColumns(const layerdata::Table& table, const std::vector<std::string>& names,
                    const std::string& source) {
  for (const std::string& name : names) {
    if (table.HasColumn(name)) continue;
    std::string message = source + " has no column '" + name + "'; its columns are ";
    const char* separator = "";
    for (const layerdata::Column column : table.Columns())
      message += std::exchange(separator, ", ") + column.Name();
    throw layerdata::Error(message);
  }
}

}  // namespace program
