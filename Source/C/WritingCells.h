#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "Core/Parts.h"
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

/// The columns whose date-times all are dates without a time.
class DateColumns {
 public:
  /// None in a table of the caller's own class.
  DateColumns(const impl::TableCursor& table, Core::Parts& parts);

  /// Appends the library's own date-time.
  /// @return false for any other cell
  bool Append(const Structures::_VARIANT& cell, std::size_t column, impl::TextBuffer& text) const;

 private:
  std::vector<char> areDates_;
};

}  // namespace Data::c
