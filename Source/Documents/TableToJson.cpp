#include "Documents/TableToJson.h"

#include <stdexcept>
#include <string>
#include <vector>

#include "Documents/JsonWriter.h"
#include "Tables/TableCursor.h"

namespace Data::impl {

using Core::ValueKind;
using Structures::_VARIANT;

namespace {

/// Writes rows of one table; the names of its columns are escaped once.
class RowWriter {
 public:
  explicit RowWriter(TableCursor& cursor);

  /// Appends the cursor's current row.
  void AddRow();
  void Put(char byte) { text_.Put(byte); }
  Core::Ptr<JsonDocumentImpl> MakeDocument() const {
    return JsonDocumentImpl::FromJson(text_.View());
  }

 private:
  void AddCell(std::size_t column);
  void AddReal(const _VARIANT& cell, std::size_t column);

  TableCursor& cursor_;
  std::vector<std::string> keys_;  // with the brace or comma before and the colon after
  TextBuffer text_;
};

RowWriter::RowWriter(TableCursor& cursor) : cursor_(cursor) {
  keys_.reserve(cursor.ColumnCount());
  for (std::size_t i = 0; i < cursor.ColumnCount(); ++i) {
    TextBuffer key;
    key.Put(i == 0 ? '{' : ',');
    AppendJsonString(key, cursor.ColumnName(i));
    key.Put(':');
    keys_.emplace_back(key.View());
  }
}

void RowWriter::AddRow() {
  if (keys_.empty()) text_.Put('{');
  for (std::size_t i = 0; i < keys_.size(); ++i) {
    text_.Append(keys_[i]);
    AddCell(i);
  }
  text_.Put('}');
}

void RowWriter::AddCell(std::size_t column) {
  const _VARIANT& cell = cursor_.Cell(column);
  if (Core::IsNull(cell) || Core::IsNullAddress(cell)) return text_.Append("null");
  switch (Core::KindOf(Core::TypeOf(cell))) {
    case ValueKind::SignedInteger:
    case ValueKind::UnsignedInteger:
    case ValueKind::WideInteger:  // by its low word
      return AppendJsonInteger(text_, Core::ToInt64(cell));
    case ValueKind::Real:
      return AddReal(cell, column);
    case ValueKind::Bool:
      return text_.Append(Core::ToBool(cell) ? "true" : "false");
    default:
      cursor_.UseText(cell, [this](std::string_view text) { AppendJsonString(text_, text); });
  }
}

void RowWriter::AddReal(const _VARIANT& cell, std::size_t column) {
  if (!AppendJsonDouble(text_, Core::ToDouble(cell)))
    throw std::runtime_error("Column " + std::string(cursor_.ColumnName(column)) +
                             " holds a number that JSON cannot represent!");
}

}  // namespace

Core::Ptr<JsonDocumentImpl> WriteJsonTable(Interfaces::ITable& table) {
  TableCursor cursor(table);
  RowWriter writer(cursor);
  writer.Put('[');
  for (bool isFirst = true; cursor.NextRow(); isFirst = false) {
    if (!isFirst) writer.Put(',');
    writer.AddRow();
  }
  writer.Put(']');
  return writer.MakeDocument();
}

Core::Ptr<JsonDocumentImpl> WriteJsonRow(Interfaces::IRow& row) {
  TableCursor cursor(*Core::CheckInterface(row.GetTable()));
  RowWriter writer(cursor);
  cursor.MoveTo(row);
  writer.AddRow();
  return writer.MakeDocument();
}

}  // namespace Data::impl
