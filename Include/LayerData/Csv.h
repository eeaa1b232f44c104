#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "LayerData/Handle.h"
#include "LayerData/Progress.h"

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

/// What reading a text found, and what the text lost.
class ReadReport {
 public:
  /// Of nothing: to be passed to a reading.
  ReadReport() noexcept = default;
  explicit ReadReport(detail::Handle<ld_read_report> report) noexcept
      : report_(std::move(report)) {}

  /// The separator of the values.
  std::string Separator() const {
    return detail::Ask<const char*>(ld_read_report_get_separator, Get());
  }
  /// Whether a line names the columns.
  bool HasHeader() const { return detail::Ask<bool>(ld_read_report_has_header, Get()); }
  /// The code page that was used: 65001 for UTF-8, 1200 and 1201 for UTF-16.
  std::uint32_t CodePage() const {
    return detail::Ask<std::uint32_t>(ld_read_report_get_code_page, Get());
  }
  /// The number of lines that were read, without empty ones.
  std::uint64_t LineCount() const {
    return detail::Ask<std::uint64_t>(ld_read_report_get_line_count, Get());
  }
  /// Everything that was dropped or would not be written as it was read, in words.
  std::vector<std::string> Problems() const {
    const auto count = detail::Ask<std::uint64_t>(ld_read_report_get_problem_count, Get());
    std::vector<std::string> problems;
    for (std::uint64_t i = 0; i < count; ++i)
      problems.emplace_back(
          ld_error_message(detail::Receive<ld_error>(ld_read_report_get_problem, Get(), i).Get()));
    return problems;
  }
  friend std::ostream& operator<<(std::ostream& out, const ReadReport& report) {
    for (const std::string& problem : report.Problems()) out << problem << '\n';
    return out;
  }

  /// For the numbers of single lines and columns.
  ld_read_report* Get() const noexcept { return report_.Get(); }

 private:
  detail::Handle<ld_read_report> report_;
};

namespace detail {

/// Reads with the function `read(options, &table, &report, &error)`.
template <class Read>
Handle<ld_table> ReadCsv(const CsvOptions& options, ReadReport* report, Read&& read) {
  std::vector<const char*> textColumns;
  for (const std::string& name : options.textColumns) textColumns.push_back(name.c_str());
  ProgressCall progress(options.progress);
  ld_csv_read_options record{};
  record.size = sizeof record;
  record.separator = options.separator.c_str();
  record.code_page = options.codePage;
  record.header = static_cast<ld_header_line>(options.header);
  record.long_lines = static_cast<ld_long_lines>(options.longLines);
  record.thread_count = options.threads;
  record.text_columns = textColumns.data();
  record.text_column_count = textColumns.size();
  record.max_rows = options.maxRows;
  record.progress = progress.Function();
  record.progress_context = &progress;
  record.all_text = options.allText;
  record.unquote_names = options.unquoteNames;
  ld_table* table = nullptr;
  ld_read_report* found = nullptr;
  progress.Run([&] { Call(read, &record, &table, report ? &found : nullptr); });
  if (report) *report = ReadReport(Handle(found));
  return Handle(table);
}

/// Writes with the function `write(options, &error)` or `write(options, &text, &error)`.
template <class... Result, class Write>
void WriteCsv(const CsvWriteOptions& options, Write&& write, Result... result) {
  ProgressCall progress(options.progress);
  ld_csv_write_options record{};
  record.size = sizeof record;
  record.separator = options.separator.c_str();
  record.form = static_cast<ld_value_form>(options.form);
  record.quoting = options.quoteTexts ? LD_QUOTING_TEXTS : LD_QUOTING_NEEDED;
  record.line_end = options.windowsLineEnds ? LD_LINE_END_CRLF : LD_LINE_END_LF;
  record.thread_count = options.threads;
  record.progress = progress.Function();
  record.progress_context = &progress;
  record.quote_names = options.quoteNames;
  record.without_header = !options.header;
  progress.Run([&] { Call(write, &record, result...); });
}

}  // namespace detail
}  // namespace layerdata
