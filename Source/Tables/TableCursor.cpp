#include "Tables/TableCursor.h"

#include "Tables/TableImpl.h"

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
}

const TableImpl* TableCursor::OwnTable() const { return Core::ExactCast<TableImpl>(table_.Get()); }

bool TableCursor::NextRow() {
  if (rows_.empty()) {
    if (next_ >= table_->GetRowCount()) return false;
    MoveTo(*Core::CheckInterface(table_->GetRow(next_++)));
    return true;
  }
  while (next_ < static_cast<std::int64_t>(rows_.size())) {
    IRow& row = *rows_[static_cast<std::size_t>(next_++)];
    if (!row.GetTable()) continue;
    MoveTo(row);
    return true;
  }
  return false;
}

void TableCursor::HoldRows() {
  const std::int64_t count = table_->GetRowCount();
  rows_.reserve(static_cast<std::size_t>(count));
  for (std::int64_t i = 0; i < count; ++i)
    rows_.emplace_back(Core::CheckInterface(table_->GetRow(i)));
}

void TableCursor::MoveTo(IRow& row) {
  row_ = &row;
  LocateCells();
}

void TableCursor::LocateCells() {
  cellCount_ = row_->GetCellCount();
  cells_ = row_->GetCellAt(0);  // last: in the caller's own row, counting may move the cells
  if (!cells_) cellCount_ = 0;
}

std::string TableCursor::TextOfOtherObject(const _VARIANT& cell) {
  const bool holdsRows = next_ != 0 && rows_.empty();
  const bool isOwnTable = OwnTable() != nullptr;
  if (holdsRows && isOwnTable) HoldRows();  // the rows as they are before the first call
  std::string text;
  {
    const Core::Variant held(cell);
    if (holdsRows && !isOwnTable) HoldRows();  // runs the caller's code, which may move the cell
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
    row_.Reset();  // may destroy the row, and objects of the caller with it
  }
  for (Column& column : columns_) column.index = column.object->GetIndex();
  if (row_) LocateCells();
}

}  // namespace Data::impl
