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
/// Reading copies a cell into `out`, which releases what it held. Writing copies
/// the value into the cell, sets the modified flag and updates the column: a Null
/// sets its null-seen flag, any other value sets its declared type.
///
/// Ownership. Returned rows, columns and tables carry no reference; new texts and
/// values are released by the caller. A row that was removed, or whose table has
/// ended, keeps its cells (slots 17 and 26 still return them). Operations that need
/// the table then fail with "Null pointer exception! Interface is not accessible:
/// struct Data::Interfaces::ITable".
///
/// Failures. Operations with an `error` argument are guarded: they never throw,
/// but return false and store an error object. All others throw. Common failures,
/// std::runtime_error unless stated:
///   - "Cannot be nullptr!" for a null name, column or `out`
///   - "Pointer of struct Data::Structures::_VARIANT must not be null!" for a null
///     value
///   - "Column index out of range [%d/%d]!" (index, count)
///   - std::out_of_range "invalid unordered_map<K, T> key" for a missing name
///   - "Column does not belong to the current table!"
/// A failed operation changes nothing, and so does a lack of memory
/// (std::bad_alloc, or false with code 2); `SetCells` alone may have written the
/// cells before the one that failed.
///
/// Callbacks. A value may refer to an object of the caller's own class that uses
/// the table while it is copied, read or released; see `ITable`. The replaced value
/// of a write is released last. If the row or the column left the table while the
/// new value was copied, the write fails.
///
/// Threads. As for `ITable`: concurrent reads are safe except for texts, a write
/// needs exclusive access to the whole table.
struct IRow : Core::IObject {
  // -- Reading cells --

  /// Slot 6. Reads the cell of the named column.
  /// @return true
  virtual bool GetCellByName(const char* name, Structures::_VARIANT* out) = 0;
  /// Slot 7. As slot 6, guarded.
  virtual bool TryGetCellByName(const char* name, Structures::_VARIANT* out,
                                Core::IErrorCode** error) = 0;
  /// Slot 8. Reads the cell of the column at a position.
  /// @return true
  virtual bool GetCell(int32_t index, Structures::_VARIANT* out) = 0;
  /// Slot 9. As slot 8, guarded.
  virtual bool TryGetCell(int32_t index, Structures::_VARIANT* out, Core::IErrorCode** error) = 0;
  /// Slot 10. Reads the cell of a column of the same table.
  /// @return true
  virtual bool GetCellOfColumn(IColumn* column, Structures::_VARIANT* out) = 0;
  /// Slot 11. The display text of a cell as a new string.
  /// @return true
  /// @throws also for an out-pointer that is null or not empty, and the failure of
  ///         the conversion for a record that is not of its stated type
  virtual bool GetCellText(int32_t index, IString** out) = 0;

  // -- Writing cells --

  /// Slot 12. Writes the cell of the named column. Guarded; an undefined value
  /// fails with "Variant type is undefined! Did you forget to zero out the
  /// VARIANT structure? It appears uninitialized!".
  virtual bool TrySetCellByName(const char* name, const Structures::_VARIANT* value,
                                Core::IErrorCode** error) = 0;
  /// Slot 13. Writes the cell of the column at a position.
  virtual void SetCell(int32_t index, const Structures::_VARIANT* value) = 0;
  /// Slot 14. Writes the cell of the named column.
  virtual void SetCellByName(const char* name, const Structures::_VARIANT* value) = 0;
  /// Slot 15. Writes the cell of a column of the same table.
  virtual void SetCellOfColumn(IColumn* column, const Structures::_VARIANT* value) = 0;

  // -- The row --

  /// Slot 16. Position in the table; -1 for a removed row.
  virtual int32_t GetIndex() = 0;
  /// Slot 17. Number of cells.
  virtual int64_t GetCellCount() = 0;
  /// Slot 18. A copy of a cell as a new object.
  /// @return true
  /// @throws also for an out-pointer that is null or not empty
  virtual bool GetValue(int32_t index, IValue** out) = 0;
  /// Slot 19. Writes the first `count` cells in column order.
  /// @param values  null only if count is 0
  /// @throws also "Error while setting cell value" for more values than columns;
  ///         then nothing is written
  virtual void SetCells(const Structures::_VARIANT* values, uint64_t count) = 0;
  /// Slot 20. The next row; null for the last one.
  virtual IRow* GetNextRow() = 0;
  /// Slot 21. The previous row; null for the first one.
  virtual IRow* GetPreviousRow() = 0;
  /// Slots 22 and 23. The modified flag: 0 for a new row, 1 after a write. Any byte
  /// may be set.
  virtual uint8_t IsModified() = 0;
  virtual void SetModified(uint8_t modified) = 0;

  // -- Its columns and table --

  /// Slot 24. The column at a position.
  virtual IColumn* GetColumn(int32_t index) = 0;
  /// Slot 25. The column of that name.
  virtual IColumn* GetColumnByName(const char* name) = 0;
  /// Slot 26. The address of the cell at `index`, for reading in place; the others
  /// follow in column order. Valid until the row ends or columns are added or
  /// removed. A value that is written here updates neither its column nor the
  /// table's index.
  /// @return null for an index outside the row
  virtual Structures::_VARIANT* GetCellAt(int32_t index) = 0;
  /// Slot 27. The table; null for a row that was removed or outlived its table.
  virtual ITable* GetTable() = 0;

 protected:
  ~IRow() = default;
};

}  // namespace Data::Interfaces
