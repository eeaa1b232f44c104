#include "Tables/Csv/CsvWriter.h"

#include <charconv>

#include "Tables/Csv/CsvText.h"
#include "Tables/TableCursor.h"

namespace Data::impl {

using Core::ValueType;
using Structures::_VARIANT;

namespace {

class CsvWriter {
 public:
  CsvWriter(TableCursor& cursor, std::string_view separator, bool alwaysQuote)
      : cursor_(cursor), separator_(separator), alwaysQuote_(alwaysQuote) {}

  void AddHeader();
  /// Appends the cursor's current row.
  void AddRow();
  void EndLine() { text_ += kLineEnd; }
  std::string TakeText() { return std::move(text_); }

 private:
  void AddCell(const _VARIANT& cell);
  void AddText(std::string_view text);
  void AddInteger(std::int64_t value);

  TableCursor& cursor_;
  std::string_view separator_;
  bool alwaysQuote_;
  std::string text_;
};

void CsvWriter::AddHeader() {
  for (std::size_t i = 0; i < cursor_.ColumnCount(); ++i) {
    if (i != 0) text_ += separator_;
    text_ += cursor_.ColumnName(i);
  }
}

void CsvWriter::AddRow() {
  for (std::size_t i = 0; i < cursor_.ColumnCount(); ++i) {
    if (i != 0) text_ += separator_;
    AddCell(cursor_.Cell(i));
  }
}

void CsvWriter::AddCell(const _VARIANT& cell) {
  switch (Core::TypeOf(cell)) {
    case ValueType::Null:
      return;
    case ValueType::Int64:
      return AddInteger(static_cast<std::int64_t>(cell.value[0]));
    case ValueType::String:
    case ValueType::JsonDocument:
    case ValueType::XmlDocument:
      return cursor_.UseText(cell, [this](std::string_view text) { AddText(text); });
    default:
      cursor_.UseText(cell, [this](std::string_view text) { text_ += text; });
  }
}

void CsvWriter::AddText(std::string_view text) {
  const bool isQuoted = alwaysQuote_ || text.find(separator_) != std::string_view::npos;
  if (isQuoted) text_ += kQuote;
  for (;;) {
    const std::size_t quote = text.find(kQuote);
    if (quote == std::string_view::npos) break;
    text_.append(text, 0, quote + 1) += kQuote;
    text.remove_prefix(quote + 1);
  }
  text_ += text;
  if (isQuoted) text_ += kQuote;
}

void CsvWriter::AddInteger(std::int64_t value) {
  char digits[20];
  text_.append(digits, std::to_chars(digits, std::end(digits), value).ptr);
}

}  // namespace

std::string WriteCsv(Interfaces::ITable& table, std::string_view separator, bool alwaysQuote) {
  TableCursor cursor(table);
  CsvWriter writer(cursor, separator, alwaysQuote);
  writer.AddHeader();
  writer.EndLine();
  for (bool isFirst = true; cursor.NextRow(); isFirst = false) {
    if (!isFirst) writer.EndLine();
    writer.AddRow();
  }
  return writer.TakeText();
}

}  // namespace Data::impl
