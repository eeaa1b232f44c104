#pragma once

#include <LayerData/Table.h>

#include <CLI/CLI.hpp>
#include <string>
#include <utility>
#include <vector>

namespace program {

/// The entries of lists that are separated by commas, as in "id,name". An entry that contains
/// commas stands in quotes: `id,"a,b"`.
std::vector<std::string> SplitLists(const std::vector<std::string>& lists);

/// Checks the text of an option that is such a list: it must name something.
std::string NamesSomething(const std::string& list);

/// "left=right" split at the first "=" before which `isLeft` accepts the text: names may contain
/// "=", too. Both sides are the whole text if that is what it accepts, or if there is no "=".
template <class IsLeft>
std::pair<std::string, std::string> SplitPair(const std::string& text, IsLeft&& isLeft) {
  const auto first = text.find('=');
  for (auto at = first; at != std::string::npos; at = text.find('=', at + 1))
    if (isLeft(text.substr(0, at))) return {text.substr(0, at), text.substr(at + 1)};
  if (first == std::string::npos || isLeft(text)) return {text, text};
  return {text.substr(0, first), text.substr(first + 1)};
}

/// @throws layerdata::Error that lists the columns that there are, unless the table has all these
void RequireColumns(const layerdata::Table& table, const std::vector<std::string>& names,
                    const std::string& source);

/// Adds the option that selects columns.
void AddColumnsOption(CLI::App& command, std::vector<std::string>& lists);
/// The columns of the lists; the table itself if there are none.
/// @throws as `RequireColumns`
layerdata::Table SelectColumns(const layerdata::Table& table, const std::vector<std::string>& lists,
                               const std::string& source);

}  // namespace program
