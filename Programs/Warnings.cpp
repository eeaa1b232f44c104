#include "Warnings.h"

#include <LayerData/ColumnData.h>

#include <algorithm>
#include <utility>

#include "Console.h"
#include "Words.h"

namespace program {

namespace {

constexpr std::uint64_t kMostLines = 5;

/// Finds the lines of a delimited text, which the library numbers from 0 and without empty ones.
class Lines {
 public:
  /// @param forget  called now and then: what was read so far need not stay in memory
  Lines(std::string_view text, std::function<void()> forget)
      : text_(text), forget_(std::move(forget)) {}

  /// The line as an editor numbers it. Fast for ascending lines.
  std::uint64_t InEditor(std::uint64_t line) {
    if (line < next_) *this = Lines(text_, forget_);
    while (at_ < text_.size()) {
      ForgetNowAndThen();
      const std::uint64_t first = editorLine_;
      const bool isEmpty = SkipLine();
      if (isEmpty) continue;
      if (next_++ == line) return first;
    }
    return line + 1;
  }

 private:
  void ForgetNowAndThen() {
    constexpr std::size_t kStep = std::size_t{8} << 20;
    if (!forget_ || at_ - forgotten_ < kStep) return;
    forget_();
    forgotten_ = at_;
  }
  /// @return whether there was nothing but white space
  bool SkipLine() {
    bool isInQuotes = false, isEmpty = true;
    while (at_ < text_.size()) {
      const char c = text_[at_++];
      if (c == '\n') ++editorLine_;
      if (c == '\n' && !isInQuotes) break;
      if (c == '"') isInQuotes = !isInQuotes;
      isEmpty &= c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\0';
    }
    return isEmpty;
  }

  std::string_view text_;
  std::function<void()> forget_;
  std::size_t at_ = 0, forgotten_ = 0;
  std::uint64_t next_ = 0, editorLine_ = 1;
};

struct Change {
  const char *column = "", *text = "";
  ld_text_change kind = 0;
  std::uint64_t count = 0, line = 0;
};

const char* Describe(ld_text_change kind) {
  switch (kind) {
    case LD_TEXT_CHANGE_LEADING_ZEROS:
      return "read as a number without its leading zeros";
    case LD_TEXT_CHANGE_NUMBER_FORM:
      return "read as a number that is written in another form";
    case LD_TEXT_CHANGE_QUOTES:
      return "read without quotes that belong to it";
    case LD_TEXT_CHANGE_DATE_WITHOUT_TIME:
      return "read as noon of that day";
    default:
      return "read as a date-time";
  }
}

/// A column of days alone is written again as it was.
bool IsLoss(const layerdata::Table& table, const Change& change) {
  return change.kind != LD_TEXT_CHANGE_DATE_WITHOUT_TIME || !table.HasColumn(change.column) ||
         !layerdata::ColumnData(table[change.column]).HoldsDays();
}

void WarnOfChange(const Change& change, std::uint64_t line, const std::string& source) {
  Warn(AtLine(source, line) + "column " + change.column + ": '" + change.text + "' was " +
       Describe(change.kind) +
       (change.count == 1 ? std::string()
                          : ", and " + Counted(change.count - 1, "value") + " more like it") +
       " (--text keeps a column as it is written)");
}

template <class Warning>
void WarnOfLines(std::uint64_t count, const std::string& source, const char* what,
                 Warning&& warning) {
  for (std::uint64_t i = 0; i < std::min(count, kMostLines); ++i) warning(i);
  if (count > kMostLines)
    Warn(source + ": " + Counted(count - kMostLines, "more line") + " " + what);
}

}  // namespace

void WarnOfLosses(const layerdata::Table& table, const layerdata::ReadReport& report,
                  std::string_view text, const std::string& source, std::function<void()> forget) {
  using layerdata::detail::Ask;
  using layerdata::detail::Call;
  ld_read_report* const found = report.Get();
  const bool isJson = report.Separator().empty();
  Lines lines(text, std::move(forget));
  const auto place = [&](std::uint64_t line) {
    return AtLine(source, isJson ? line : lines.InEditor(line));
  };
  WarnOfLines(Ask<std::uint64_t>(ld_read_report_get_dropped_line_count, found), source,
              "before the header dropped", [&](std::uint64_t i) {
                std::uint64_t line = 0;
                const char* dropped = "";
                Call(ld_read_report_get_dropped_line, found, i, &line, &dropped);
                Warn(place(line) + "dropped, because it stands before the header: " + dropped);
              });
  WarnOfLines(Ask<std::uint64_t>(ld_read_report_get_long_line_count, found), source,
              "with too many values", [&](std::uint64_t i) {
                std::uint64_t line = 0, values = 0;
                Call(ld_read_report_get_long_line, found, i, &line, &values);
                Warn(place(line) + Counted(values, "value") + " for " +
                     Counted(table.ColumnCount(), "column"));
              });
  const auto changes = Ask<std::uint64_t>(ld_read_report_get_change_count, found);
  for (std::uint64_t i = 0; i < changes; ++i) {
    Change change;
    Call(ld_read_report_get_change, found, i, &change.column, &change.kind, &change.count,
         &change.line, &change.text);
    if (IsLoss(table, change))
      WarnOfChange(change, isJson ? change.line : lines.InEditor(change.line), source);
  }
}

layerdata::Error LongLineError(std::string_view text, const std::string& source,
                               const layerdata::Table& table, std::uint64_t line,
                               std::uint64_t valueCount) {
  return layerdata::Error(
      AtLine(source, Lines(text, {}).InEditor(line)) + Counted(valueCount, "value") + " for " +
      Counted(table.ColumnCount(), "column") + " (--long-lines skip or keep reads such a file)");
}

}  // namespace program
