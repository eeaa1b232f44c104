#pragma once

#include "Core/IErrorCode.h"

namespace Data::Interfaces {

struct IColumn;
struct IObjectList;

/// The column set of a table, shared by the table and its columns. Returned
/// columns carry no reference. A header that outlives its table still lists the
/// columns, which then belong to no table.
struct ITableHeader : Core::IObject {
  /// Slot 6. The column at a position.
  /// @return null with "Column index out of range [%d/%d]!" (index, count)
  virtual IColumn* GetColumn(int32_t index, Core::IErrorCode** error) = 0;
  /// Slot 7. The column of that name; names are compared byte by byte.
  /// @throws std::out_of_range "invalid unordered_map<K, T> key" without one,
  ///         std::runtime_error "Pointer of char must not be null!"
  virtual IColumn* GetColumnByName(const char* name) = 0;
  /// Slot 8. Number of columns.
  virtual int64_t GetColumnCount() = 0;
  /// Slot 9. Whether this very column stands in the header.
  /// @throws std::runtime_error "Null pointer exception! Interface is not
  ///         accessible: struct Data::Interfaces::IColumn" for null
  virtual bool Contains(IColumn* column) = 0;
  /// Slot 10. Whether there is a column of that name.
  /// @throws std::runtime_error "Pointer of char must not be null!"
  virtual bool HasColumn(const char* name) = 0;
  /// Slot 11. A new list of all columns in their order; the caller releases it.
  virtual bool GetColumns(IObjectList** out, Core::IErrorCode** error) = 0;
  /// Slot 12. Name of the column that the table's unique index was built over,
  /// "" without an index; owned by the header, valid until the index or that
  /// name changes.
  virtual const char* GetIndexName() = 0;
  /// Slot 13. Sets the name of the table; null sets "".
  virtual void SetName(const char* name) = 0;
  /// Slot 14. The name of the table, "" at first; owned by the header and valid
  /// until the next `SetName`.
  virtual const char* GetName() = 0;

 protected:
  ~ITableHeader() = default;
};

}  // namespace Data::Interfaces
