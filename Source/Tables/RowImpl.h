#pragma once

#include <cstddef>
#include <new>

#include "Containers/CallingBack.h"
#include "Containers/Teardown.h"
#include "Core/ObjectBase.h"
#include "Core/ObjectPool.h"
#include "Core/Ptr.h"
#include "Core/VariantRecord.h"
#include "Data/Interfaces/IRow.h"

namespace Data::impl {

struct ColumnImpl;
struct TableImpl;

/// A row and its cells in one block of memory. Only when the table gains columns later do the cells
/// move to a separate block, which grows geometrically.
struct RowImpl final : Core::ObjectBase<Interfaces::IRow> {
  using _VARIANT = Structures::_VARIANT;

  /// A row of Null cells that belongs to a table but is not in its list yet.
  /// @param pool  for many rows created together; null for the heap
  static Core::Ptr<RowImpl> Make(TableImpl* table, std::size_t cellCount,
                                 Core::ObjectPool* pool = nullptr);
  ~RowImpl() override;
  void Destroy() override;

  bool GetCellByName(const char* name, _VARIANT* out) override;
  bool TryGetCellByName(const char* name, _VARIANT* out, Core::IErrorCode** error) override;
  bool GetCell(std::int32_t index, _VARIANT* out) override;
  bool TryGetCell(std::int32_t index, _VARIANT* out, Core::IErrorCode** error) override;
  bool GetCellOfColumn(Interfaces::IColumn* column, _VARIANT* out) override;
  bool GetCellText(std::int32_t index, Interfaces::IString** out) override;
  bool TrySetCellByName(const char* name, const _VARIANT* value, Core::IErrorCode** error) override;
  void SetCell(std::int32_t index, const _VARIANT* value) override;
  void SetCellByName(const char* name, const _VARIANT* value) override;
  void SetCellOfColumn(Interfaces::IColumn* column, const _VARIANT* value) override;
  std::int32_t GetIndex() override { return index_; }
  std::int64_t GetCellCount() override { return cellCount_; }
  bool GetValue(std::int32_t index, Interfaces::IValue** out) override;
  void SetCells(const _VARIANT* values, std::uint64_t count) override;
  Interfaces::IRow* GetNextRow() override;
  Interfaces::IRow* GetPreviousRow() override;
  std::uint8_t IsModified() override { return modified_; }
  void SetModified(std::uint8_t modified) override { modified_ = modified; }
  Interfaces::IColumn* GetColumn(std::int32_t index) override;
  Interfaces::IColumn* GetColumnByName(const char* name) override;
  _VARIANT* GetCellAt(std::int32_t index) override { return CellOrNull(index); }
  Interfaces::ITable* GetTable() override;

  // -- For the rest of the library --

  /// The cells in column order, to be filled in place. Code that fills them must call
  /// `ColumnImpl::NoteValues` for each column.
  _VARIANT* Cells() { return cells_; }
  std::size_t CellCount() const { return cellCount_; }
  /// The cell at an index; null for an index outside the row.
  _VARIANT* CellOrNull(std::int32_t index) const {
    return static_cast<std::uint32_t>(index) < cellCount_ ? cells_ + index : nullptr;
  }
  /// The cell of a column of this table. Throws "Column index out of range ...".
  _VARIANT& Cell(const ColumnImpl& column) const;
  /// Writes a cell and updates the column and the table's index. The replaced
  /// value is released last, so the row may be gone on return.
  void Write(ColumnImpl& column, const _VARIANT& value);
  /// Whether releasing the cells may run the caller's code.
  bool CallsBack() const { return AnyCallsBack(cells_, cellCount_); }
  /// Detaches the row from its table and hands over its cells, before the row is destroyed.
  void ReleaseItems(Teardown& teardown);
  /// Releases the reference of a table that the row has left, unless that would destroy the row and
  /// release cells that call back: the table then releases it later.
  /// @return whether the reference was released
  bool ReleaseQuietly();

  /// Makes room for one more cell, so that inserting it cannot fail.
  void ReserveCell();
  /// Inserts a Null cell after `ReserveCell`; an index beyond the cells adds it at
  /// the end.
  void InsertCell(std::size_t index) noexcept;
  /// Removes a cell and returns it with its reference; Null for an index beyond
  /// the cells.
  [[nodiscard]] _VARIANT RemoveCell(std::size_t index) noexcept;

  void SetIndex(std::size_t index) { index_ = static_cast<std::int32_t>(index); }
  /// Makes it a row of a table with the same columns.
  void MoveTo(TableImpl& table, std::size_t index) {
    table_ = &table;
    SetIndex(index);
  }
  /// Detaches the row from its table.
  void LeaveTable() {
    table_ = nullptr;
    index_ = -1;
  }

 private:
  friend Teardown;

  struct TrailingCells {
    std::size_t count;
    Core::ObjectPool* pool;
  };
  static void* operator new(std::size_t size, TrailingCells cells);
  static void operator delete(void* block) { Core::ObjectPool::Free(block); }
  static void operator delete(void* block, TrailingCells) { Core::ObjectPool::Free(block); }

  RowImpl(TableImpl* table, std::size_t cellCount);

  _VARIANT* TrailingBlock() { return reinterpret_cast<_VARIANT*>(this + 1); }
  void MoveCells(std::uint8_t roomClass);
  void FreeCells();
  /// Releases the cells of a row that is being destroyed, starting with the last one. Stops at a
  /// cell that calls back.
  /// @return whether all cells were released
  bool ReleasePlainCells();
  TableImpl& Table() const;
  ColumnImpl& OwnColumn(Interfaces::IColumn* column) const;
  ColumnImpl& NamedColumn(const char* name) const;
  void WriteHeld(ColumnImpl& column, const _VARIANT& value);
  void NoteWritten(ColumnImpl& column, const _VARIANT& value);

  // The index fills the padding that the base leaves before the next pointer.
  std::int32_t index_ = -1;
  union {
    TableImpl* table_;
    Core::IObject* nextInTeardown_;  // while the row is being destroyed
  };
  _VARIANT* cells_;
  std::uint32_t cellCount_;
  std::uint8_t modified_ = 0;
  /// The size class of a separate block (see `RoomOf`).
  std::uint8_t roomClass_ = 0;
};
static_assert(sizeof(RowImpl) % alignof(Structures::_VARIANT) == 0);

}  // namespace Data::impl
