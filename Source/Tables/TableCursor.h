#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Core/ExactCast.h"
#include "Core/Ptr.h"
#include "Core/Variant.h"
#include "Data/Interfaces/IColumn.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/ITable.h"
#include "DateTime/DateTimeImpl.h"
#include "Tables/NameOf.h"
#include "Text/MultiByteStringImpl.h"
#include "Text/PaddedText.h"

namespace Data::impl {

struct TableImpl;

/// Iterates over the rows of a table for a writer.
///
/// An object in a cell may be the caller's own and may change or release the table while its text
/// is read. So the cursor holds what it reads from and determines all positions again after each
/// such call: removed rows and added rows and columns are skipped; a removed column is Null, and so
/// is the rest of a row that is removed while it is read.
class TableCursor {
 public:
  /// Starts before the first row.
  explicit TableCursor(Interfaces::ITable& table);

  /// The columns that the table had when the cursor was created.
  std::size_t ColumnCount() const { return columns_.size(); }
  const char* ColumnName(std::size_t column) const { return NameOf(*columns_[column].object); }
  /// The index of the column's cells in a row.
  std::int32_t ColumnIndex(std::size_t column) const { return columns_[column].index; }

  /// The table if it is the library's own, else null.
  const TableImpl* OwnTable() const;

  /// Moves to the next row.
  /// @return false when there is none
  bool NextRow();
  /// Makes the row at an index the next one. Only before the first row.
  void SkipTo(std::size_t row) { next_ = static_cast<std::int64_t>(row); }
  /// Moves to a row of the table.
  void MoveTo(Interfaces::IRow& row);

  /// A cell of the row; valid until the next call of `UseText`.
  const Structures::_VARIANT& Cell(std::size_t column) const {
    const std::int32_t index = columns_[column].index;
    return index >= 0 && index < cellCount_ ? cells_[index] : kNull;
  }

  /// Calls `use` with the display text, a `PaddedText`, of a cell of the row.
  /// @return true
  /// @throws what `Core::ToText` throws for a cell whose contents do not match its type
  template <class Use>
  bool UseText(const Structures::_VARIANT& cell, Use&& use);

  static constexpr Structures::_VARIANT kNull = Core::MakeNull();

 private:
  struct Column {
    Core::Ptr<Interfaces::IColumn> object;
    std::int32_t index;
  };

  std::string TextOfOtherObject(const Structures::_VARIANT& cell);
  void HoldRows();
  void LocateCells();
  void LocateAgain();

  Core::Ptr<Interfaces::ITable> table_;
  std::vector<Column> columns_;
  Core::Ptr<Interfaces::IRow> row_;
  const Structures::_VARIANT* cells_ = nullptr;
  std::int64_t cellCount_ = 0;
  std::int64_t next_ = 0;  // index of the next row
  /// The rows that the table had when an object in a cell was first called; empty before that.
  std::vector<Core::Ptr<Interfaces::IRow>> rows_;
};

/// The date-time that a cell refers to if it is of the library's own class, which never calls back.
inline DateTimeImpl* OwnDateTime(const Structures::_VARIANT& cell) {
  if (Core::TypeOf(cell) != Core::ValueType::DateTime) return nullptr;
  return Core::ExactCast<DateTimeImpl>(Core::ReferencedObject(cell));
}

/// Calls `use` with the display text, a `PaddedText`, of a cell that refers to no object.
/// @return true
template <class Use>
bool UseTextWithoutObject(const Structures::_VARIANT& cell, Use&& use) {
  const bool isInline =
      Core::TypeOf(cell) == Core::ValueType::String && HasForm(cell, Core::StorageForm::Value);
  if (isInline) {
    use(PaddedText(cell));
  } else {
    const std::string text = Core::ToText(cell);
    Structures::_VARIANT room;
    use(PaddedText(text, room));
  }
  return true;
}

template <class Use>
bool TableCursor::UseText(const Structures::_VARIANT& cell, Use&& use) {
  using Core::ValueType;
  Core::IObject* const object = Core::ReferencedObject(cell);
  const ValueType type = Core::TypeOf(cell);
  if (!object) return UseTextWithoutObject(cell, use);
  // Nearly all objects are the library's own strings, which never call back.
  auto* const string =
      type == ValueType::String ? Core::ExactCast<MultiByteStringImpl>(object) : nullptr;
  const std::string other = string ? std::string() : TextOfOtherObject(cell);
  Structures::_VARIANT room;
  use(PaddedText(string ? Core::Utf8View(*string) : other, room));
  return true;
}

}  // namespace Data::impl
