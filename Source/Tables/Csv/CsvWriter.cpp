#include "Tables/Csv/CsvWriter.h"

#include <algorithm>
#include <charconv>

#include "Core/VariantConversions.h"
#include "Data/Interfaces/IColumn.h"
#include "Data/Interfaces/IRow.h"
#include "Tables/Csv/CsvText.h"

namespace Data::impl {

using Core::ValueType;
using Structures::_VARIANT;

namespace {

class CsvWriter {
 public:
  CsvWriter(std::string_view separator, bool alwaysQuote)
      : separator_(separator), alwaysQuote_(alwaysQuote) {}

  void AddHeader(Interfaces::ITable& table);
  void AddRow(const _VARIANT* cells, std::size_t count);
  void EndLine() { text_ += kLineEnd; }
  std::string TakeText() { return std::move(text_); }

 private:
  void AddCell(const _VARIANT& cell);
  void AddText(std::string_view text);
  void AddInteger(std::int64_t value);

  std::string_view separator_;
  bool alwaysQuote_;
  std::string text_;
};

void CsvWriter::AddHeader(Interfaces::ITable& table) {
  const auto count = static_cast<std::int32_t>(table.GetColumnCount());
  for (std::int32_t i = 0; i < count; ++i) {
    if (i != 0) text_ += separator_;
    text_ += table.GetColumn(i)->GetName();
  }
  EndLine();
}

void CsvWriter::AddRow(const _VARIANT* cells, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (i != 0) text_ += separator_;
    AddCell(cells[i]);
  }
}

void CsvWriter::AddCell(const _VARIANT& cell) {
  switch (Core::TypeOf(cell)) {
    case ValueType::Null:
      return;
    case ValueType::Int64:
      return AddInteger(static_cast<std::int64_t>(cell.value[0]));
    case ValueType::String:
      return AddText(Core::GetStringView(cell));
    case ValueType::JsonDocument:
    case ValueType::XmlDocument:
      return AddText(Core::ToText(cell));
    default:
      text_ += Core::ToText(cell);
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
  CsvWriter writer(separator, alwaysQuote);
  writer.AddHeader(table);
  const std::int64_t columns = table.GetColumnCount(), rows = table.GetRowCount();
  for (std::int64_t i = 0; i < rows; ++i) {
    Interfaces::IRow& row = *table.GetRow(i);
    const std::int64_t count = std::min(columns, row.GetCellCount());
    writer.AddRow(row.GetCellAt(0), static_cast<std::size_t>(count));
    if (i + 1 != rows) writer.EndLine();
  }
  return writer.TakeText();
}

}  // namespace Data::impl
