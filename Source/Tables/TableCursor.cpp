#include "Tables/TableCursor.h"

namespace Data::impl {

using namespace Interfaces;
using Structures::_VARIANT;

TableCursor::TableCursor(ITable& table) : table_(&table) {
  const std::int64_t count = table.GetColumnCount();
  columns_.reserve(static_cast<std::size_t>(count));
  for (std::int32_t i = 0; i < count; ++i) {
    IColumn* const column = Core::CheckInterface(table.GetColumn(i));
    columns_.push_back({column, column->GetIndex()});
  }
  if (const std::int64_t rows = table.GetRowCount(); rows > 0) last_ = table.GetRow(rows - 1);
}

bool TableCursor::NextRow() {
  if (next_ >= table_->GetRowCount() || (row_ && row_ == last_)) return false;
  MoveTo(*Core::CheckInterface(table_->GetRow(next_)));
  ++next_;
  return true;
}

void TableCursor::MoveTo(IRow& row) {
  row_ = &row;
  LocateCells();
}

void TableCursor::LocateCells() {
  cells_ = row_->GetCellAt(0);
  cellCount_ = cells_ ? row_->GetCellCount() : 0;
}

std::string TableCursor::TextOfOtherObject(const _VARIANT& cell) {
  std::string text;
  {
    const Core::Variant held(cell);
    text = Core::ToText(held);
  }
  LocateAgain();
  return text;
}

void TableCursor::LocateAgain() {
  const bool isRemoved = row_ && !row_->GetTable();
  if (isRemoved) {
    cells_ = nullptr;
    cellCount_ = 0;
    --next_;
    row_.Reset();  // may destroy the row, and objects of the caller with it
  }
  for (Column& column : columns_) column.index = column.object->GetIndex();
  if (!row_) return;
  next_ = std::int64_t{row_->GetIndex()} + 1;
  LocateCells();
}

}  // namespace Data::impl
