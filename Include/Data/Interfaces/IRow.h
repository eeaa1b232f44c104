#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

struct IColumn;
struct IString;
struct ITable;
struct IValue;

/// The cells of one row of a table, one `_VARIANT` per column. Returned rows,
/// columns and tables carry no reference.
///
/// Reading copies a cell into `out`, which gives up what it held. Writing copies
/// the value into the cell, sets the modified flag and tells the column: a Null
/// marks that the column has seen one, any other value makes its type the
/// column's declared type.
///
/// A row that was removed, or whose table is gone, keeps its cells (slots 17 and
/// 26 still give them); operations that need the table then fail with "Null
/// pointer exception! Interface is not accessible: struct
/// Data::Interfaces::ITable".
///
/// Failures common to the operations below, std::runtime_error unless guarded:
/// "Cannot be nullptr!" for a null name, column or `out`; "Pointer of struct
/// Data::Structures::_VARIANT must not be null!" for a null value; "Column index
/// out of range [%d/%d]!" (index, count); "invalid unordered_map<K, T> key"
/// (std::out_of_range) for a name that the table lacks; "Column does not belong
/// to the current table!".
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
  /// Slot 11. The display text of a cell as a new string, which the caller
  /// releases.
  /// @return true
  /// @throws also for a null or used out-pointer, and what the conversion throws
  ///         for a record that is not what its type says
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
  /// Slot 18. A copy of a cell as a new object, which the caller releases.
  /// @return true
  /// @throws also for a null or used out-pointer
  virtual bool GetValue(int32_t index, IValue** out) = 0;
  /// Slot 19. Writes the first `count` cells in column order.
  /// @param values  null only if count is 0
  /// @throws also "Error while setting cell value" for more values than columns;
  ///         then nothing is written
  virtual void SetCells(const Structures::_VARIANT* values, uint64_t count) = 0;
  /// Slot 20. The row after this one; null for the last.
  virtual IRow* GetNextRow() = 0;
  /// Slot 21. The row before this one; null for the first.
  virtual IRow* GetPreviousRow() = 0;
  /// Slots 22 and 23. The modified flag: 0 for a new row, 1 after a write.
  virtual uint8_t IsModified() = 0;
  virtual void SetModified(uint8_t modified) = 0;

  // -- Its columns and table --

  /// Slot 24. The column at a position.
  virtual IColumn* GetColumn(int32_t index) = 0;
  /// Slot 25. The column of that name.
  virtual IColumn* GetColumnByName(const char* name) = 0;
  /// Slot 26. The cells in place: the address of the cell at `index`, the others
  /// follow in column order. For reading: the column and the index of the table
  /// do not notice what is written here. Valid until columns change.
  /// @return null for an index outside the row
  virtual Structures::_VARIANT* GetCellAt(int32_t index) = 0;
  /// Slot 27. The table; null for a row that was removed or outlived it.
  virtual ITable* GetTable() = 0;

 protected:
  ~IRow() = default;
};

}  // namespace Data::Interfaces
