#include "C/ReadReport.h"

#include <utility>

#include "C/Call.h"
#include "C/Utf8.h"
#include "Core/ErrorCodeImpl.h"

using namespace Data;
using namespace Data::c;

static_assert(LD_TEXT_CHANGE_DATE_FORM == static_cast<int>(impl::TextChange::DateForm));

namespace Data::c {

ReadReport::ReadReport(impl::CsvResult& result, std::uint32_t usedCodePage, bool wellFormed)
    : separator(std::move(result.separator)),
      hasHeader(result.hasHeader),
      codePage(usedCodePage),
      isWellFormed(wellFormed),
      columnCount(result.table->ColumnCount()),
      lineCount(result.lineCount),
      rowCount(result.table->RowCount()),
      droppedLines(std::move(result.preamble)),
      longLines(std::move(result.longLines)) {
  TakeChanges(*result.table, result.changes);
}

ReadReport::ReadReport(impl::JsonTableResult& result, std::uint64_t lines, const InputText& text)
    : codePage(text.CodePage()),
      isWellFormed(IsUtf8(text.View())),
      columnCount(result.table->ColumnCount()),
      lineCount(lines),
      rowCount(result.table->RowCount()) {
  TakeChanges(*result.table, result.changes);
}

void ReadReport::TakeChanges(const impl::TableImpl& table,
                             std::vector<impl::ColumnChanges>& byColumn) {
  for (std::size_t i = 0; i < byColumn.size(); ++i)
    for (std::size_t kind = 0; kind < impl::kTextChanges; ++kind)
      if (auto& texts = byColumn[i][kind]; texts.count != 0)
        changes.push_back({table.Header().Columns()[i]->Name(), static_cast<impl::TextChange>(kind),
                           std::move(texts)});
}

namespace {

/// What happened to one value, and to several.
struct Description {
  const char *one, *several;
};

Description Describe(impl::TextChange kind) {
  switch (kind) {
    case impl::TextChange::LeadingZeros:
      return {"value lost leading zeros", "values lost leading zeros"};
    case impl::TextChange::NumberForm:
      return {"number is not in its shortest form", "numbers are not in their shortest form"};
    case impl::TextChange::Quotes:
      return {"value lost quotes", "values lost quotes"};
    case impl::TextChange::DateWithoutTime:
      return {"date was read as noon of its day", "dates were read as noon of their days"};
    default:
      return {"value was read as a date-time", "values were read as date-times"};
  }
}

std::string DescribeDroppedLine(std::uint64_t line, const std::string& text) {
  return "Line " + std::to_string(line) + " was dropped: " + text;
}

std::string DescribeChange(const ReadReport::Change& change) {
  const auto& [count, firstLine, firstText] = change.texts;
  const Description description = Describe(change.kind);
  return "Column " + change.column + ": " + std::to_string(count) + " " +
         (count == 1 ? description.one : description.several) +
         (count == 1 ? ", at line " : ", first at line ") + std::to_string(firstLine) + ": " +
         firstText;
}

}  // namespace

std::string ReadReport::Problem(std::uint64_t index) const {
  if (!isWellFormed && index-- == 0)
    return "The text is not well-formed UTF-8: its code page is probably another.";
  if (index < droppedLines.size()) return DescribeDroppedLine(index, droppedLines[index]);
  index -= droppedLines.size();
  if (index < longLines.size()) return impl::LongLineMessage(columnCount, longLines[index]);
  return DescribeChange(changes[index - longLines.size()]);
}

namespace {

/// Reads a member of a report.
template <class Result, class Get>
bool Read(ld_read_report* self, Result* result, ld_error** error, Get get) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(result);
    *result = get(Self<ReadReport>(self));
    return true;
  });
}

/// Reads an entry of a list of a report.
template <class List, class Give, class... Results>
bool ReadEntry(ld_read_report* self, List ReadReport::*list, std::uint64_t index, ld_error** error,
               Give give, Results*... results) {
  return Call(error, [&](Core::IErrorCode**) {
    (CheckResult(results), ...);
    const auto& entries = Self<ReadReport>(self).*list;
    CheckIndex(index, entries.size());
    give(entries[index]);
    return true;
  });
}

}  // namespace

}  // namespace Data::c

bool ld_read_report_get_separator(ld_read_report* self, const char** result, ld_error** error) {
  return Read(self, result, error, [](auto& report) { return report.separator.c_str(); });
}

bool ld_read_report_has_header(ld_read_report* self, bool* result, ld_error** error) {
  return Read(self, result, error, [](auto& report) { return report.hasHeader; });
}

bool ld_read_report_get_code_page(ld_read_report* self, uint32_t* result, ld_error** error) {
  return Read(self, result, error, [](auto& report) { return report.codePage; });
}

bool ld_read_report_is_well_formed(ld_read_report* self, bool* result, ld_error** error) {
  return Read(self, result, error, [](auto& report) { return report.isWellFormed; });
}

bool ld_read_report_get_line_count(ld_read_report* self, uint64_t* result, ld_error** error) {
  return Read(self, result, error, [](auto& report) { return report.lineCount; });
}

bool ld_read_report_get_row_count(ld_read_report* self, uint64_t* result, ld_error** error) {
  return Read(self, result, error, [](auto& report) { return report.rowCount; });
}

bool ld_read_report_get_dropped_line_count(ld_read_report* self, uint64_t* result,
                                           ld_error** error) {
  return Read(self, result, error, [](auto& report) { return report.droppedLines.size(); });
}

bool ld_read_report_get_dropped_line(ld_read_report* self, uint64_t index, uint64_t* line,
                                     const char** text, ld_error** error) {
  const auto give = [&](const std::string& dropped) {
    *line = index;
    *text = dropped.c_str();
  };
  return ReadEntry(self, &ReadReport::droppedLines, index, error, give, line, text);
}

bool ld_read_report_get_long_line_count(ld_read_report* self, uint64_t* result, ld_error** error) {
  return Read(self, result, error, [](auto& report) { return report.longLines.size(); });
}

bool ld_read_report_get_long_line(ld_read_report* self, uint64_t index, uint64_t* line,
                                  uint64_t* value_count, ld_error** error) {
  const auto give = [&](impl::LongLine found) {
    *line = found.line;
    *value_count = found.valueCount;
  };
  return ReadEntry(self, &ReadReport::longLines, index, error, give, line, value_count);
}

bool ld_read_report_get_change_count(ld_read_report* self, uint64_t* result, ld_error** error) {
  return Read(self, result, error, [](auto& report) { return report.changes.size(); });
}

bool ld_read_report_get_change(ld_read_report* self, uint64_t index, const char** column,
                               ld_text_change* kind, uint64_t* count, uint64_t* first_line,
                               const char** first_text, ld_error** error) {
  const auto give = [&](const ReadReport::Change& change) {
    *column = change.column.c_str();
    *kind = static_cast<ld_text_change>(change.kind);
    *count = change.texts.count;
    *first_line = change.texts.firstLine;
    *first_text = change.texts.firstText.c_str();
  };
  return ReadEntry(self, &ReadReport::changes, index, error, give, column, kind, count, first_line,
                   first_text);
}

bool ld_read_report_get_problem_count(ld_read_report* self, uint64_t* result, ld_error** error) {
  return Read(self, result, error, [](auto& report) { return report.ProblemCount(); });
}

bool ld_read_report_get_problem(ld_read_report* self, uint64_t index, ld_error** result,
                                ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(result);
    const auto& report = Self<ReadReport>(self);
    CheckIndex(index, report.ProblemCount());
    auto problem =
        Core::Ptr<Core::IErrorCode>::Adopt(new Core::impl::ErrorCodeImpl(report.Problem(index), 0));
    *result = reinterpret_cast<ld_error*>(problem.Detach());
    return true;
  });
}
