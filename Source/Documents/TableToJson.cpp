#include "Documents/TableToJson.h"

#include <stdexcept>
#include <string>
#include <vector>

#include "Core/ImplementationOf.h"
#include "Core/VariantConversions.h"
#include "Data/Interfaces/IColumn.h"
#include "DateTime/DateTimeImpl.h"
#include "Documents/JsonWriter.h"
#include "Tables/TableFailures.h"

namespace Data::impl {

using Core::ValueKind;
using Structures::_VARIANT;

namespace {

/// Writes rows of one table; the names of its columns are escaped once.
class RowWriter {
 public:
  explicit RowWriter(Interfaces::ITable& table);

  void Add(Interfaces::IRow& row);
  void Put(char byte) { text_.Put(byte); }
  Core::Ptr<JsonDocumentImpl> MakeDocument() const {
    return JsonDocumentImpl::FromJson(text_.View());
  }

 private:
  struct Column {
    std::string key;  // with what stands before and behind it: {"name":
    std::string name;
    std::int32_t index;
  };

  void AddCell(const _VARIANT& cell, const Column& column);
  void AddReal(const _VARIANT& cell, const Column& column);
  void AddText(const _VARIANT& cell);
  void AddDateTime(const _VARIANT& cell);

  std::vector<Column> columns_;
  TextBuffer text_;
};

RowWriter::RowWriter(Interfaces::ITable& table) {
  const std::int64_t count = table.GetColumnCount();
  columns_.reserve(static_cast<std::size_t>(count));
  for (std::int32_t i = 0; i < count; ++i) {
    Interfaces::IColumn* const column = table.GetColumn(i);
    Core::CheckInterface(column);
    TextBuffer key;
    key.Put(i == 0 ? '{' : ',');
    AppendJsonString(key, column->GetName());
    key.Put(':');
    columns_.push_back({std::string(key.View()), column->GetName(), column->GetIndex()});
  }
}

void RowWriter::Add(Interfaces::IRow& row) {
  const _VARIANT* const cells = row.GetCellAt(0);
  const std::int64_t count = cells ? row.GetCellCount() : 0;
  if (columns_.empty()) text_.Put('{');
  for (const Column& column : columns_) {
    text_.Append(column.key);
    const bool hasCell = column.index >= 0 && column.index < count;
    AddCell(hasCell ? cells[column.index] : Core::MakeNull(), column);
  }
  text_.Put('}');
}

void RowWriter::AddCell(const _VARIANT& cell, const Column& column) {
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
    case ValueKind::Text:
      return AddText(cell);
    case ValueKind::DateTime:
      return AddDateTime(cell);
    default:
      return AppendJsonString(text_, Core::ToText(cell));
  }
}

void RowWriter::AddReal(const _VARIANT& cell, const Column& column) {
  if (!AppendJsonDouble(text_, Core::ToDouble(cell)))
    throw std::runtime_error("Column " + column.name +
                             " holds a number that JSON cannot represent!");
}

// Nearly all objects in cells are the library's own, which give their text at once.

void RowWriter::AddText(const _VARIANT& cell) {
  auto* const own = Core::ImplementationOf<MultiByteStringImpl>(Core::ReferencedObject(cell));
  AppendJsonString(text_, own ? Core::Utf8View(*own) : Core::GetStringView(cell));
}

void RowWriter::AddDateTime(const _VARIANT& cell) {
  auto* const own = Core::ImplementationOf<DateTimeImpl>(Core::ReferencedObject(cell));
  if (!own) return AppendJsonString(text_, Core::ToText(cell));
  AppendJsonString(text_, Iso8601Text::DateTime(own->Fields()));
}

}  // namespace

Core::Ptr<JsonDocumentImpl> WriteJsonTable(Interfaces::ITable& table) {
  RowWriter writer(table);
  writer.Put('[');
  const std::int64_t count = table.GetRowCount();
  for (std::int64_t i = 0; i < count; ++i) {
    Interfaces::IRow* const row = table.GetRow(i);
    Core::CheckInterface(row);
    if (i != 0) writer.Put(',');
    writer.Add(*row);
  }
  writer.Put(']');
  return writer.MakeDocument();
}

Core::Ptr<JsonDocumentImpl> WriteJsonRow(Interfaces::IRow& row) {
  Interfaces::ITable* const table = row.GetTable();
  Core::CheckInterface(table);
  RowWriter writer(*table);
  writer.Add(row);
  return writer.MakeDocument();
}

}  // namespace Data::impl
