#include <algorithm>
#include <vector>

#include "Containers/ObjectListImpl.h"
#include "Core/Guard.h"
#include "Core/Variant.h"
#include "Data/Interfaces/IVariantDictionary.h"
#include "Tables/TableFailures.h"
#include "Tables/TableImpl.h"
#include "Tables/UniqueIndex.h"

/// The rows of a table: adding, copying, removing, listing.
namespace Data::impl {

using namespace Interfaces;
using Core::Ptr;
using Structures::_VARIANT;

namespace {

/// Fills a row from a dictionary by column name.
/// @return the columns that the dictionary has
std::vector<ColumnImpl*> FillFrom(IVariantDictionary& values, const TableHeaderImpl& header,
                                  RowImpl& row) {
  std::vector<ColumnImpl*> written;
  for (const auto& column : header.Columns()) {
    const Core::Variant key(column->Name());
    Ptr<Core::IErrorCode> error;
    if (values.Contains(&key, error.Receive())) {
      if (!values.Get(&key, &row.Cell(*column), nullptr)) ThrowCannotSetCell();
      written.push_back(column.Get());
    } else if (error) {
      ThrowCannotSetCell();
    }
  }
  return written;
}

/// Fills a row from another one by column name.
/// @return the columns that the other row's table has
std::vector<ColumnImpl*> FillFrom(IRow& source, const TableHeaderImpl& header, RowImpl& row) {
  ITable* table = source.GetTable();
  Core::CheckInterface(table);
  std::vector<ColumnImpl*> written;
  for (const auto& column : header.Columns()) {
    if (!table->HasColumn(column->GetName())) continue;
    IColumn* from = table->GetColumnByName(column->GetName());
    const _VARIANT* cell = source.GetCellAt(from->GetIndex());
    if (!cell) ThrowCannotSetCell();
    Core::CopyVariant(cell, &row.Cell(*column));
    written.push_back(column.Get());
  }
  return written;
}

}  // namespace

// -- Positions --

RowImpl* TableImpl::RowOrNull(std::int64_t index) const {
  return IsPosition(index, rows_.size()) ? rows_[static_cast<std::size_t>(index)].Get() : nullptr;
}

RowImpl& TableImpl::RowAt(std::int64_t index) const {
  RowImpl* row = RowOrNull(index);
  if (!row) ThrowRowOutOfRange(index, static_cast<std::int64_t>(rows_.size()));
  return *row;
}

void TableImpl::CheckHasColumns() const {
  if (ColumnCount() == 0)
    throw std::runtime_error(
        Core::StringFormat("Table %s must contain at least one column before you insert new row!",
                           header_->GetName()));
}

void TableImpl::CheckInsertPosition(std::int64_t index) const {
  if (!IsPosition(index, rows_.size() + 1))
    ThrowRowOutOfRange(index, static_cast<std::int64_t>(rows_.size()));
}

void TableImpl::Renumber(std::size_t first) {
  for (std::size_t i = first; i < rows_.size(); ++i) rows_[i]->SetIndex(i);
}

// -- Adding --

Ptr<RowImpl> TableImpl::RowOf(const _VARIANT* values, std::uint64_t count) {
  if (count > ColumnCount()) ThrowCannotSetCell();
  CheckValues(values, count);
  auto row = RowImpl::Make(this, ColumnCount());
  for (std::size_t i = 0; i < count; ++i) {
    row->Cells()[i] = values[i];
    Core::AddReferenceOf(values[i]);
  }
  return row;
}

RowImpl& TableImpl::Place(Ptr<RowImpl> row, std::size_t index) {
  RowImpl& placed = *row;
  rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(index), std::move(row));
  Renumber(index);
  AddToIndex(placed);
  return placed;
}

RowImpl& TableImpl::PlaceWritten(Ptr<RowImpl> row, std::size_t index,
                                 const std::vector<ColumnImpl*>& written) {
  RowImpl& placed = Place(std::move(row), index);
  for (ColumnImpl* column : written) column->NoteValue(Core::TypeOf(placed.Cell(*column)));
  return placed;
}

RowImpl& TableImpl::AppendBlankRow(Core::ObjectPool* pool) {
  rows_.push_back(RowImpl::Make(this, ColumnCount(), pool));
  RowImpl& row = *rows_.back();
  row.SetIndex(rows_.size() - 1);
  return row;
}

IRow* TableImpl::AddRow(const _VARIANT* values, std::uint64_t count) {
  return InsertRow(GetRowCount(), values, count);
}

IRow* TableImpl::InsertRow(std::int64_t index, const _VARIANT* values, std::uint64_t count) {
  CheckHasColumns();
  CheckInsertPosition(index);
  RowImpl& row = Place(RowOf(values, count), static_cast<std::size_t>(index));
  for (std::size_t i = 0; i < count; ++i)
    header_->Columns()[i]->NoteValue(Core::TypeOf(row.Cells()[i]));
  return &row;
}

IRow* TableImpl::AddRowFromDictionary(IVariantDictionary* values) {
  Core::CheckInterface(values);
  CheckHasColumns();
  auto row = RowImpl::Make(this, ColumnCount());
  const auto written = FillFrom(*values, *header_, *row);
  return &PlaceWritten(std::move(row), rows_.size(), written);
}

IRow* TableImpl::AddRowCopy(IRow* source) { return InsertRowCopy(GetRowCount(), source); }

IRow* TableImpl::InsertRowCopy(std::int64_t index, IRow* source) {
  Core::CheckInterface(source);
  CheckHasColumns();
  CheckInsertPosition(index);
  auto row = RowImpl::Make(this, ColumnCount());
  const auto written = FillFrom(*source, *header_, *row);
  return &PlaceWritten(std::move(row), static_cast<std::size_t>(index), written);
}

// -- Removing --

void TableImpl::RemoveRow(std::int64_t index) {
  RowAt(index);
  RemoveRows(index, 1);
}

void TableImpl::RemoveRows(std::int64_t first, std::int64_t count) {
  const std::int64_t rowCount = GetRowCount();
  if (first < 0 || first > rowCount || count < 0) ThrowRowOutOfRange(first, rowCount);
  if (count > rowCount - first) ThrowRowOutOfRange(rowCount, rowCount);
  const auto begin = rows_.begin() + first, end = begin + count;
  for (auto row = begin; row != end; ++row) {
    RemoveFromIndex(**row);
    (*row)->LeaveTable();
  }
  rows_.erase(begin, end);
  Renumber(static_cast<std::size_t>(first));
}

void TableImpl::ClearRows() {
  ClearIndexes();
  // Each row is touched once only, which is what freeing millions of them costs.
  for (auto& row : rows_) {
    row->LeaveTable();
    row.Reset();
  }
  rows_.clear();
}

// -- Listing --

bool TableImpl::GetRows(IObjectList** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    std::vector<Ptr<Core::IObject>> rows(rows_.begin(), rows_.end());
    *out = Core::MakePtr<ObjectListImpl>(std::move(rows)).Detach();
  });
}

}  // namespace Data::impl
