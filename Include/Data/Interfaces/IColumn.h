#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/ValueType.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

struct IRow;
struct ITable;
struct IVariantList;

/// A named, typed column of a table. The cells are stored in the rows.
///
/// Ownership. Returned rows and columns carry no reference. A column that was removed, or whose
/// table was destroyed, keeps its name, type and attributes. Operations that need the table then
/// fail with "Null pointer exception! Interface is not accessible: struct
/// Data::Interfaces::ITable".
///
/// Failures, memory and callbacks: as for `ITable`.
///
/// Threads. Not synchronised: concurrent reads are safe; every change, including the setters, needs
/// exclusive access to the whole table. Reference counting is atomic.
struct IColumn : Core::IObject {
  /// Slot 6. The name. Owned by the column; valid until the column is renamed.
  virtual const char* GetName() = 0;
  /// Slot 7. Renames the column.
  /// @throws std::runtime_error "Pointer of char must not be null!", "Column with name [%s] already
  ///         exists!" (also for its own name)
  virtual void SetName(const char* name) = 0;
  /// Slot 8. A new list with copies of this column's cells in row order. The caller releases it.
  /// @return true
  /// @throws std::runtime_error "Pointer to a pointer of struct Data::Interfaces::IVariantList must
  ///         not be null! Address of return must be specified!", "Pointer of struct
  ///         Data::Interfaces::IVariantList must be null in order to avoid memory leaks!"
  virtual bool GetValues(IVariantList** out) = 0;
  /// Slot 9. Copies the cell in a row into an initialised record and adds a reference to its
  /// object, which the caller releases. Releases the record's previous object last.
  /// @return false with "Row index out of range [%d/%d]!" (index, count), or "Cannot be nullptr!"
  ///         for a null `out`
  virtual bool GetValue(int64_t row, Structures::_VARIANT* out, Core::IErrorCode** error) = 0;
  /// Slot 10. The index in the table, from 0; -1 for a removed column. A column whose table was
  /// destroyed keeps its index.
  virtual int32_t GetIndex() = 0;
  /// Slots 11 to 14. The width in characters and the number of decimals, initially 0. The library
  /// stores them for its callers; only a merge copies them.
  virtual void SetWidth(uint32_t width) = 0;
  virtual void SetDecimals(uint32_t decimals) = 0;
  virtual uint32_t GetWidth() = 0;
  virtual uint32_t GetDecimals() = 0;
  /// Slot 15. The next column, or null for the last one.
  virtual IColumn* GetNextColumn() = 0;
  /// Slot 16. The previous column, or null for the first one.
  virtual IColumn* GetPreviousColumn() = 0;
  /// Slot 17. The declared type: the one set by `SetType`, or the type of the last value other than
  /// Null that was written to a cell, whichever came last. If no type is declared, the type of the
  /// cell in row 0, or `Null` if there are no rows.
  virtual Structures::ValueType GetType() = 0;
  /// Slot 18. Declares the type; `Null` declares none. Cells are not changed.
  virtual void SetType(Structures::ValueType type) = 0;
  /// Slots 19 and 20. A flag for callers that hide the column, initially 0. Any byte may be set.
  /// The library stores it; only a merge copies it.
  virtual void SetHidden(uint8_t hidden) = 0;
  virtual uint8_t IsHidden() = 0;
  /// Slot 21. 1 once a Null was written to a cell of this column; never reset. Otherwise 0.
  virtual uint8_t HasSeenNull() = 0;
  /// Slot 22. The first row whose cell equals `value`, or null. Equality is that of index keys (see
  /// `ITable`), but no index is needed: the search takes constant time with an index over this
  /// column, otherwise linear time.
  /// @throws std::runtime_error "Pointer of struct Data::Structures::_VARIANT must not be null!",
  ///         and the failures of hashing and comparing values
  virtual IRow* FindRow(const Structures::_VARIANT* value) = 0;
  /// Slot 23. Whether this is a column of `table`.
  virtual bool BelongsTo(ITable* table) = 0;
  /// Slot 24. Writes a copy of `value` to the cell in every row, as `IRow` writes cells. Ends early
  /// if a callback removes the column. If a write fails, earlier rows keep the new value.
  /// @throws std::runtime_error "Pointer of struct Data::Structures::_VARIANT must not be null!"
  virtual void Fill(const Structures::_VARIANT* value) = 0;
  /// Slots 25 and 26. A flag for callers that prevent edits of the cells, initially 0. Any byte may
  /// be set. The library stores it; only a merge copies it.
  virtual void SetReadOnly(uint8_t readOnly) = 0;
  virtual uint8_t IsReadOnly() = 0;

 protected:
  ~IColumn() = default;
};

}  // namespace Data::Interfaces
