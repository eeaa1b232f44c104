#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

struct IColumn;
struct IString;
struct ITable;
struct IValue;

/// The cells of one row of a table, one `_VARIANT` per column.
///
/// Reading copies a cell into an initialised record `out` and adds a reference to the cell's
/// object, which the caller releases; the record's previous object is released last. Writing copies
/// a value into a cell and sets the row's modified flag. It also updates the column: Null sets the
/// null-seen flag, any other value sets the declared type.
///
/// Ownership. Returned rows, columns and tables carry no reference. The caller releases new strings
/// and values. A row that was removed, or whose table was destroyed, keeps its cells, which slots
/// 17 and 26 still return. Operations that need the table then fail with "Null pointer exception!
/// Interface is not accessible: struct Data::Interfaces::ITable".
///
/// Failures. Operations with an `error` argument are guarded: they never throw, but return false
/// and store an error object. All others throw. Common failures, std::runtime_error unless stated
/// otherwise:
///   - "Cannot be nullptr!" for a null name, column or `out`
///   - "Pointer of struct Data::Structures::_VARIANT must not be null!" for a null value
///   - "Column index out of range [%d/%d]!" (index, count)
///   - std::out_of_range "invalid unordered_map<K, T> key" for a missing name
///   - "Column does not belong to the current table!"
///   - "Pointer to a pointer of " + type + " must not be null! Address of return must be
///     specified!" and "Pointer of " + type + " must be null in order to avoid memory leaks!" for
///     an out-pointer that is null or still holds an object
/// A failed operation changes nothing. This includes a lack of memory, which throws std::bad_alloc
/// or, in a guarded operation, returns false with code 2. The exception is `SetCells`, which may
/// have written the cells before the one that failed.
///
/// Callbacks. A value may refer to an object that a caller implements; that object may use the
/// table when it is copied, read or released (see `ITable`). A replaced value is released last. A
/// write fails if the row or the column leaves the table while the new value is copied.
///
/// Threads. Not synchronised: concurrent reads are safe except for texts, a write needs exclusive
/// access to the whole table (see `ITable`). Reference counting is atomic.
struct IRow : Core::IObject {
  // -- Reading cells --

  /// Slot 6. Reads the cell of the named column.
  /// @return true
  virtual bool GetCellByName(const char* name, Structures::_VARIANT* out) = 0;
  /// Slot 7. As slot 6, guarded.
  virtual bool TryGetCellByName(const char* name, Structures::_VARIANT* out,
                                Core::IErrorCode** error) = 0;
  /// Slot 8. Reads the cell of the column at an index.
  /// @return true
  virtual bool GetCell(int32_t index, Structures::_VARIANT* out) = 0;
  /// Slot 9. As slot 8, guarded.
  virtual bool TryGetCell(int32_t index, Structures::_VARIANT* out, Core::IErrorCode** error) = 0;
  /// Slot 10. Reads the cell of a column of the same table.
  /// @return true
  virtual bool GetCellOfColumn(IColumn* column, Structures::_VARIANT* out) = 0;
  /// Slot 11. The display text of a cell as a new string.
  /// @return true
  /// @throws also the failure of the conversion if the cell's form or object does not fit its type
  virtual bool GetCellText(int32_t index, IString** out) = 0;

  // -- Writing cells --

  /// Slot 12. Writes the cell of the named column. Guarded.
  /// @return false also with "Variant type is undefined! Did you forget to zero out the VARIANT
  ///         structure? It appears uninitialized!" for an undefined value
  virtual bool TrySetCellByName(const char* name, const Structures::_VARIANT* value,
                                Core::IErrorCode** error) = 0;
  /// Slot 13. Writes the cell of the column at an index.
  virtual void SetCell(int32_t index, const Structures::_VARIANT* value) = 0;
  /// Slot 14. Writes the cell of the named column.
  virtual void SetCellByName(const char* name, const Structures::_VARIANT* value) = 0;
  /// Slot 15. Writes the cell of a column of the same table.
  virtual void SetCellOfColumn(IColumn* column, const Structures::_VARIANT* value) = 0;

  // -- The row --

  /// Slot 16. The index in the table, from 0; -1 for a row that was removed or outlived its table.
  virtual int32_t GetIndex() = 0;
  /// Slot 17. The number of cells.
  virtual int64_t GetCellCount() = 0;
  /// Slot 18. A copy of a cell as a new object.
  /// @return true
  virtual bool GetValue(int32_t index, IValue** out) = 0;
  /// Slot 19. Writes the first `count` cells, in column order.
  /// @param values  null only if count is 0
  /// @throws also "Error while setting cell value" for more values than columns; nothing is then
  ///         written
  virtual void SetCells(const Structures::_VARIANT* values, uint64_t count) = 0;
  /// Slot 20. The next row, or null for the last one.
  virtual IRow* GetNextRow() = 0;
  /// Slot 21. The previous row, or null for the first one.
  virtual IRow* GetPreviousRow() = 0;
  /// Slots 22 and 23. The modified flag: 0 for a new row, 1 after a write. Callers may set any
  /// byte.
  virtual uint8_t IsModified() = 0;
  virtual void SetModified(uint8_t modified) = 0;

  // -- Its columns and table --

  /// Slot 24. The column at an index.
  virtual IColumn* GetColumn(int32_t index) = 0;
  /// Slot 25. The column with the given name.
  virtual IColumn* GetColumnByName(const char* name) = 0;
  /// Slot 26. The address of the cell at an index, for reading in place. The other cells follow in
  /// column order. Valid until the row is destroyed or columns are added or removed. Writing to
  /// this address updates neither the column nor the table's index.
  /// @return null for an index outside the row
  virtual Structures::_VARIANT* GetCellAt(int32_t index) = 0;
  /// Slot 27. The table, or null for a row that was removed or outlived its table.
  virtual ITable* GetTable() = 0;

 protected:
  ~IRow() = default;
};

}  // namespace Data::Interfaces
