#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Core/Parts.h"
#include "Core/Ptr.h"
#include "Tables/Csv/CsvLayout.h"
#include "Tables/Csv/CsvRows.h"
#include "Tables/TableImpl.h"

namespace Data::impl {

/// How to read delimited text; the defaults are what `Data_ParseCsv` does.
struct CsvOptions {
  /// Empty to detect it.
  std::string_view separator;
  ExtraValues extraValues = ExtraValues::Fail;
  CsvHeader header = CsvHeader::Detect;
  bool unquotesNames = false;
  /// Names of columns whose cells are text as written, as they are or in the quotes of the header.
  std::vector<std::string_view> textColumns;
  bool isAllText = false;
  std::size_t maxRows = SIZE_MAX;
  bool findsChanges = false;
};

struct CsvResult {
  Core::Ptr<TableImpl> table;
  std::string separator;
  bool hasHeader = false;
  /// Lines read that are not empty. All numbers of lines are indexes among them.
  std::size_t lineCount = 0;
  /// The lines before the first one that became names or a row.
  std::vector<std::string> preamble;
  /// Those that lost values or were skipped.
  std::vector<LongLine> longLines;
  /// By column, if asked for.
  std::vector<ColumnChanges> changes;
};

/// Reads delimited text into a table: finds the layout, splits lines and values, types each cell.
/// The lines are read in parts, with the same result as in one.
/// @throws std::runtime_error "No lines detected in the csv content", "Csv file does not have
///         consistent usage of column separator between lines!, Columns %d vs Values %d at line %d"
///         (only for `ExtraValues::Fail`), "The text has no column %s!", as `CellLimit::AddRow`
CsvResult ReadCsv(std::string_view content, const CsvOptions& options, Core::Parts& parts);

/// What is wrong with a long line.
std::string LongLineMessage(std::size_t columnCount, LongLine line);

}  // namespace Data::impl
