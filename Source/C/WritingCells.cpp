#include "C/WritingCells.h"

#include <algorithm>

#include "Tables/TableImpl.h"
#include "Text/Digits.h"

namespace Data::c {

using Core::ValueType;
using impl::CalendarFields;
using impl::DateTimeImpl;
using impl::OwnDateTime;
using impl::TextBuffer;
using Structures::_VARIANT;

namespace {

/// Whether the text of the fields reads back as the same fields.
bool IsReadable(const CalendarFields& fields) {
  constexpr std::uint16_t kTwoDigits = 99, kThreeDigits = 999, kFourDigits = 9999;
  return fields.year <= kFourDigits && fields.month != 0 && fields.month <= kTwoDigits &&
         fields.day != 0 && fields.day <= kTwoDigits && fields.hour <= kTwoDigits &&
         fields.minute <= kTwoDigits && fields.second <= kTwoDigits &&
         fields.millisecond <= kThreeDigits;
}

/// Clears the marks of columns that have a date-time with a time in these rows.
void CheckRows(const impl::TableImpl& table, const impl::TableCursor& columns, std::size_t next,
               std::size_t end, std::vector<char>& areDates) {
  struct Column {
    std::size_t number;
    std::int32_t index;
  };
  std::vector<Column> unchecked;
  for (std::size_t i = 0; i < areDates.size(); ++i)
    unchecked.push_back({i, columns.ColumnIndex(i)});
  for (; next != end && !unchecked.empty(); ++next) {
    const impl::RowImpl& row = *table.Rows()[next];
    for (std::size_t i = 0; i < unchecked.size(); ++i) {
      const _VARIANT* const cell = row.CellOrNull(unchecked[i].index);
      if (!cell || Core::TypeOf(*cell) != ValueType::DateTime) continue;
      DateTimeImpl* const dateTime = OwnDateTime(*cell);
      if (!dateTime || ExactDateTime(*dateTime).IsDate()) continue;
      areDates[unchecked[i].number] = 0;
      unchecked.erase(unchecked.begin() + static_cast<std::ptrdiff_t>(i--));
    }
  }
}

}  // namespace

ExactDateTime::ExactDateTime(DateTimeImpl& value) : fields_(value.Fields()) {
  const std::uint64_t ticks = value.GetFileTime();
  if (!IsReadable(fields_)) {
    const CalendarFields normal = impl::ToFields(ticks);
    if (!IsReadable(normal)) return;  // beyond the calendar
    fields_ = normal;
  }
  const std::int64_t rest = static_cast<std::int64_t>(ticks) % impl::kTicksPerMillisecond;
  ticks_ = static_cast<std::uint32_t>(rest < 0 ? rest + impl::kTicksPerMillisecond : rest);
}

bool ExactDateTime::IsDate() const {
  return fields_.hour == 12 && fields_.minute == 0 && fields_.second == 0 &&
         fields_.millisecond == 0 && ticks_ == 0 && IsReadable(fields_);
}

void ExactDateTime::Append(bool asDate, TextBuffer& text) const {
  char* const begin = text.Tail(impl::kIso8601Room);
  if (!IsReadable(fields_)) return text.EndAt(impl::PutIso8601DateTime(begin, fields_));
  if (asDate) return text.EndAt(impl::PutIso8601Date(begin, fields_));
  constexpr std::ptrdiff_t kSeconds = 19;  // 2024-11-14T10:20:30
  impl::PutIso8601DateTime(begin, fields_);
  char* end = begin + kSeconds;
  if (ticks_ != 0) {
    const std::uint32_t ticks = fields_.millisecond * 10'000u + ticks_;
    end = impl::PutEightDigits(end, impl::EightDigits(ticks));
    begin[kSeconds] = '.';
  } else if (fields_.millisecond != 0) {
    end += 4;
  }
  *end = 'Z';
  text.EndAt(end + 1);
}

DateColumns::DateColumns(const impl::TableCursor& table, Core::Parts& parts)
    : areDates_(table.ColumnCount(), 0) {
  const impl::TableImpl* const own = table.OwnTable();
  if (!own) return;
  const std::size_t rows = own->RowCount(), width = table.ColumnCount();
  const std::size_t count = parts.CountFor(rows * width * sizeof(_VARIANT));
  std::vector<std::vector<char>> marks(count, std::vector<char>(width, 1));
  parts.Run(count, [&](std::size_t i) {
    CheckRows(*own, table, rows * i / count, rows * (i + 1) / count, marks[i]);
  });
  for (std::size_t column = 0; column < width; ++column) {
    const auto isDate = [&](const std::vector<char>& part) { return part[column] != 0; };
    areDates_[column] = std::all_of(marks.begin(), marks.end(), isDate) ? 1 : 0;
  }
}

bool DateColumns::Append(const _VARIANT& cell, std::size_t column, TextBuffer& text) const {
  DateTimeImpl* const value = OwnDateTime(cell);
  if (!value) return false;
  const ExactDateTime dateTime(*value);
  // The caller's code may have changed the table since the columns were looked at.
  dateTime.Append(areDates_[column] && dateTime.IsDate(), text);
  return true;
}

}  // namespace Data::c
