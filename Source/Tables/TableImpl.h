#pragma once

#include <memory>
#include <vector>

#include "Core/Ptr.h"
#include "Data/Interfaces/ITable.h"
#include "Tables/RowImpl.h"
#include "Tables/TableHeaderImpl.h"

namespace Data::impl {

class UniqueIndex;

struct TableImpl final : Core::ObjectBase<Interfaces::ITable> {
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

  TableHeaderImpl& Header() const { return *header_.Get(); }
  std::size_t ColumnCount() const { return header_->ColumnCount(); }
  /// The column at a position. Throws "Column index out of range ...".
  ColumnImpl& ColumnAt(std::int64_t index) const { return header_->ColumnAt(index); }
  /// A column given as an object. Throws "Column does not belong to the current
  /// table!".
  ColumnImpl& OwnColumn(Interfaces::IColumn* column) const;
  /// The column of that name, added at the end if there is none yet.
  ColumnImpl& AddNamedColumn(std::string_view name);

  std::size_t RowCount() const { return rows_.size(); }
  /// The row at a position. Throws "Row index out of range ...".
  RowImpl& RowAt(std::int64_t index) const;
  RowImpl* RowOrNull(std::int64_t index) const;
  const std::vector<Core::Ptr<RowImpl>>& Rows() const { return rows_; }

  /// Room for so many rows in all, for readers that know how many will come.
  void ReserveRows(std::size_t count) { rows_.reserve(count); }
  /// Appends a row of Null cells, to be filled in place through `RowImpl::Cells`
  /// by code that tells the columns itself. Not for a table with an index.
  RowImpl& AppendBlankRow(Core::ObjectPool* pool = nullptr);
  /// Throws "Table %s must contain at least one column before you insert new row!".
  void CheckHasColumns() const;

  /// The first row whose cell of a column equals the key, or null.
  RowImpl* FindFirst(const ColumnImpl& column, const _VARIANT& key) const;

  // -- For rows that change a cell of the index column --

  bool IsIndexed(const ColumnImpl& column) const { return header_->IndexColumn() == &column; }
  void AddToIndex(RowImpl& row) noexcept;
  void RemoveFromIndex(RowImpl& row) noexcept;

 private:
  ColumnImpl& InsertNamedColumn(std::string_view name, std::size_t index, std::size_t position);
  void MakeRoomForCell();
  void InsertCells(std::size_t index) noexcept;
  void DropColumn(ColumnImpl& column);

  Core::Ptr<RowImpl> RowOf(const _VARIANT* values, std::uint64_t count);
  RowImpl& Place(Core::Ptr<RowImpl> row, std::size_t index);
  RowImpl& PlaceWritten(Core::Ptr<RowImpl> row, std::size_t index,
                        const std::vector<ColumnImpl*>& written);
  RowImpl& PlaceCopy(Interfaces::IRow* source, std::size_t index);
  void Renumber(std::size_t first);

  void CheckInsertPosition(std::int64_t index) const;
  RowImpl& RowAtAddress(std::int64_t row, std::int32_t column) const;
  ColumnImpl& ExistingColumn(const char* name) const;
  /// Calls `visit` with the rows whose cell equals the key, in order, until it
  /// returns false.
  template <class Visit>
  void ForEachMatch(const ColumnImpl& column, const _VARIANT& key, Visit&& visit) const;

  Core::Ptr<TableHeaderImpl> header_;
  std::vector<Core::Ptr<RowImpl>> rows_;
  std::unique_ptr<UniqueIndex> index_;
};

}  // namespace Data::impl
