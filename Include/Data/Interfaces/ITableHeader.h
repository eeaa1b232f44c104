#pragma once

#include "Core/IErrorCode.h"

namespace Data::Interfaces {

struct IColumn;
struct IObjectList;

/// The columns and the name of a table.
///
/// Ownership. Returned columns carry no reference. A header that outlives its table
/// still lists the columns, which then belong to no table.
///
/// Memory. A lack of memory throws std::bad_alloc or, in a guarded operation,
/// returns null or false with code 2; nothing is changed.
///
/// Threads. Not synchronised: concurrent reads are safe, `SetName` and every change
/// of the table's columns need exclusive access. Reference counting is atomic.
struct ITableHeader : Core::IObject {
  /// Slot 6. The column at a position.
  /// @return null with "Column index out of range [%d/%d]!" (index, count)
  virtual IColumn* GetColumn(int32_t index, Core::IErrorCode** error) = 0;
  /// Slot 7. The column of that name; names are compared byte by byte.
  /// @throws std::out_of_range "invalid unordered_map<K, T> key" for a missing name,
  ///         std::runtime_error "Pointer of char must not be null!"
  virtual IColumn* GetColumnByName(const char* name) = 0;
  /// Slot 8. Number of columns.
  virtual int64_t GetColumnCount() = 0;
  /// Slot 9. Whether the column is one of this header.
  /// @throws std::runtime_error "Null pointer exception! Interface is not
  ///         accessible: struct Data::Interfaces::IColumn" for null
  virtual bool Contains(IColumn* column) = 0;
  /// Slot 10. Whether there is a column of that name.
  /// @throws std::runtime_error "Pointer of char must not be null!"
  virtual bool HasColumn(const char* name) = 0;
  /// Slot 11. A new list of all columns in order; the caller releases it.
  virtual bool GetColumns(IObjectList** out, Core::IErrorCode** error) = 0;
  /// Slot 12. The name of the column that the table's index is over, "" without an
  /// index. Owned by the column; valid until the index or that name changes.
  virtual const char* GetIndexName() = 0;
  /// Slot 13. Sets the name of the table; null sets "".
  virtual void SetName(const char* name) = 0;
  /// Slot 14. The name of the table, initially "". Owned by the header; valid until
  /// the next `SetName`.
  virtual const char* GetName() = 0;

 protected:
  ~ITableHeader() = default;
};

}  // namespace Data::Interfaces
