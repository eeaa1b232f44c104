#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Core/Ptr.h"
#include "Tables/TableImpl.h"

namespace Data::impl {

/// What to do with a line that has more values than the table has columns.
enum class ExtraValues { Fail, DropValues, DropLine };

struct CsvResult {
  Core::Ptr<TableImpl> table;
  /// One message for each line that lost values or was skipped.
  std::vector<std::string> problems;
};

/// Reads delimited text into a table: finds the layout, splits lines and values, types each cell.
/// @param separator  empty to detect it
/// @throws std::runtime_error "No lines detected in the csv content", "Csv file
///         does not have consistent usage of column separator between lines!,
///         Columns %d vs Values %d at line %d" (only for `ExtraValues::Fail`)
CsvResult ReadCsv(std::string_view content, std::string_view separator, ExtraValues extraValues);

}  // namespace Data::impl
