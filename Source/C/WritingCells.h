#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "Data/Structures/Variant.h"
#include "DateTime/DateTimeImpl.h"
#include "Tables/RowsText.h"

/// What the exact forms of delimited text and JSON share.
namespace Data::c {

/// A date-time as text with all its ticks.
class ExactDateTime {
 public:
  explicit ExactDateTime(impl::DateTimeImpl& value);

  /// Whether a date without a time reads back as the same date-time.
  bool IsDate() const;
  /// Appends 2024-11-14 or 2024-11-14T10:20:30Z.
  void Append(bool asDate, impl::TextBuffer& text) const;

 private:
  /// Those of the object if they can be read back, else those of its ticks.
  impl::CalendarFields fields_;
  /// Ticks that the fields do not express.
  std::uint32_t ticks_ = 0;
};

/// Date-times of columns, which are written without a time where all of a column are dates.
class DateColumns {
 public:
  /// A table of the caller's own class has no column of dates.
  explicit DateColumns(const impl::TableCursor& table)
      : table_(table), columns_(table.ColumnCount()) {}

  /// Appends the library's own date-time.
  /// @return false for any other cell
  bool Append(const Structures::_VARIANT& cell, std::size_t column, impl::TextBuffer& text) const;

 private:
  enum class Column : std::uint8_t { Unknown, OnlyDates, Other };

  bool HasOnlyDates(std::size_t column) const;

  const impl::TableCursor& table_;
  /// A column is looked at when the first date in it is written, perhaps by several threads.
  mutable std::vector<std::atomic<Column>> columns_;
};

}  // namespace Data::c
