#pragma once

#include "Core/IErrorCode.h"

namespace Data::Interfaces {

struct IColumn;
struct IObjectList;

/// The columns and the name of a table.
///
/// Ownership. Returned columns carry no reference. A header that outlives its table still lists the
/// columns, which then belong to no table.
///
/// Failures. Operations with an `error` argument never throw; all others throw std::runtime_error
/// unless stated otherwise. A failed operation changes nothing. This includes a lack of memory,
/// which throws std::bad_alloc or, in an operation with an `error` argument, fails with code 2.
///
/// Threads. Not synchronised: concurrent reads are safe; `SetName` and every change of the table's
/// columns need exclusive access. Take `Lock` of the table around shared use. Reference counting is
/// atomic.
struct ITableHeader : Core::IObject {
  /// Slot 6. The column at an index.
  /// @return null with "Column index out of range [%d/%d]!" (index, count)
  virtual IColumn* GetColumn(int32_t index, Core::IErrorCode** error) = 0;
  /// Slot 7. The column with the given name. Names are compared byte by byte.
  /// @throws std::out_of_range "invalid unordered_map<K, T> key" for a missing name,
  ///         std::runtime_error "Pointer of char must not be null!"
  virtual IColumn* GetColumnByName(const char* name) = 0;
  /// Slot 8. The number of columns.
  virtual int64_t GetColumnCount() = 0;
  /// Slot 9. Whether a column belongs to this header.
  /// @throws std::runtime_error "Null pointer exception! Interface is not accessible: struct
  ///         Data::Interfaces::IColumn" for null, "Memory address [%p] is invalid ..." for an
  ///         object of another interface
  virtual bool Contains(IColumn* column) = 0;
  /// Slot 10. Whether there is a column with the given name.
  /// @throws std::runtime_error "Pointer of char must not be null!"
  virtual bool HasColumn(const char* name) = 0;
  /// Slot 11. A new list of all columns in order. The caller releases it.
  /// @return false with "Pointer to a pointer of struct Data::Interfaces::IObjectList must not be
  ///         null! Address of return must be specified!" or "Pointer of struct
  ///         Data::Interfaces::IObjectList must be null in order to avoid memory leaks!"
  virtual bool GetColumns(IObjectList** out, Core::IErrorCode** error) = 0;
  /// Slot 12. The name of the table's index column, or "" without an index. Owned by the column;
  /// valid until the index or that name changes.
  virtual const char* GetIndexName() = 0;
  /// Slot 13. Sets the name of the table to a copy of `name`; null sets "".
  virtual void SetName(const char* name) = 0;
  /// Slot 14. The name of the table, initially "". Owned by the header; valid until the next
  /// `SetName`.
  virtual const char* GetName() = 0;

 protected:
  ~ITableHeader() = default;
};

}  // namespace Data::Interfaces
