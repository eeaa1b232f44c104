#include <string>

#include "C/ExactValues.h"
#include "C/Writing.h"
#include "C/WritingCells.h"
#include "Documents/JsonWriter.h"
#include "Tables/Csv/CsvText.h"
#include "Tables/Csv/CsvWriter.h"
#include "Tables/ValueTypeDetection.h"

using namespace Data;
using namespace Data::c;
using Core::ValueType;
using impl::PaddedText;
using impl::TextBuffer;
using Platform::ByteBlock;
using Structures::_VARIANT;

namespace {

// -- Texts --

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsDetectedAsText(std::string_view text) {
  const bool mayBeOther =
      impl::IsDigit(text[0]) || text[0] == '-' || text[0] == '.' || text[0] == 'T';
  return !mayBeOther || impl::DetectValueType(text) == ValueType::String;
}

/// Whether a reader would take a text for something else for the sake of its ends or its type.
bool IsPlainAtEnds(std::string_view text) {
  return !text.empty() && !impl::IsLineSpace(text.front()) && !impl::IsLineSpace(text.back()) &&
         IsDetectedAsText(text) && !text.starts_with(kByteOrderMark);
}

void AppendQuoted(std::string_view text, TextBuffer& out) {
  out.Put(impl::kQuote);
  impl::AppendWithDoubledQuotes(text, out);
  out.Put(impl::kQuote);
}

/// The bytes that only quotes keep from ending a value.
class SpecialBytes {
 public:
  /// @param isOneColumn  whether no separator stands in the text: one that a reader looks for must
  ///                     not stand there by chance
  SpecialBytes(std::string_view separator, bool isOneColumn) {
    constexpr std::string_view kCandidates = ",;\t|";
    Mark("\"\n\r");
    Mark(separator);
    if (isOneColumn) Mark(kCandidates);
  }

  bool AreIn(std::string_view text) const {
    return text.find_first_of(bytes_) != std::string_view::npos;
  }
  /// Marks these bytes in a block.
  ByteBlock operator()(const ByteBlock& block) const {
    ByteBlock marks = block.Equal(bytes_.front());
    for (const char byte : bytes_) marks = marks | block.Equal(byte);
    return marks;
  }

 private:
  void Mark(std::string_view bytes) {
    for (const char byte : bytes)
      if (bytes_.find(byte) == std::string::npos) bytes_ += byte;
  }

  std::string bytes_;
};

/// Whether a name that is written as it is reads as one value: its quotes are balanced, and neither
/// a line end nor the separator stands outside them or arises together with the one that follows.
bool ReadsAsOneValue(std::string_view name, std::string_view separator) {
  const std::string text = std::string(name).append(separator);
  bool isQuoted = false;
  for (std::size_t i = 0; i < name.size(); ++i) {
    isQuoted ^= name[i] == impl::kQuote;
    if (isQuoted) continue;
    if (name[i] == impl::kLineEnd || text.compare(i, separator.size(), separator) == 0)
      return false;
  }
  return !isQuoted;
}

// -- The exact form --

class ExactCsvRows final : public impl::RowFormatOf<ExactCsvRows> {
 public:
  ExactCsvRows(const impl::TableCursor& table, const impl::CsvForm& form)
      : RowFormatOf(std::string()),
        form_(form),
        dates_(table),
        columnCount_(table.ColumnCount()),
        special_(form.separator, columnCount_ == 1) {}

  void AppendHeader(const impl::TableCursor& table, bool quoteNames, TextBuffer& text) const;
  template <class Row>
  bool AppendRow(Row& row, TextBuffer& text) const;

 private:
  template <class Row>
  bool AppendCell(Row& row, const _VARIANT& cell, std::size_t column, TextBuffer& text) const;
  void AppendText(const PaddedText& value, TextBuffer& text) const;
  void AppendDateTime(const PaddedText& value, TextBuffer& text) const;

  const impl::CsvForm& form_;
  DateColumns dates_;
  std::size_t columnCount_;
  SpecialBytes special_;
};

void ExactCsvRows::AppendHeader(const impl::TableCursor& table, bool quoteNames,
                                TextBuffer& text) const {
  for (std::size_t i = 0; i < columnCount_; ++i) {
    if (i != 0) text.Append(form_.separator);
    const std::string_view name = table.ColumnName(i);
    const bool isPlain =
        quoteNames ? !special_.AreIn(name) : ReadsAsOneValue(name, form_.separator);
    if (isPlain && IsPlainAtEnds(name)) {
      text.Append(name);
    } else {
      AppendQuoted(name, text);
    }
  }
  text.Append(form_.lineEnd);
}

template <class Row>
bool ExactCsvRows::AppendRow(Row& row, TextBuffer& text) const {
  for (std::size_t i = 0; i < columnCount_; ++i) {
    if (i != 0) text.Append(form_.separator);
    if (!AppendCell(row, row.Cell(i), i, text)) return false;
  }
  text.Append(form_.lineEnd);
  return true;
}

void ExactCsvRows::AppendText(const PaddedText& value, TextBuffer& text) const {
  char* const begin = text.Tail(value.Size() + ByteBlock::kSize);
  const std::size_t plain = value.CopyPlain(begin, special_);
  if (plain == value.Size() && !form_.alwaysQuote && IsPlainAtEnds(value.View())) {
    text.EndAt(begin + plain);
  } else {
    AppendQuoted(value.View(), text);
  }
}

/// The text of a date-time of the caller's own, which can be anything.
void ExactCsvRows::AppendDateTime(const PaddedText& value, TextBuffer& text) const {
  const std::string_view view = value.View();
  if (impl::DetectValueType(view) == ValueType::DateTime && !special_.AreIn(view)) {
    text.Append(view);
  } else {
    AppendText(value, text);
  }
}

void AppendReal(const _VARIANT& cell, TextBuffer& text) {
  const auto real = RealOf(cell);
  if (!real || !impl::AppendJsonDouble(text, *real)) text.Append(ExactText(cell));
}

template <class Row>
bool ExactCsvRows::AppendCell(Row& row, const _VARIANT& cell, std::size_t column,
                              TextBuffer& text) const {
  if (!HasValue(cell)) return true;
  switch (Core::KindOf(Core::TypeOf(cell))) {
    case Core::ValueKind::SignedInteger:
      if (Core::TypeOf(cell) != ValueType::Int64) break;
      impl::AppendInteger(text, static_cast<std::int64_t>(cell.value[0]));
      return true;
    case Core::ValueKind::Real:
      AppendReal(cell, text);
      return true;
    case Core::ValueKind::DateTime:
      if (dates_.Append(cell, column, text)) return true;
      return row.UseText(cell, [&](const PaddedText& value) { AppendDateTime(value, text); });
    case Core::ValueKind::Text:
      return row.UseText(cell, [&](const PaddedText& value) { AppendText(value, text); });
    default:
      break;
  }
  if (Core::IsPrimitive(Core::TypeOf(cell))) return text.Append(ExactText(cell)), true;
  return row.UseText(cell, [&](const PaddedText& value) { AppendText(value, text); });
}

void WriteExactCsv(Interfaces::ITable& table, const impl::CsvForm& form, bool quoteNames,
                   Core::Parts& parts, impl::TextOutput& output) {
  impl::TableCursor cursor(table);
  const ExactCsvRows rows(cursor, form);
  TextBuffer header;
  if (form.hasHeader) rows.AppendHeader(cursor, quoteNames, header);
  output.Append(header.View());
  impl::WriteRows(cursor, rows, parts, output);
}

// -- Options --

/// @throws std::runtime_error "The separator cannot be told from the values!"
void CheckSeparator(std::string_view separator) {
  constexpr std::string_view kOfValues =
      "\"\r\n-.:0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  const bool isTrimmed = separator.size() > 1 && impl::Trim(separator).size() != separator.size();
  if (isTrimmed || separator.find_first_of(kOfValues) != std::string_view::npos)
    throw std::runtime_error("The separator cannot be told from the values!");
}

/// Checked options, ready to write a table.
class CsvJob {
 public:
  explicit CsvJob(const ld_csv_write_options* given) : options_(ReadOptions(given)) {
    isExact_ = CheckedForm(options_) == LD_VALUE_FORM_EXACT;
    form_.alwaysQuote =
        Enumerator<ld_quoting>(options_.quoting, LD_QUOTING_TEXTS, "ld_quoting") != 0;
    if (Enumerator<ld_line_end>(options_.line_end, LD_LINE_END_CRLF, "ld_line_end") != 0)
      form_.lineEnd = "\r\n";
    form_.hasHeader = !options_.without_header;
    const bool hasSeparator = options_.separator && *options_.separator;
    form_.separator = hasSeparator ? options_.separator : ",";
    if (isExact_) CheckSeparator(form_.separator);
  }

  const ld_csv_write_options& Options() const { return options_; }
  void operator()(Interfaces::ITable& table, Core::Parts& parts, impl::TextOutput& output) const {
    if (isExact_) return WriteExactCsv(table, form_, options_.quote_names, parts, output);
    impl::WriteCsv(table, form_, parts, output);
  }

 private:
  ld_csv_write_options options_;
  impl::CsvForm form_;
  bool isExact_;
};

}  // namespace

bool ld_csv_write(ld_table* table, const ld_csv_write_options* options, ld_string** result,
                  ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    const CsvJob job(options);
    WriteText(table, job.Options(), result, job);
    return true;
  });
}

bool ld_csv_write_file(ld_table* table, const char* path, const ld_csv_write_options* options,
                       ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    const CsvJob job(options);
    WriteFile(table, path, job.Options(), job);
    return true;
  });
}
