#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/ValueType.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

struct IRow;
struct ITable;
struct IVariantList;

/// A named, typed column of a table. It holds no cells: those are in the rows.
///
/// Ownership. Returned rows and columns carry no reference. A column that was
/// removed, or whose table has ended, keeps its name, type and attributes.
/// Operations that need the table then fail with "Null pointer exception!
/// Interface is not accessible: struct Data::Interfaces::ITable".
///
/// Failures, memory, callbacks and threads: as for `ITable`. The getters may be
/// called by several threads at once; every setter needs exclusive access to the
/// table.
struct IColumn : Core::IObject {
  /// Slot 6. The name; owned by the column, valid until it is renamed.
  virtual const char* GetName() = 0;
  /// Slot 7. Renames the column.
  /// @throws std::runtime_error "Pointer of char must not be null!", "Column
  ///         with name [%s] already exists!" (also for its own name)
  virtual void SetName(const char* name) = 0;
  /// Slot 8. Copies of the cells of this column in row order, as a new list that
  /// the caller releases.
  /// @return true
  /// @throws std::runtime_error for an out-pointer that is null or not empty
  virtual bool GetValues(IVariantList** out) = 0;
  /// Slot 9. Copies the cell of a row into `out`, which releases what it held.
  /// @return false with "Row index out of range [%d/%d]!" (index, count) or
  ///         "Cannot be nullptr!" for a null `out`
  virtual bool GetValue(int64_t row, Structures::_VARIANT* out, Core::IErrorCode** error) = 0;
  /// Slot 10. Position in the table; -1 for a removed column.
  virtual int32_t GetIndex() = 0;
  /// Slots 11 to 14. Width in characters and number of decimals, initially 0. The
  /// library stores them for its callers, and only a merge copies them.
  virtual void SetWidth(uint32_t width) = 0;
  virtual void SetDecimals(uint32_t decimals) = 0;
  virtual uint32_t GetWidth() = 0;
  virtual uint32_t GetDecimals() = 0;
  /// Slot 15. The next column; null for the last one.
  virtual IColumn* GetNextColumn() = 0;
  /// Slot 16. The previous column; null for the first one.
  virtual IColumn* GetPreviousColumn() = 0;
  /// Slot 17. The declared type: the one that `SetType` set, or that of the last
  /// value written that was not Null. If none is declared, the type of the cell in
  /// row 0, and `Null` without rows.
  virtual Structures::ValueType GetType() = 0;
  /// Slot 18. Declares the type; `Null` declares none. Cells stay as they are.
  virtual void SetType(Structures::ValueType type) = 0;
  /// Slots 19 and 20. A flag for callers that hide the column, initially 0; any
  /// byte may be set. The library stores it, and only a merge copies it.
  virtual void SetHidden(uint8_t hidden) = 0;
  virtual uint8_t IsHidden() = 0;
  /// Slot 21. 1 once a Null was written into one of the cells; never cleared.
  virtual uint8_t HasSeenNull() = 0;
  /// Slot 22. The first row whose cell equals `value`, as keys of the table's index
  /// are equal (see `ITable`); null if there is none. Needs no index: constant time
  /// if the table's index is over this column, otherwise linear.
  /// @throws std::runtime_error "Pointer of struct Data::Structures::_VARIANT
  ///         must not be null!", and the failure of hashing or comparing
  virtual IRow* FindRow(const Structures::_VARIANT* value) = 0;
  /// Slot 23. Whether this is a column of `table`.
  virtual bool BelongsTo(ITable* table) = 0;
  /// Slot 24. Writes a copy of `value` into the cell of every row, as `IRow` writes
  /// cells. Ends early if a callback removes the column.
  /// @throws std::runtime_error "Pointer of struct Data::Structures::_VARIANT
  ///         must not be null!"
  virtual void Fill(const Structures::_VARIANT* value) = 0;
  /// Slots 25 and 26. A flag for callers that do not let the cells be edited,
  /// initially 0; any byte may be set. The library stores it, and only a merge
  /// copies it.
  virtual void SetReadOnly(uint8_t readOnly) = 0;
  virtual uint8_t IsReadOnly() = 0;

 protected:
  ~IColumn() = default;
};

}  // namespace Data::Interfaces
