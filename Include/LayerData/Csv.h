#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "LayerData/Handle.h"
#include "LayerData/Options.h"
#include "LayerData/Progress.h"
#include "LayerData/ReadReport.h"

namespace layerdata {

/// Which line of a delimited text names the columns, see `ld_header_line`.
enum class HeaderLine : std::uint32_t {
  Detect = LD_HEADER_LINE_DETECT,
  Yes = LD_HEADER_LINE_YES,
  No = LD_HEADER_LINE_NO
};

/// What to do with a line that has more values than the table has columns.
enum class LongLines : std::uint32_t {
  Fail = LD_LONG_LINES_FAIL,
  Skip = LD_LONG_LINES_SKIP,
  Keep = LD_LONG_LINES_KEEP  ///< without the extra values
};

/// How delimited text is read; see `ld_csv_read_options`. The defaults detect everything.
struct CsvOptions {
  std::string separator{};                 ///< empty to detect it
  std::uint32_t codePage = 0;              ///< 0: by the byte-order mark, UTF-8 without one
  HeaderLine header = HeaderLine::Detect;  ///< which line names the columns
  LongLines longLines = LongLines::Fail;   ///< what becomes of lines with too many values
  std::vector<std::string> textColumns{};  ///< whose cells stay text: "00501" keeps its zeros
  bool allText = false;                    ///< as if all columns were in `textColumns`
  bool unquoteNames = false;               ///< names lose the quotes around them, as values do
  std::uint64_t maxRows = 0;               ///< 0: no limit
  std::uint32_t threads = 0;               ///< 0: as many as the process may use, for large texts
  Progress progress{};                     ///< counts bytes
};

/// How delimited text is written; see `ld_csv_write_options`.
struct CsvWriteOptions {
  std::string separator{};            ///< empty for a comma
  ValueForm form = ValueForm::Exact;  ///< of the values
  bool quoteTexts = false;            ///< all of them; otherwise those that need it
  bool quoteNames = false;       ///< also names that contain quotes, for readers that remove them
  bool header = true;            ///< whether the first line names the columns
  bool windowsLineEnds = false;  ///< carriage return and line feed
  std::uint32_t threads = 0;     ///< 0: as many as the process may use, for large tables
  Progress progress{};           ///< counts rows
};

namespace detail {

/// Reads with the function `read(options, &table, &report, &error)`.
template <class Read>
Handle<ld_table> ReadCsv(const CsvOptions& options, ReadReport* report, Read&& read) {
  ld_csv_read_options record{};
  record.separator = options.separator.c_str();
  record.header = static_cast<ld_header_line>(options.header);
  record.long_lines = static_cast<ld_long_lines>(options.longLines);
  record.unquote_names = options.unquoteNames;
  return ReadTable(record, options, report, read);
}

/// Writes with the function `write(options, &error)` or `write(options, &text, &error)`.
template <class... Result, class Write>
void WriteCsv(const CsvWriteOptions& options, Write&& write, Result... result) {
  ld_csv_write_options record{};
  record.separator = options.separator.c_str();
  record.quoting = options.quoteTexts ? LD_QUOTING_TEXTS : LD_QUOTING_NEEDED;
  record.line_end = options.windowsLineEnds ? LD_LINE_END_CRLF : LD_LINE_END_LF;
  record.quote_names = options.quoteNames;
  record.without_header = !options.header;
  WriteTable(record, options, write, result...);
}

}  // namespace detail
}  // namespace layerdata
