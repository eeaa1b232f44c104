#pragma once

#include <LayerData/Table.h>

#include <string>
#include <utility>
#include <vector>

namespace program {

/// The entries of lists that are separated by commas, as in "id,name". An entry that contains
/// commas stands in quotes: `id,"a,b"`.
std::vector<std::string> SplitLists(const std::vector<std::string>& lists);

/// "left=right" split at the "=" before which `isLeft` accepts the text; both sides are the whole
/// text if there is none.
template <class IsLeft>
std::pair<std::string, std::string> SplitPair(const std::string& text, IsLeft&& isLeft) {
  for (auto at = text.find('='); at != std::string::npos; at = text.find('=', at + 1))
    if (isLeft(text.substr(0, at))) return {text.substr(0, at), text.substr(at + 1)};
  return {text, text};
}

/// @throws layerdata::Error that lists the columns that there are, unless the table has all these
void RequireColumns(const layerdata::Table& table, const std::vector<std::string>& names,
                    const std::string& source);

}  // namespace program
