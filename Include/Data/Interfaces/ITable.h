#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/MergeMode.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

struct IColumn;
struct IObjectList;
struct IRow;
struct ITableHeader;
struct IVariantDictionary;

/// Named, typed columns and rows of cells. Indexes count from 0. A cell that was never written is
/// Null.
///
/// Ownership. Returned columns, rows and headers carry no reference. They are valid until they are
/// removed or the table is destroyed; to keep one longer, take it into a `Ptr<>`. Lists and merged
/// tables are new objects, which the caller releases. Values are copied; a copy holds a reference
/// to its object.
///
/// Failures. Operations with an `error` argument are guarded: they never throw, but return false
/// and store an error object. All others throw. Common failures, all std::runtime_error:
///   - "Row index out of range [%d/%d]!" and "Column index out of range [%d/%d]!" (index, count)
///   - "Index out of range (%d, %d) [%d, %d]!" (row, column, row count, column count) for a cell
///     address outside the table
///   - "Column " + name + " does not exists" for a missing column name, unless stated otherwise
///   - "Table %s must contain at least one column before you insert new row!" (name of the table)
///     for a new row in a table without columns
///   - "Pointer of char must not be null!" for a null name
///   - "Pointer of struct Data::Structures::_VARIANT must not be null!" for a null record
///   - "Null pointer exception! Interface is not accessible: struct Data::Interfaces::IRow" (or the
///     interface in question) for a null object
///   - "Memory address [%p] is invalid ..." for an object of another interface
///   - "Pointer to a pointer of " + type + " must not be null! Address of return must be
///     specified!" and "Pointer of " + type + " must be null in order to avoid memory leaks!" for
///     an out-pointer that is null or still holds an object
/// A failed operation changes nothing, unless stated otherwise. This includes a lack of memory,
/// which throws std::bad_alloc or, in a guarded operation, returns false with code 2.
///
/// Callbacks. A cell may refer to an object that a caller implements, and the operations of that
/// object (AddReference, Release, GetUtf8 ...) may use the table that is calling them. Every
/// operation keeps the table consistent: it changes its own state first, releases replaced and
/// removed values last, and looks up positions again after each call of such an object. If the row,
/// column or table that it needs is gone by then, it fails with the message for that. Adding a row
/// fails with "Error while setting cell value" if columns were added or removed meanwhile. Records
/// passed to an operation must stay valid until it returns, so do not pass an address from
/// `GetCellAt` if a callback may remove the cell.
///
/// Threads. Not synchronised: concurrent reads are safe, a change needs exclusive access. But
/// reading a text in a cell, as searches and merges do, may convert the text in place (see
/// `IString`): take `Lock` around shared use of tables with texts. Reference counting is atomic.
struct ITable : Core::IObject {
  // -- Columns --

  /// Slot 6. Appends a column and adds a Null cell to every row. If the name exists, returns the
  /// existing column.
  virtual IColumn* AddColumn(const char* name) = 0;
  /// Slot 7. Does the same as `AddColumn` if the name exists or `index` equals the column count.
  ///
  /// NEVER RETURNS for a smaller index: it puts the new column first in the list, gives it the
  /// requested index, and then increments the index of another column forever. Append columns
  /// instead.
  /// @throws std::runtime_error "Column index < 0 [%d]!", "Column index out of range [%d/%d]!" for
  ///         an index above the column count
  virtual IColumn* InsertColumn(const char* name, int32_t index) = 0;
  /// Slot 8. Removes a column, its cells, and an index over it.
  virtual void RemoveColumn(const char* name) = 0;
  /// Slot 9. The column at an index.
  virtual IColumn* GetColumn(int32_t index) = 0;
  /// Slot 10. The column with the given name. Names are compared byte by byte.
  /// @throws std::out_of_range "invalid unordered_map<K, T> key" for a missing name
  virtual IColumn* GetColumnByName(const char* name) = 0;
  /// Slot 11. The number of columns.
  virtual int64_t GetColumnCount() = 0;
  /// Slot 12. The address of a cell, for reading in place (see `IRow::GetCellAt`).
  virtual Structures::_VARIANT* GetCellAt(int64_t row, int32_t column) = 0;
  /// Slot 13. Whether there is a column with the given name.
  virtual bool HasColumn(const char* name) = 0;

  // -- Rows --

  /// Slot 14. Appends a row with the values of a dictionary whose keys are column names (String).
  /// Keys that are not column names are ignored. A column without a key gets a Null cell, which
  /// does not count as written. The row is not marked as modified.
  /// @throws std::runtime_error "Error while setting cell value" if a value cannot be read from the
  ///         dictionary
  virtual IRow* AddRowFromDictionary(IVariantDictionary* values) = 0;
  /// Slot 15. Appends a row. Cells beyond `count` are Null and do not count as written. Updates the
  /// columns' types and null-seen flags as a cell write does. The row is not marked as modified.
  /// @param values  cells in column order, copied; null only if count is 0
  /// @param count   the number of cells
  /// @throws std::runtime_error "Error while setting cell value" for more values than columns
  virtual IRow* AddRow(const Structures::_VARIANT* values, uint64_t count) = 0;
  /// Slot 16. As `AddRow`, but inserts the row at an index from 0 to the row count. The indexes of
  /// the rows after it increase by one.
  virtual IRow* InsertRow(int64_t index, const Structures::_VARIANT* values, uint64_t count) = 0;
  /// Slot 17. The row at an index.
  virtual IRow* GetRow(int64_t index) = 0;
  /// Slot 18. Appends a copy of a row of this or another table. Cells are copied to the columns
  /// with the same names. Columns that the source's table lacks get Null; cells whose column this
  /// table lacks are not copied. A Null counts as written if the source's column has seen a Null.
  /// @throws std::runtime_error "Error while setting cell value" if the source row lacks a cell of
  ///         its table's columns
  virtual IRow* AddRowCopy(IRow* source) = 0;
  /// Slot 19. The number of rows.
  virtual int64_t GetRowCount() = 0;
  /// Slot 20. As `AddRowCopy`, but inserts the row at an index as `InsertRow` does.
  virtual IRow* InsertRowCopy(int64_t index, IRow* source) = 0;
  /// Slot 21. Removes a row. The indexes of the rows after it decrease by one.
  virtual void RemoveRow(int64_t index) = 0;
  /// Slot 22. Removes the column at an index, its cells, and an index over it.
  virtual void RemoveColumnAt(int32_t index) = 0;

  // -- Cells --

  /// Slot 23. Writes the cell of the named column as `IRow` writes cells.
  virtual void SetCellByName(int64_t row, const char* column,
                             const Structures::_VARIANT* value) = 0;
  /// Slot 24. Reads a cell as `IRow::TryGetCell` does, but discards the error.
  /// @return true, even on failure: `out` is unchanged if the column does not exist
  /// @throws std::runtime_error "Row index out of range [%d/%d]!" (index, count)
  virtual bool GetCell(int64_t row, int32_t column, Structures::_VARIANT* out) = 0;
  /// Slot 25. Reads the cell of the named column as `IRow` reads cells.
  /// @return true
  /// @throws also std::runtime_error "Cannot be nullptr!" for a null `out`
  virtual bool GetCellByName(int64_t row, const char* column, Structures::_VARIANT* out) = 0;
  /// Slot 26. Writes a cell as `IRow` writes cells.
  virtual void SetCell(int64_t row, int32_t column, const Structures::_VARIANT* value) = 0;

  // -- Many rows --

  /// Slot 27. Removes `count` rows from `first` on.
  /// @throws std::runtime_error "Row index out of range [%d/%d]!" with `first` if that is outside
  ///         the table or `count` is negative, or with the row count if `count` is too large
  virtual void RemoveRows(int64_t first, int64_t count) = 0;
  /// Slot 28. A new list of all rows in order.
  virtual bool GetRows(IObjectList** out, Core::IErrorCode** error) = 0;
  /// Slot 29. Removes all rows and the index. The columns stay.
  virtual void ClearRows() = 0;

  // -- Index --
  //
  // A table has at most one index, over one column whose values are unique. Keys are equal under
  // the rules of `IVariantDictionary`, except that Null equals Null; a null reference counts as
  // Null.
  //
  // The index is kept up to date when rows and cells change. It is dropped by:
  //   - writing a value that it cannot hold: one that repeats or cannot be hashed;
  //   - `ClearIndexes`, `ClearRows` and `OnColumnAdded`;
  //   - removing its column;
  //   - an object in a cell that changes the table while the index reads keys.
  // It is never dropped for lack of memory: the operation fails instead.
  //
  // The index does not notice when a text, date or document in a cell is changed through another
  // reference, or when a cell is written in place. Do neither in the index column.

  /// Slot 30. Drops the index.
  virtual void ClearIndexes() = 0;
  /// Slot 31. Builds the index over a column. It replaces the previous index.
  /// @param ignoreNulls  not 0: Null cells are left out; 0: Null is a key like any other, so at
  ///                     most one cell may hold it
  /// @return false with "Invalid column!" for a null column or a column of another table, "Index
  ///         can be build only on top of unique values!", "Table has changed while its index was
  ///         built!" (by an object in a cell), or the failure of hashing a value. The previous
  ///         index is then kept.
  virtual bool BuildIndex(uint8_t ignoreNulls, IColumn* column, Core::IErrorCode** error) = 0;
  /// Slot 32. The index column, or null without an index.
  virtual IColumn* GetIndexColumn() = 0;
  /// Slot 33. The row whose cell in the index column equals `key`, in constant time, or null.
  /// Unlike `IColumn::FindRow`, it needs an index.
  /// @throws std::runtime_error "Table %s does not have an index!" (name of the table), and the
  ///         failures of hashing and comparing keys
  virtual IRow* FindRow(const Structures::_VARIANT* key) = 0;
  /// Slot 34. A new list of the rows whose cell in a column equals `key`, in row order. Takes
  /// constant time with an index over that column, otherwise linear time.
  virtual bool FindRows(const char* column, const Structures::_VARIANT* key, IObjectList** out,
                        Core::IErrorCode** error) = 0;

  // -- Merge --
  //
  // A merge creates a new table that joins every row of this (left) table with every row of `right`
  // that has equal keys. Keys are equal under the rules of the index, except that a Null key, or a
  // null reference, equals nothing.
  //
  // The result is named left name + "_" + right name + "_merged". Its columns are those of this
  // table, followed by those of `right` without the keys; "_right" is appended to a name until it
  // is unique. Rows are in the order of the left rows, and for each of them in the order of the
  // right rows. Unmatched right rows come last; their keys are in the left key columns. The result
  // shares the objects in cells with both tables. If a cell of either table refers to an object
  // that a caller implements, the merge works on copies of both tables.
  //
  // Guarded. Failures: "Pointer of " + type + " must not be null!" for a null table or name, "Left
  // table does not contain column %s", "Right table does not contain column %s", "Merge mode is not
  // supported!", and the failures of hashing and comparing keys.

  /// Slot 35. Merges on a key column that has the same name in both tables.
  virtual bool Merge(ITable* right, const char* key, Structures::MergeMode mode, ITable** out,
                     Core::IErrorCode** error) = 0;
  /// Slot 36. Merges on one key column of each table. The result has only the left one.
  virtual bool MergeOn(ITable* right, const char* leftKey, const char* rightKey,
                       Structures::MergeMode mode, ITable** out, Core::IErrorCode** error) = 0;
  /// Slot 37. Merges on several key columns. Pass `keyCount` names (const char*), each the name of
  /// a column in both tables, after it.
  /// @return also false with "Invalid column!" if `keyCount` is 0
  virtual bool MergeOnColumns(ITable* right, Structures::MergeMode mode, ITable** out,
                              Core::IErrorCode** error, uint32_t keyCount, ...) = 0;

  // -- The column set --

  /// Slot 38. The header: the columns and the name of the table.
  virtual ITableHeader* GetHeader() = 0;
  /// Slot 39. Inserts a Null cell into every row at the column's index and drops the table's index.
  /// Callers should not use it: new columns already have their cells, so the call shifts cells out
  /// of their columns.
  /// @throws std::runtime_error "Column does not belong to the current table!"
  virtual void OnColumnAdded(IColumn* column) = 0;

 protected:
  ~ITable() = default;
};

}  // namespace Data::Interfaces
