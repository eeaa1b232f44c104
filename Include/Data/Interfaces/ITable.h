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

/// Named, typed columns and rows of cells. Positions count from 0. Returned
/// columns, rows and headers carry no reference and end with their removal or
/// the table; a caller that keeps one takes it into a `Ptr<>`. Cells that were
/// never written are Null.
///
/// Failures common to the operations below, std::runtime_error unless guarded:
/// "Row index out of range [%d/%d]!" and "Column index out of range [%d/%d]!"
/// (index, count) for a bad position; "Index out of range (%d, %d) [%d, %d]!"
/// (row, column, row count, column count) for a bad cell address; "Column {}
/// does not exists" for a column name that the table lacks, where no other text
/// is given; "Table %s must contain at least one column before you insert new
/// row!" (the table's name) for a new row in a table without columns; "Pointer
/// of char must not be null!" for a null name, "Pointer of struct
/// Data::Structures::_VARIANT must not be null!" for a null record, "Null pointer
/// exception! Interface is not accessible: struct Data::Interfaces::IRow" (or
/// the interface in question) for a null object. A failed operation changes
/// nothing.
struct ITable : Core::IObject {
  // -- Columns --

  /// Slot 6. Appends a column and gives every row a cell for it. A name that
  /// exists gives the existing column.
  virtual IColumn* AddColumn(const char* name) = 0;
  /// Slot 7. As `AddColumn` for a name that exists and for an index equal to the
  /// column count.
  ///
  /// Any smaller index NEVER RETURNS: the new column becomes the first of the
  /// list, with the index asked for, and then the index of its successor is
  /// raised for ever. Append columns instead.
  /// @throws std::runtime_error "Column index < 0 [%d]!", "Column index out of
  ///         range [%d/%d]!" beyond the column count
  virtual IColumn* InsertColumn(const char* name, int32_t index) = 0;
  /// Slot 8. Removes a column and its cells.
  virtual void RemoveColumn(const char* name) = 0;
  /// Slot 9. The column at a position.
  virtual IColumn* GetColumn(int32_t index) = 0;
  /// Slot 10. The column of that name; names are compared byte by byte.
  /// @throws std::out_of_range "invalid unordered_map<K, T> key" without one
  virtual IColumn* GetColumnByName(const char* name) = 0;
  /// Slot 11.
  virtual int64_t GetColumnCount() = 0;
  /// Slot 12. Address of a cell, for reading in place (see `IRow::GetCellAt`).
  virtual Structures::_VARIANT* GetCellAt(int64_t row, int32_t column) = 0;
  /// Slot 13.
  virtual bool HasColumn(const char* name) = 0;

  // -- Rows --

  /// Slot 14. Appends a row filled from a dictionary whose keys are column names
  /// (String). A column that the dictionary lacks keeps a Null cell; keys that
  /// are no column are ignored. The row starts unmodified.
  /// @throws std::runtime_error "Error while setting cell value" when a value
  ///         cannot be read from the dictionary; no row is added
  virtual IRow* AddRowFromDictionary(IVariantDictionary* values) = 0;
  /// Slot 15. Appends a row; cells beyond `count` become Null and count as not
  /// written. The columns take note of the values, the row starts unmodified.
  /// @param values  cells in column order, copied; null only if count is 0
  /// @param count   number of cells, not bytes
  /// @throws std::runtime_error "Error while setting cell value" for more
  ///         values than columns
  virtual IRow* AddRow(const Structures::_VARIANT* values, uint64_t count) = 0;
  /// Slot 16. As `AddRow`, at a position from 0 to the row count; the rows from
  /// there on move up by one.
  virtual IRow* InsertRow(int64_t index, const Structures::_VARIANT* values, uint64_t count) = 0;
  /// Slot 17. The row at a position.
  virtual IRow* GetRow(int64_t index) = 0;
  /// Slot 18. Appends a copy of a row of this or another table. Cells go to the
  /// columns of the same names; columns that the source lacks stay Null, cells
  /// whose column this table lacks are left out.
  virtual IRow* AddRowCopy(IRow* source) = 0;
  /// Slot 19.
  virtual int64_t GetRowCount() = 0;
  /// Slot 20. As `AddRowCopy`, at a position as in `InsertRow`.
  virtual IRow* InsertRowCopy(int64_t index, IRow* source) = 0;
  /// Slot 21. Removes a row; those behind it move down by one.
  virtual void RemoveRow(int64_t index) = 0;
  /// Slot 22. Removes the column at a position and its cells.
  virtual void RemoveColumnAt(int32_t index) = 0;

  // -- Cells --

  /// Slot 23. Writes a cell as `IRow` does.
  virtual void SetCellByName(int64_t row, const char* column,
                             const Structures::_VARIANT* value) = 0;
  /// Slot 24. Reads a cell into `out` through `IRow::TryGetCell`, without asking
  /// it for an error.
  /// @return true for every row that exists; for a column that does not, `out`
  ///         stays as it was
  virtual bool GetCell(int64_t row, int32_t column, Structures::_VARIANT* out) = 0;
  /// Slot 25. Reads a cell into `out`, which gives up what it held.
  /// @return true
  /// @throws also std::runtime_error "Cannot be nullptr!" for a null `out`
  virtual bool GetCellByName(int64_t row, const char* column, Structures::_VARIANT* out) = 0;
  /// Slot 26. Writes a cell as `IRow` does.
  virtual void SetCell(int64_t row, int32_t column, const Structures::_VARIANT* value) = 0;

  // -- Many rows --

  /// Slot 27. Removes `count` rows from `first` on in one pass.
  /// @throws std::runtime_error "Row index out of range [%d/%d]!" with the first
  ///         bad position, also for a negative count
  virtual void RemoveRows(int64_t first, int64_t count) = 0;
  /// Slot 28. A new list of all rows in their order; the caller releases it.
  virtual bool GetRows(IObjectList** out, Core::IErrorCode** error) = 0;
  /// Slot 29. Removes every row and the index; the columns stay.
  virtual void ClearRows() = 0;

  // -- Index --
  //
  // A table has at most one index: over one column whose values are unique. Keys
  // are equal as those of `IVariantDictionary` are, but Null, or a reference to no
  // object, equals Null. The index stays true when rows and cells change; a change
  // that it cannot hold (a value that repeats or has no hash) and the removal of
  // its column drop it.

  /// Slot 30. Drops the index.
  virtual void ClearIndexes() = 0;
  /// Slot 31. Builds the index over a column, in place of an earlier one.
  /// @param ignoreNulls  not 0: Null cells are left out; 0: Null is a key like
  ///                     any other, so at most one cell may hold it
  /// @return false with "Invalid column!" for a null column or one of another
  ///         table, "Index can be build only on top of unique values!", or what
  ///         hashing a value throws; an earlier index then stays
  virtual bool BuildIndex(uint8_t ignoreNulls, IColumn* column, Core::IErrorCode** error) = 0;
  /// Slot 32. The column of the index, null without one.
  virtual IColumn* GetIndexColumn() = 0;
  /// Slot 33. The row whose cell in the index column equals `key`, in constant
  /// time; null without one.
  /// @throws std::runtime_error "Table %s does not have an index!", and what
  ///         hashing the key throws
  virtual IRow* FindRow(const Structures::_VARIANT* key) = 0;
  /// Slot 34. A new list of the rows whose cell in a column equals `key`, in row
  /// order; the caller releases it. Constant time with an index over that
  /// column, otherwise one pass over the rows.
  virtual bool FindRows(const char* column, const Structures::_VARIANT* key, IObjectList** out,
                        Core::IErrorCode** error) = 0;

  // -- Merge --
  //
  // A new table that joins every row of this (left) table with every row of
  // `right` whose keys equal its own. A Null key, a reference to no object
  // included, equals nothing. It is named
  // left name + "_" + right name + "_merged". Its columns are all of this table,
  // then those of `right` but for the keys; one whose name is taken gets
  // "_right" appended until it is free. Rows come in the order of the left rows,
  // partners in the order of the right rows. Texts and other objects are shared
  // with the two tables. The caller releases the result. Guarded; fail with
  // "Pointer of " + type + " must not be null!" for a null table or name, "Left
  // table does not contain column %s", "Right table does not contain column %s",
  // "Merge mode is not supported!".

  /// Slot 35. Merges on a key column that has the same name in both tables.
  virtual bool Merge(ITable* right, const char* key, Structures::MergeMode mode, ITable** out,
                     Core::IErrorCode** error) = 0;
  /// Slot 36. Merges on a key column of each table; the result has the left one.
  virtual bool MergeOn(ITable* right, const char* leftKey, const char* rightKey,
                       Structures::MergeMode mode, ITable** out, Core::IErrorCode** error) = 0;
  /// Slot 37. Merges on several key columns: `keyCount` names (const char*)
  /// follow, each that of a column in both tables.
  /// @return also false, with "Invalid column!", without a key
  virtual bool MergeOnColumns(ITable* right, Structures::MergeMode mode, ITable** out,
                              Core::IErrorCode** error, uint32_t keyCount, ...) = 0;

  // -- The column set --

  /// Slot 38. The header: the columns, and the name of the table.
  virtual ITableHeader* GetHeader() = 0;
  /// Slot 39. Inserts a Null cell into every row at the column's index. The
  /// library calls it for each new column; a further call shifts the cells.
  /// @throws std::runtime_error "Column does not belong to the current table!"
  virtual void OnColumnAdded(IColumn* column) = 0;

 protected:
  ~ITable() = default;
};

}  // namespace Data::Interfaces
