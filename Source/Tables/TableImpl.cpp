#include "Tables/TableImpl.h"

#include <string>

#include "Containers/ObjectListImpl.h"
#include "Core/Guard.h"
#include "Tables/TableFailures.h"
#include "Tables/UniqueIndex.h"

namespace Data::impl {

using namespace Interfaces;
using Core::CheckArgument;
using Core::Ptr;
using Structures::_VARIANT;

TableImpl::TableImpl() : header_(Core::MakePtr<TableHeaderImpl>()) {}

TableImpl::~TableImpl() {
  ClearRows();
  for (const auto& column : header_->Columns()) column->LeaveTable();
}

// -- Columns --

IColumn* TableImpl::AddColumn(const char* name) {
  CheckArgument(name);
  return &AddNamedColumn(name);
}

ColumnImpl& TableImpl::AddNamedColumn(std::string_view name) {
  if (ColumnImpl* existing = header_->Find(name)) return *existing;
  MakeRoomForCell();
  ColumnImpl& column = InsertNamedColumn(name, ColumnCount(), ColumnCount());
  InsertCells(static_cast<std::size_t>(column.Index()));
  return column;
}

ColumnImpl& TableImpl::InsertNamedColumn(std::string_view name, std::size_t index,
                                         std::size_t position) {
  return header_->Insert(Core::MakePtr<ColumnImpl>(std::string(name), this, header_.Get(),
                                                   static_cast<std::int32_t>(index)),
                         position);
}

IColumn* TableImpl::InsertColumn(const char* name, std::int32_t index) {
  CheckArgument(name);
  if (ColumnImpl* existing = header_->Find(name)) return existing;
  if (index < 0) throw std::runtime_error("Column index < 0 [" + std::to_string(index) + "]!");
  const std::int64_t count = GetColumnCount();
  if (index > count) ThrowColumnOutOfRange(index, count);
  if (index == count) return AddColumn(name);

  ColumnImpl& column = InsertNamedColumn(name, static_cast<std::size_t>(index), 0);
  // The new column is asked in every pass, so its successor is raised for ever:
  // callers rely on the columns as they stand meanwhile.
  while (ColumnImpl* next = column.ColumnAtDistance(1)) next->RaiseIndex();
  OnColumnAdded(&column);
  return &column;
}

void TableImpl::RemoveColumn(const char* name) { DropColumn(ExistingColumn(name)); }
void TableImpl::RemoveColumnAt(std::int32_t index) { DropColumn(ColumnAt(index)); }

void TableImpl::DropColumn(ColumnImpl& column) {
  if (IsIndexed(column)) ClearIndexes();
  const auto index = static_cast<std::size_t>(column.Index());
  header_->Remove(column);
  for (const auto& row : rows_) row->RemoveCell(index);
}

void TableImpl::OnColumnAdded(IColumn* column) {
  Core::CheckInterface(column);
  const ColumnImpl& added = OwnColumn(column);
  MakeRoomForCell();
  InsertCells(static_cast<std::size_t>(added.Index()));
}

ColumnImpl& TableImpl::OwnColumn(IColumn* column) const {
  ColumnImpl* own = ColumnImpl::Of(column);
  if (!own || !own->IsOf(this))
    throw std::runtime_error("Column does not belong to the current table!");
  return *own;
}

void TableImpl::MakeRoomForCell() {
  for (const auto& row : rows_) row->ReserveCell();
}

void TableImpl::InsertCells(std::size_t index) noexcept {
  for (const auto& row : rows_) row->InsertCell(index);
}

ColumnImpl& TableImpl::ExistingColumn(const char* name) const {
  CheckArgument(name);
  ColumnImpl* column = header_->Find(name);
  if (!column) throw std::runtime_error("Column " + std::string(name) + " does not exists");
  return *column;
}

// -- Cells --

RowImpl& TableImpl::RowAtAddress(std::int64_t row, std::int32_t column) const {
  RowImpl* found = RowOrNull(row);
  if (!found || !IsPosition(column, ColumnCount()))
    throw std::runtime_error("Index out of range (" + std::to_string(row) + ", " +
                             std::to_string(column) + ") [" + std::to_string(RowCount()) + ", " +
                             std::to_string(ColumnCount()) + "]!");
  return *found;
}

_VARIANT* TableImpl::GetCellAt(std::int64_t row, std::int32_t column) {
  return RowAtAddress(row, column).CellOrNull(column);
}

void TableImpl::SetCell(std::int64_t row, std::int32_t column, const _VARIANT* value) {
  RowAtAddress(row, column).SetCell(column, value);
}

void TableImpl::SetCellByName(std::int64_t row, const char* column, const _VARIANT* value) {
  RowImpl& written = RowAt(row);
  ColumnImpl& existing = ExistingColumn(column);
  CheckArgument(value);
  written.Write(existing, *value);
}

bool TableImpl::GetCell(std::int64_t row, std::int32_t column, _VARIANT* out) {
  RowAt(row).TryGetCell(column, out, nullptr);
  return true;
}

bool TableImpl::GetCellByName(std::int64_t row, const char* column, _VARIANT* out) {
  RowImpl& read = RowAt(row);
  Core::CopyVariant(&read.Cell(ExistingColumn(column)), out);
  return true;
}

// -- Index --

void TableImpl::ClearIndexes() {
  index_.reset();
  header_->SetIndexColumn(nullptr);
}

bool TableImpl::BuildIndex(std::uint8_t ignoreNulls, IColumn* column, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    ColumnImpl* indexed = ColumnImpl::Of(column);
    if (!indexed || !indexed->IsOf(this)) throw std::runtime_error("Invalid column!");
    auto index = std::make_unique<UniqueIndex>(*indexed, ignoreNulls != 0, RowCount());
    for (const auto& row : rows_)
      if (!index->Add(*row.Get()))
        throw std::runtime_error("Index can be build only on top of unique values!");
    index_ = std::move(index);
    header_->SetIndexColumn(indexed);
  });
}

void TableImpl::AddToIndex(RowImpl& row) noexcept {
  if (index_ && !Core::Guarded(nullptr, [&] { return index_->Add(row); })) ClearIndexes();
}

void TableImpl::RemoveFromIndex(RowImpl& row) noexcept {
  if (index_ && !Core::Guarded(nullptr, [&] { return index_->Remove(row); })) ClearIndexes();
}

IRow* TableImpl::FindRow(const _VARIANT* key) {
  CheckArgument(key);
  if (!index_)
    throw std::runtime_error(
        Core::StringFormat("Table %s does not have an index!", header_->GetName()));
  return index_->Find(*key);
}

template <class Visit>
void TableImpl::ForEachMatch(const ColumnImpl& column, const _VARIANT& key, Visit&& visit) const {
  if (IsIndexed(column) && index_->Covers(key)) {
    if (RowImpl* row = index_->Find(key)) visit(*row);
    return;
  }
  const SearchKey searched(key);
  for (const auto& row : rows_)
    if (searched.Matches(row->Cell(column)) && !visit(*row)) return;
}

RowImpl* TableImpl::FindFirst(const ColumnImpl& column, const _VARIANT& key) const {
  RowImpl* first = nullptr;
  ForEachMatch(column, key, [&](RowImpl& row) {
    first = &row;
    return false;
  });
  return first;
}

bool TableImpl::FindRows(const char* column, const _VARIANT* key, IObjectList** out,
                         Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    const ColumnImpl& searched = ExistingColumn(column);
    CheckArgument(key);
    const auto found = Core::MakePtr<ObjectListImpl>();
    ForEachMatch(searched, *key, [&](RowImpl& row) {
      found->Add(&row);
      return true;
    });
    *out = Ptr<IObjectList>(found).Detach();
  });
}

}  // namespace Data::impl
