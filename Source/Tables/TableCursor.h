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

namespace Data::impl {

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

  /// Moves to the next row.
  /// @return false when there is none
  bool NextRow();
  /// Moves to a row of the table.
  void MoveTo(Interfaces::IRow& row);

  /// A cell of the row; valid until the next call of `UseText`.
  const Structures::_VARIANT& Cell(std::size_t column) const {
    const std::int32_t index = columns_[column].index;
    return index >= 0 && index < cellCount_ ? cells_[index] : kNull;
  }

  /// Calls `use` with the display text of a cell of the row.
  /// @throws what `Core::ToText` throws for a cell whose contents do not match its type
  template <class Use>
  void UseText(const Structures::_VARIANT& cell, Use&& use);

 private:
  struct Column {
    Core::Ptr<Interfaces::IColumn> object;
    std::int32_t index;
  };

  static constexpr Structures::_VARIANT kNull = Core::MakeNull();

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

template <class Use>
void TableCursor::UseText(const Structures::_VARIANT& cell, Use&& use) {
  using Core::ValueType;
  Core::IObject* const object = Core::ReferencedObject(cell);
  const ValueType type = Core::TypeOf(cell);
  if (!object) {
    const bool isInline = type == ValueType::String && HasForm(cell, Core::StorageForm::Value);
    return isInline ? use(Core::InlineText(cell)) : use(Core::ToText(cell));
  }
  // Nearly all objects are the library's own strings and date-times, which never call back.
  if (type == ValueType::String)
    if (auto* const text = Core::ExactCast<MultiByteStringImpl>(object))
      return use(Core::Utf8View(*text));
  if (type == ValueType::DateTime)
    if (auto* const dateTime = Core::ExactCast<DateTimeImpl>(object))
      return use(Iso8601Text::DateTime(dateTime->Fields()));
  use(TextOfOtherObject(cell));
}

}  // namespace Data::impl
