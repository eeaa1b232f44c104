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

/// Named, typed columns and rows of cells. Positions count from 0. A cell that
/// was never written is Null.
///
/// Ownership. Returned columns, rows and headers carry no reference. They are
/// valid until they are removed or the table ends; a caller that keeps one takes
/// it into a `Ptr<>`. Lists and merged tables are new objects, which the caller
/// releases. Values are copied; a value that refers to an object holds a reference
/// to it.
///
/// Failures. Operations with an `error` argument are guarded: they never throw,
/// but return false and store an error object. All others throw. Common failures,
/// std::runtime_error:
///   - "Row index out of range [%d/%d]!", "Column index out of range [%d/%d]!"
///     (index, count) for a position outside the table
///   - "Index out of range (%d, %d) [%d, %d]!" (row, column, row count, column
///     count) for a cell address outside the table
///   - "Column {} does not exists" for a missing column name, where nothing else
///     is stated
///   - "Table %s must contain at least one column before you insert new row!"
///     (the table's name) for a new row in a table without columns
///   - "Pointer of char must not be null!" for a null name, "Pointer of struct
///     Data::Structures::_VARIANT must not be null!" for a null record
///   - "Null pointer exception! Interface is not accessible: struct
///     Data::Interfaces::IRow" (or the interface in question) for a null object,
///     "Memory address [%p] is invalid ..." for an object of another interface
/// A failed operation changes nothing. This includes a lack of memory, which
/// throws std::bad_alloc or, in a guarded operation, returns false with code 2.
///
/// Callbacks. A cell may refer to an object of the caller's own class, and its
/// operations (AddReference, Release, GetUtf8 ...) may use the table while the
/// table uses them. Every operation leaves the table consistent: it changes its
/// own state first, releases replaced and removed values last, and looks up
/// positions again after it has called such an object. An operation then fails,
/// with the message for the missing row, column or table, if what it needs is
/// gone; a new row fails with "Error while setting cell value" if columns were
/// added or removed meanwhile. The records given to an operation must stay valid
/// until it returns; those in `GetCellAt` do not if the callback removes them.
///
/// Threads. Not synchronised. Threads may read one table at the same time; a
/// change needs exclusive access. Reading a text in a cell, which searches and
/// merges do, may convert the text in place (see `IString`): share such tables
/// under `Lock`. Reference counting is atomic.
struct ITable : Core::IObject {
  // -- Columns --

  /// Slot 6. Appends a column and gives every row a Null cell for it. If the name
  /// exists, returns the existing column.
  virtual IColumn* AddColumn(const char* name) = 0;
  /// Slot 7. As `AddColumn` for a name that exists and for an index equal to the
  /// column count.
  ///
  /// NEVER RETURNS for a smaller index: the new column becomes the first of the
  /// list, with the index asked for, and then increments its successor's index
  /// forever. Append columns instead.
  /// @throws std::runtime_error "Column index < 0 [%d]!", "Column index out of
  ///         range [%d/%d]!" beyond the column count
  virtual IColumn* InsertColumn(const char* name, int32_t index) = 0;
  /// Slot 8. Removes a column and its cells, and an index over it.
  virtual void RemoveColumn(const char* name) = 0;
  /// Slot 9. The column at a position.
  virtual IColumn* GetColumn(int32_t index) = 0;
  /// Slot 10. The column of that name; names are compared byte by byte.
  /// @throws std::out_of_range "invalid unordered_map<K, T> key" for a missing name
  virtual IColumn* GetColumnByName(const char* name) = 0;
  /// Slot 11. Number of columns.
  virtual int64_t GetColumnCount() = 0;
  /// Slot 12. The address of a cell, for reading in place (see `IRow::GetCellAt`).
  virtual Structures::_VARIANT* GetCellAt(int64_t row, int32_t column) = 0;
  /// Slot 13. Whether there is a column of that name.
  virtual bool HasColumn(const char* name) = 0;

  // -- Rows --

  /// Slot 14. Appends a row filled from a dictionary whose keys are column names
  /// (String). A column without a key keeps a Null cell that counts as not
  /// written; other keys are ignored. The row starts unmodified.
  /// @throws std::runtime_error "Error while setting cell value" when a value
  ///         cannot be read from the dictionary; no row is added
  virtual IRow* AddRowFromDictionary(IVariantDictionary* values) = 0;
  /// Slot 15. Appends a row; cells beyond `count` become Null and count as not
  /// written. Updates the columns' types and null-seen flags as a cell write does;
  /// the row starts unmodified.
  /// @param values  cells in column order, copied; null only if count is 0
  /// @param count   number of cells, not bytes
  /// @throws std::runtime_error "Error while setting cell value" for more
  ///         values than columns
  virtual IRow* AddRow(const Structures::_VARIANT* values, uint64_t count) = 0;
  /// Slot 16. As `AddRow`, at a position from 0 to the row count. The rows from
  /// there on move up by one.
  virtual IRow* InsertRow(int64_t index, const Structures::_VARIANT* values, uint64_t count) = 0;
  /// Slot 17. The row at a position.
  virtual IRow* GetRow(int64_t index) = 0;
  /// Slot 18. Appends a copy of a row of this or another table. Cells go to the
  /// columns of the same names; columns that the source's table lacks stay Null,
  /// cells whose column this table lacks are left out. A Null counts as written
  /// if the source's column has seen a Null.
  virtual IRow* AddRowCopy(IRow* source) = 0;
  /// Slot 19. Number of rows.
  virtual int64_t GetRowCount() = 0;
  /// Slot 20. As `AddRowCopy`, at a position as in `InsertRow`.
  virtual IRow* InsertRowCopy(int64_t index, IRow* source) = 0;
  /// Slot 21. Removes a row; those after it move down by one.
  virtual void RemoveRow(int64_t index) = 0;
  /// Slot 22. Removes the column at a position and its cells.
  virtual void RemoveColumnAt(int32_t index) = 0;

  // -- Cells --

  /// Slot 23. Writes the cell of the named column as `IRow` writes cells.
  virtual void SetCellByName(int64_t row, const char* column,
                             const Structures::_VARIANT* value) = 0;
  /// Slot 24. Reads a cell into `out` through `IRow::TryGetCell`, discarding the
  /// error.
  /// @return true for every existing row; `out` is unchanged if the column does
  ///         not exist
  virtual bool GetCell(int64_t row, int32_t column, Structures::_VARIANT* out) = 0;
  /// Slot 25. Reads the cell of the named column into `out`, which releases what it
  /// held.
  /// @return true
  /// @throws also std::runtime_error "Cannot be nullptr!" for a null `out`
  virtual bool GetCellByName(int64_t row, const char* column, Structures::_VARIANT* out) = 0;
  /// Slot 26. Writes a cell as `IRow` writes cells.
  virtual void SetCell(int64_t row, int32_t column, const Structures::_VARIANT* value) = 0;

  // -- Many rows --

  /// Slot 27. Removes `count` rows from `first` on.
  /// @throws std::runtime_error "Row index out of range [%d/%d]!" with the first
  ///         position outside the table, also for a negative count
  virtual void RemoveRows(int64_t first, int64_t count) = 0;
  /// Slot 28. A new list of all rows in order.
  virtual bool GetRows(IObjectList** out, Core::IErrorCode** error) = 0;
  /// Slot 29. Removes every row and the index; the columns stay.
  virtual void ClearRows() = 0;

  // -- Index --
  //
  // A table has at most one index, over one column whose values are unique. Keys
  // are equal as those of `IVariantDictionary` are, except that Null equals Null;
  // a reference to no object counts as Null.
  //
  // The index is kept up to date when rows and cells change. It is dropped by a
  // value that it cannot hold (one that repeats or has no hash), by `ClearRows`,
  // by the removal of its column, by a further call of `OnColumnAdded`, and by a
  // change that comes from an object in a cell while the index reads keys. It is
  // never dropped for lack of memory: the operation fails instead.
  //
  // The index does not notice a text, date or document that is changed by someone
  // who shares it, nor a cell that is written in place: do neither in the index
  // column.

  /// Slot 30. Drops the index.
  virtual void ClearIndexes() = 0;
  /// Slot 31. Builds the index over a column, in place of an earlier one.
  /// @param ignoreNulls  not 0: Null cells are left out; 0: Null is a key like
  ///                     any other, so at most one cell may hold it
  /// @return false with "Invalid column!" for a null column or one of another
  ///         table, "Index can be build only on top of unique values!", "Table has
  ///         changed while its index was built!" (by an object in a cell), or the
  ///         failure of hashing a value; an earlier index is then kept
  virtual bool BuildIndex(uint8_t ignoreNulls, IColumn* column, Core::IErrorCode** error) = 0;
  /// Slot 32. The column of the index; null without an index.
  virtual IColumn* GetIndexColumn() = 0;
  /// Slot 33. The row whose cell in the index column equals `key`, in constant
  /// time; null if there is none. Unlike `IColumn::FindRow` it needs an index.
  /// @throws std::runtime_error "Table %s does not have an index!", and the failure
  ///         of hashing the key
  virtual IRow* FindRow(const Structures::_VARIANT* key) = 0;
  /// Slot 34. A new list of the rows whose cell in a column equals `key`, in row
  /// order. Constant time with an index over that column, otherwise linear.
  virtual bool FindRows(const char* column, const Structures::_VARIANT* key, IObjectList** out,
                        Core::IErrorCode** error) = 0;

  // -- Merge --
  //
  // A merge makes a new table that joins every row of this (left) table with every
  // row of `right` that has equal keys. Keys are equal as those of the index are,
  // except that a Null key, or a reference to no object, equals nothing.
  //
  // The result is named left name + "_" + right name + "_merged". Its columns are
  // all of this table, then those of `right` without the keys; "_right" is appended
  // to a name until it is free. Rows come in the order of the left rows, and for
  // each of them in the order of the right rows. Objects in cells are shared with
  // the two tables. If a cell of either table refers to an object of the caller's
  // own class, the merge works on copies of both tables.
  //
  // Guarded. Failures: "Pointer of " + type + " must not be null!" for a null table
  // or name, "Left table does not contain column %s", "Right table does not contain
  // column %s", "Merge mode is not supported!", and the failure of hashing or
  // comparing keys.

  /// Slot 35. Merges on a key column that has the same name in both tables.
  virtual bool Merge(ITable* right, const char* key, Structures::MergeMode mode, ITable** out,
                     Core::IErrorCode** error) = 0;
  /// Slot 36. Merges on one key column of each table; the result has the left one.
  virtual bool MergeOn(ITable* right, const char* leftKey, const char* rightKey,
                       Structures::MergeMode mode, ITable** out, Core::IErrorCode** error) = 0;
  /// Slot 37. Merges on several key columns. `keyCount` names (const char*) follow,
  /// each of a column in both tables.
  /// @return also false with "Invalid column!" for no keys
  virtual bool MergeOnColumns(ITable* right, Structures::MergeMode mode, ITable** out,
                              Core::IErrorCode** error, uint32_t keyCount, ...) = 0;

  // -- The column set --

  /// Slot 38. The header: the columns, and the name of the table.
  virtual ITableHeader* GetHeader() = 0;
  /// Slot 39. Inserts a Null cell into every row at the column's index, and drops
  /// the index. Not for callers: new columns already have their cells, and the
  /// call shifts the cells out of their columns.
  /// @throws std::runtime_error "Column does not belong to the current table!"
  virtual void OnColumnAdded(IColumn* column) = 0;

 protected:
  ~ITable() = default;
};

}  // namespace Data::Interfaces
