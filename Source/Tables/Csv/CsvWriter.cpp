#include "Tables/Csv/CsvWriter.h"

#include "Tables/Csv/CsvText.h"
#include "Tables/RowsText.h"
#include "Text/NumberText.h"

namespace Data::impl {

using Core::ValueType;
using Structures::_VARIANT;

namespace {

class CsvRows final : public RowFormatOf<CsvRows> {
 public:
  CsvRows(std::size_t columnCount, const CsvForm& form)
      : RowFormatOf(std::string(form.lineEnd)), columnCount_(columnCount), form_(form) {}

  template <class Row>
  bool AppendRow(Row& row, TextBuffer& text) const {
    for (std::size_t i = 0; i < columnCount_; ++i) {
      if (i != 0) text.Append(form_.separator);
      if (!AppendCell(row, row.Cell(i), text)) return false;
    }
    return true;
  }

 private:
  template <class Row>
  bool AppendCell(Row& row, const _VARIANT& cell, TextBuffer& text) const;
  void AppendText(const PaddedText& value, TextBuffer& text) const;

  std::size_t columnCount_;
  const CsvForm& form_;
};

template <class Row>
bool CsvRows::AppendCell(Row& row, const _VARIANT& cell, TextBuffer& text) const {
  switch (Core::TypeOf(cell)) {
    case ValueType::Null:
      return true;
    case ValueType::Int64:
      return AppendInteger(text, static_cast<std::int64_t>(cell.value[0])), true;
    case ValueType::Double:
      return AppendFixed(text, Core::detail::StoredDouble(cell)), true;
    case ValueType::String:
    case ValueType::JsonDocument:
    case ValueType::XmlDocument:
      return row.UseText(cell, [&](const PaddedText& value) { AppendText(value, text); });
    case ValueType::DateTime:
      if (AppendOwnDateTime(cell, text)) return true;
      [[fallthrough]];
    default:
      return row.UseText(cell, [&](const PaddedText& value) { text.Append(value.View()); });
  }
}

void CsvRows::AppendText(const PaddedText& value, TextBuffer& text) const {
  const char separator = form_.separator.front();
  const auto special = [=](const Platform::ByteBlock& block) {
    return block.Equal(kQuote) | block.Equal(separator);
  };
  char* const begin = text.Tail(value.Size() + Platform::ByteBlock::kSize);
  const std::size_t plain = value.CopyPlain(begin, special);
  if (plain == value.Size() && !form_.alwaysQuote) return text.EndAt(begin + plain);

  const std::string_view view = value.View();
  const bool isQuoted = form_.alwaysQuote || view.find(form_.separator) != std::string_view::npos;
  if (isQuoted) text.Put(kQuote);
  AppendWithDoubledQuotes(view, text);
  if (isQuoted) text.Put(kQuote);
}

void AppendHeader(const TableCursor& table, const CsvForm& form, TextBuffer& text) {
  for (std::size_t i = 0; i < table.ColumnCount(); ++i) {
    if (i != 0) text.Append(form.separator);
    text.Append(table.ColumnName(i));
  }
  text.Append(form.lineEnd);
}

}  // namespace

void AppendWithDoubledQuotes(std::string_view value, TextBuffer& text) {
  for (std::size_t quote; (quote = value.find(kQuote)) != std::string_view::npos;) {
    text.Append(value.substr(0, quote + 1));
    text.Put(kQuote);
    value.remove_prefix(quote + 1);
  }
  text.Append(value);
}

void WriteCsv(Interfaces::ITable& table, const CsvForm& form, Core::Parts& parts,
              TextOutput& output) {
  TableCursor cursor(table);
  TextBuffer header;
  if (form.hasHeader) AppendHeader(cursor, form, header);
  output.Append(header.View());
  WriteRows(cursor, CsvRows(cursor.ColumnCount(), form), parts, output);
}

}  // namespace Data::impl
