#pragma once

#include <LayerData/Table.h>

#include <string>
#include <vector>

#include "Summary.h"

namespace program {

/// One page that needs no other file: the columns with their distributions, and the first rows.
std::string ToHtml(const layerdata::Table& table, const std::vector<ColumnSummary>& summaries,
                   const std::string& title);

}  // namespace program
