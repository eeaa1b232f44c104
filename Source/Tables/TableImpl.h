#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "Containers/Teardown.h"
#include "Core/Ptr.h"
#include "Data/Interfaces/ITable.h"
#include "Tables/RowImpl.h"
#include "Tables/TableHeaderImpl.h"
#include "Tables/UniqueIndex.h"

namespace Data::impl {

struct TableImpl final : ContainerBase<Interfaces::ITable> {
  using _VARIANT = Structures::_VARIANT;

  TableImpl();
  ~TableImpl() override;

  Interfaces::IColumn* AddColumn(const char* name) override;
  Interfaces::IColumn* InsertColumn(const char* name, std::int32_t index) override;
  void RemoveColumn(const char* name) override;
  Interfaces::IColumn* GetColumn(std::int32_t index) override { return &ColumnAt(index); }
  Interfaces::IColumn* GetColumnByName(const char* name) override { return &header_->Column(name); }
  std::int64_t GetColumnCount() override { return header_->GetColumnCount(); }
  _VARIANT* GetCellAt(std::int64_t row, std::int32_t column) override;
  bool HasColumn(const char* name) override { return header_->HasColumn(name); }

  Interfaces::IRow* AddRowFromDictionary(Interfaces::IVariantDictionary* values) override;
  Interfaces::IRow* AddRow(const _VARIANT* values, std::uint64_t count) override;
  Interfaces::IRow* InsertRow(std::int64_t index, const _VARIANT* values,
                              std::uint64_t count) override;
  Interfaces::IRow* GetRow(std::int64_t index) override { return &RowAt(index); }
  Interfaces::IRow* AddRowCopy(Interfaces::IRow* source) override;
  std::int64_t GetRowCount() override { return static_cast<std::int64_t>(rows_.size()); }
  Interfaces::IRow* InsertRowCopy(std::int64_t index, Interfaces::IRow* source) override;
  void RemoveRow(std::int64_t index) override;
  void RemoveColumnAt(std::int32_t index) override;

  void SetCellByName(std::int64_t row, const char* column, const _VARIANT* value) override;
  bool GetCell(std::int64_t row, std::int32_t column, _VARIANT* out) override;
  bool GetCellByName(std::int64_t row, const char* column, _VARIANT* out) override;
  void SetCell(std::int64_t row, std::int32_t column, const _VARIANT* value) override;

  void RemoveRows(std::int64_t first, std::int64_t count) override;
  bool GetRows(Interfaces::IObjectList** out, Core::IErrorCode** error) override;
  void ClearRows() override;

  void ClearIndexes() override;
  bool BuildIndex(std::uint8_t ignoreNulls, Interfaces::IColumn* column,
                  Core::IErrorCode** error) override;
  Interfaces::IColumn* GetIndexColumn() override { return header_->IndexColumn(); }
  Interfaces::IRow* FindRow(const _VARIANT* key) override;
  bool FindRows(const char* column, const _VARIANT* key, Interfaces::IObjectList** out,
                Core::IErrorCode** error) override;

  bool Merge(Interfaces::ITable* right, const char* key, Structures::MergeMode mode,
             Interfaces::ITable** out, Core::IErrorCode** error) override;
  bool MergeOn(Interfaces::ITable* right, const char* leftKey, const char* rightKey,
               Structures::MergeMode mode, Interfaces::ITable** out,
               Core::IErrorCode** error) override;
  bool MergeOnColumns(Interfaces::ITable* right, Structures::MergeMode mode,
                      Interfaces::ITable** out, Core::IErrorCode** error, std::uint32_t keyCount,
                      ...) override;

  Interfaces::ITableHeader* GetHeader() override { return header_.Get(); }
  void OnColumnAdded(Interfaces::IColumn* column) override;

  // -- For the rest of the library --

  void ReleaseItems(Teardown& teardown);

  TableHeaderImpl& Header() const { return *header_.Get(); }
  std::size_t ColumnCount() const { return header_->ColumnCount(); }
  /// The column at an index. Throws "Column index out of range ...".
  ColumnImpl& ColumnAt(std::int64_t index) const { return header_->ColumnAt(index); }
  /// A column given as an object. Throws "Column does not belong to the current
  /// table!".
  ColumnImpl& OwnColumn(Interfaces::IColumn* column) const;
  /// The column of this name, appended if there is none.
  ColumnImpl& AddNamedColumn(std::string_view name);

  std::size_t RowCount() const { return rows_.size(); }
  /// The row at an index. Throws "Row index out of range ...".
  RowImpl& RowAt(std::int64_t index) const;
  RowImpl* RowOrNull(std::int64_t index) const;
  const std::vector<Core::Ptr<RowImpl>>& Rows() const { return rows_; }

  /// Appends a row of Null cells, to be filled in place through `RowImpl::Cells`
  /// by code that updates the columns itself. Not for a table with an index.
  RowImpl& AppendBlankRow(Core::ObjectPool* pool = nullptr);
  /// Fills a table without rows with rows that were made for it, in the order of their indexes.
  void AdoptRows(std::vector<Core::Ptr<RowImpl>> rows) { rows_ = std::move(rows); }
  /// Hands over the rows to a table with the same columns (see `RowImpl::MoveTo`).
  std::vector<Core::Ptr<RowImpl>> GiveUpRows() { return std::exchange(rows_, {}); }
  /// Throws "Table %s must contain at least one column before you insert new row!".
  void CheckHasColumns() const;

  /// The first row whose cell of a column equals the key, or null.
  RowImpl* FindFirst(ColumnImpl& column, const _VARIANT& key);

  // -- For rows that write a cell of the index column --

  bool IsIndexed(const ColumnImpl& column) const { return header_->IndexColumn() == &column; }
  /// Whether reading the keys of the index may run the caller's code.
  bool IndexCallsBack() const;
  /// Moves a row in the index to the value that its cell is about to receive. May run the caller's
  /// code before the index changes.
  /// @throws std::bad_alloc, nothing changed
  void MoveInIndex(RowImpl& row, const _VARIANT& value);

  /// Builds the index again after code has changed its cells in place, or drops it if it cannot
  /// hold them. Not for an index that calls back.
  /// @throws std::bad_alloc, the index unchanged
  void RebuildIndex();

 private:
  /// The position of a new row that is appended.
  static constexpr std::size_t kEnd = SIZE_MAX;

  ColumnImpl& ExistingColumn(const char* name) const;
  ColumnImpl& InsertNamedColumn(std::string_view name, std::size_t index, std::size_t position);
  void MakeRoomForCell();
  void InsertCells(std::size_t index) noexcept;
  void DropColumn(ColumnImpl& column);

  RowImpl& RowAtAddress(std::int64_t row, std::int32_t column) const;
  void CheckInsertPosition(std::int64_t index) const;
  RowImpl& InsertValues(std::size_t index, const _VARIANT* values, std::uint64_t count);
  template <class Source>
  RowImpl& InsertFrom(std::size_t index, Source& source);
  RowImpl& Insert(std::size_t index, Core::Ptr<RowImpl> row, std::uint64_t revision);
  void Renumber(std::size_t first);
  std::vector<Core::Ptr<RowImpl>> TakeRows();

  void BuildIndexOver(ColumnImpl& column, bool ignoreNulls);
  std::optional<UniqueIndex::Slot> SlotInIndex(const RowImpl& row, const _VARIANT& value);
  void RemoveFromIndex(const RowImpl& row) noexcept;
  bool FindsByIndex(const ColumnImpl& column, const _VARIANT& key) const;
  RowImpl* FindInIndex(const _VARIANT& key);
  /// Calls `visit` with the rows whose cell equals the key, in order, until it
  /// returns false.
  template <class Visit>
  void ForEachMatch(ColumnImpl& column, const _VARIANT& key, Visit&& visit);

  Core::Ptr<TableHeaderImpl> header_;
  std::vector<Core::Ptr<RowImpl>> rows_;
  /// Shared with operations that hold it while they read keys that call back.
  std::shared_ptr<UniqueIndex> index_;
};

}  // namespace Data::impl
