#include "Tables/RowImpl.h"

#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "Core/Guard.h"
#include "Core/Variant.h"
#include "Tables/TableFailures.h"
#include "Tables/TableImpl.h"
#include "Tables/ValueImpl.h"

namespace Data::impl {

using namespace Interfaces;
using Core::CheckArgument;
using Core::Ptr;
using Structures::_VARIANT;

// -- Memory --

namespace {

/// Columns are usually added several at a time.
constexpr std::size_t kSpareCells = 4;

/// The number of cells in a block, by size class: 4, 5, 6, 7, 8, 10, 12, 14, 16, 20 ...
constexpr std::size_t RoomOf(std::uint8_t roomClass) {
  return (std::size_t{4} + roomClass % 4) << roomClass / 4;
}

}  // namespace

void* RowImpl::operator new(std::size_t size, TrailingCells cells) {
  return Core::ObjectPool::Allocate(cells.pool, size + cells.count * sizeof(_VARIANT));
}

Ptr<RowImpl> RowImpl::Make(TableImpl* table, std::size_t cellCount, Core::ObjectPool* pool) {
  return Ptr<RowImpl>::Adopt(new (TrailingCells{cellCount, pool}) RowImpl(table, cellCount));
}

RowImpl::RowImpl(TableImpl* table, std::size_t cellCount)
    : table_(table), cells_(TrailingBlock()), cellCount_(static_cast<std::uint32_t>(cellCount)) {
  std::uninitialized_fill_n(cells_, cellCount, Core::MakeNull());
}

RowImpl::~RowImpl() { FreeCells(); }

void RowImpl::Destroy() {
  if (ReleasePlainCells()) {
    delete this;
    return;
  }
  nextInTeardown_ = nullptr;
  Teardown::End(*this);
}

bool RowImpl::ReleasePlainCells() {
  for (; cellCount_ > 0; --cellCount_) {
    Core::IObject* object = Core::ReferencedObject(cells_[cellCount_ - 1]);
    if (!object) continue;
    if (impl::CallsBack(*object)) return false;
    object->Release();
  }
  return true;
}

void RowImpl::ReleaseItems(Teardown& teardown) {
  LeaveTable();
  for (std::size_t i = 0; i < cellCount_; ++i) {
    auto cell = Core::Variant::Adopt(std::exchange(cells_[i], Core::MakeNull()));
    teardown.Release(cell);
  }
}

bool RowImpl::ReleaseQuietly() {
  if (!DropReference()) return true;
  if (!ReleasePlainCells()) {
    AddReference();
    return false;
  }
  delete this;
  return true;
}

void RowImpl::FreeCells() {
  if (cells_ != TrailingBlock()) ::operator delete(cells_);
}

void RowImpl::MoveCells(std::uint8_t roomClass) {
  auto* block = static_cast<_VARIANT*>(::operator new(RoomOf(roomClass) * sizeof(_VARIANT)));
  std::uninitialized_copy_n(cells_, cellCount_, block);
  FreeCells();
  cells_ = block;
  roomClass_ = roomClass;
}

void RowImpl::ReserveCell() {
  const bool hasOwnBlock = cells_ != TrailingBlock();
  if (hasOwnBlock && cellCount_ < RoomOf(roomClass_)) return;
  std::uint8_t roomClass = hasOwnBlock ? roomClass_ : std::uint8_t{0};
  while (RoomOf(roomClass) < cellCount_ + kSpareCells) ++roomClass;
  MoveCells(roomClass);
}

void RowImpl::InsertCell(std::size_t index) noexcept {
  if (index > cellCount_) index = cellCount_;
  std::memmove(cells_ + index + 1, cells_ + index, (cellCount_ - index) * sizeof(_VARIANT));
  cells_[index] = Core::MakeNull();
  ++cellCount_;
}

_VARIANT RowImpl::RemoveCell(std::size_t index) noexcept {
  if (index >= cellCount_) return Core::MakeNull();
  const _VARIANT removed = cells_[index];
  --cellCount_;
  std::memmove(cells_ + index, cells_ + index + 1, (cellCount_ - index) * sizeof(_VARIANT));
  return removed;
}

// -- Finding --

TableImpl& RowImpl::Table() const {
  if (!table_) Core::ThrowNullInterface<ITable>();
  return *table_;
}

ColumnImpl& RowImpl::NamedColumn(const char* name) const {
  if (!name) Core::ThrowCannotBeNull();
  return Table().Header().Column(name);
}

ColumnImpl& RowImpl::OwnColumn(IColumn* column) const {
  if (!column) Core::ThrowCannotBeNull();
  return Table().OwnColumn(column);
}

_VARIANT& RowImpl::Cell(const ColumnImpl& column) const {
  _VARIANT* cell = CellOrNull(column.Index());
  if (!cell) ThrowColumnOutOfRange(column.Index(), cellCount_);
  return *cell;
}

IColumn* RowImpl::GetColumn(std::int32_t index) { return &Table().ColumnAt(index); }
IColumn* RowImpl::GetColumnByName(const char* name) { return &NamedColumn(name); }
ITable* RowImpl::GetTable() { return table_; }
IRow* RowImpl::GetNextRow() { return Table().RowOrNull(std::int64_t{index_} + 1); }
IRow* RowImpl::GetPreviousRow() { return Table().RowOrNull(std::int64_t{index_} - 1); }

// -- Reading --

bool RowImpl::GetCellByName(const char* name, _VARIANT* out) {
  Core::CopyVariant(&Cell(NamedColumn(name)), out);
  return true;
}

bool RowImpl::TryGetCellByName(const char* name, _VARIANT* out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] { return GetCellByName(name, out); });
}

bool RowImpl::GetCell(std::int32_t index, _VARIANT* out) {
  if (!out) Core::ThrowCannotBeNull();
  Core::CopyVariant(&Cell(Table().ColumnAt(index)), out);
  return true;
}

bool RowImpl::TryGetCell(std::int32_t index, _VARIANT* out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] { return GetCell(index, out); });
}

bool RowImpl::GetCellOfColumn(IColumn* column, _VARIANT* out) {
  Core::CopyVariant(&Cell(OwnColumn(column)), out);
  return true;
}

bool RowImpl::GetCellText(std::int32_t index, IString** out) {
  Core::CheckOutPointer(out);
  *out = ValueImpl::TextOf(Cell(Table().ColumnAt(index))).Detach();
  return true;
}

bool RowImpl::GetValue(std::int32_t index, IValue** out) {
  Core::CheckOutPointer(out);
  *out = Core::MakePtr<ValueImpl>(Cell(Table().ColumnAt(index))).Detach();
  return true;
}

// -- Writing --

bool RowImpl::TrySetCellByName(const char* name, const _VARIANT* value, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckRecord(value);
    SetCellByName(name, value);
  });
}

void RowImpl::SetCell(std::int32_t index, const _VARIANT* value) {
  CheckArgument(value);
  Write(Table().ColumnAt(index), *value);
}

void RowImpl::SetCellByName(const char* name, const _VARIANT* value) {
  CheckArgument(value);
  Write(NamedColumn(name), *value);
}

void RowImpl::SetCellOfColumn(IColumn* column, const _VARIANT* value) {
  CheckArgument(value);
  Write(OwnColumn(column), *value);
}

void RowImpl::SetCells(const _VARIANT* values, std::uint64_t count) {
  if (count > Table().ColumnCount()) ThrowCannotSetCell();
  CheckValues(values, count);
  const bool callsBack =
      AnyCallsBack(values, count) || AnyCallsBack(cells_, cellCount_) || table_->IndexCallsBack();
  const Ptr<RowImpl> held = HeldIf(callsBack, this);
  // The values may be cells of this table.
  std::vector<Core::Variant> copies;
  if (callsBack) copies = std::vector<Core::Variant>(values, values + count);
  for (std::size_t i = 0; i < count; ++i)
    Write(Table().ColumnAt(static_cast<std::int64_t>(i)), callsBack ? copies[i] : values[i]);
}

void RowImpl::Write(ColumnImpl& column, const _VARIANT& value) {
  if (table_->IsIndexed(column) || impl::CallsBack(value)) return WriteHeld(column, value);
  _VARIANT& cell = Cell(column);
  const _VARIANT written = value;  // may be the cell itself
  Core::AddReferenceOf(written);
  const _VARIANT replaced = std::exchange(cell, written);
  NoteWritten(column, written);
  Core::ReleaseReferenceOf(replaced);
}

/// Writes a cell when the caller's code may run before the cell changes: while the value is copied,
/// or while the index reads keys.
void RowImpl::WriteHeld(ColumnImpl& column, const _VARIANT& value) {
  const bool callsBack = impl::CallsBack(value) || table_->IndexCallsBack();
  const auto heldTable = HeldIf(callsBack, table_);
  const auto heldColumn = HeldIf(callsBack, &column);
  const auto heldRow = HeldIf(callsBack, this);
  Core::Variant written(value);
  if (Table().IsIndexed(column)) table_->MoveInIndex(*this, written);
  _VARIANT& cell = Cell(Table().OwnColumn(&column));  // both may have left the table by now
  std::swap(cell, static_cast<_VARIANT&>(written));
  NoteWritten(column, cell);
}

void RowImpl::NoteWritten(ColumnImpl& column, const _VARIANT& value) {
  column.NoteValue(Core::TypeOf(value));
  modified_ = 1;
}

}  // namespace Data::impl
