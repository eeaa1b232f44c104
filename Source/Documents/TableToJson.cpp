#include "Documents/TableToJson.h"

#include <stdexcept>
#include <string>

namespace Data::impl {

using Core::ValueKind;
using Structures::_VARIANT;

namespace {

/// Appends a date-time of the library's own as a string, which needs no escapes.
/// @return false for any other cell
bool AppendQuotedDateTime(const _VARIANT& cell, TextBuffer& text) {
  const std::size_t size = text.Size();
  text.Put('"');
  if (AppendOwnDateTime(cell, text)) return text.Put('"'), true;
  text.CutTo(size);
  return false;
}

struct JsonCells {
  const TableCursor& table;

  template <class Row>
  bool Append(Row& row, const _VARIANT& cell, std::size_t column, TextBuffer& text) const;
};

template <class Row>
bool JsonCells::Append(Row& row, const _VARIANT& cell, std::size_t column, TextBuffer& text) const {
  if (Core::IsNull(cell) || Core::IsNullAddress(cell)) return text.Append("null"), true;
  switch (Core::KindOf(Core::TypeOf(cell))) {
    case ValueKind::SignedInteger:
    case ValueKind::UnsignedInteger:
    case ValueKind::WideInteger:  // by its low word
      return AppendInteger(text, Core::ToInt64(cell)), true;
    case ValueKind::Real:
      return AppendJsonReal(text, Core::ToDouble(cell), table, column), true;
    case ValueKind::Bool:
      return text.Append(Core::ToBool(cell) ? "true" : "false"), true;
    case ValueKind::DateTime:
      if (AppendQuotedDateTime(cell, text)) return true;
      [[fallthrough]];
    default:
      return row.UseText(cell, [&](const PaddedText& value) { AppendJsonString(text, value); });
  }
}

}  // namespace

void AppendJsonReal(TextBuffer& text, double value, const TableCursor& table, std::size_t column) {
  if (!AppendJsonDouble(text, value))
    throw std::runtime_error("Column " + std::string(table.ColumnName(column)) +
                             " holds a number that JSON cannot represent!");
}

void WriteJsonTable(Interfaces::ITable& table, const JsonLayout& layout, Core::Parts& parts,
                    TextOutput& output) {
  TableCursor cursor(table);
  WriteJson(cursor, layout, JsonCells{cursor}, parts, output);
}

Core::Ptr<JsonDocumentImpl> WriteJsonRow(Interfaces::IRow& row) {
  TableCursor cursor(*Core::CheckInterface(row.GetTable()));
  const JsonPunctuation punctuation(cursor, {});
  const JsonCells cells{cursor};
  cursor.MoveTo(row);
  TextBuffer text;
  JsonRows<JsonCells>(punctuation, cells).AppendRow(cursor, text);
  return JsonDocumentImpl::FromJson(text.View());
}

}  // namespace Data::impl
