#include "C/WritingCells.h"

#include <algorithm>

#include "Tables/TableImpl.h"
#include "Text/Digits.h"

namespace Data::c {

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

/// Whether no date-time in the cells at an index has a time.
bool AreDates(const impl::TableImpl& table, std::int32_t index) {
  return std::ranges::all_of(table.Rows(), [=](const auto& row) {
    const _VARIANT* const cell = row->CellOrNull(index);
    DateTimeImpl* const value = cell ? OwnDateTime(*cell) : nullptr;
    return !value || ExactDateTime(*value).IsDate();
  });
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
  char* end = impl::PutIso8601Seconds(begin, fields_);
  if (ticks_ != 0 || fields_.millisecond != 0) {
    // Seven digits after a leading zero, which becomes the point.
    const std::uint32_t ticks = fields_.millisecond * 10'000u + ticks_;
    impl::PutEightDigits(end, impl::EightDigits(ticks));
    *end = '.';
    end += ticks_ != 0 ? 8 : 4;
  }
  *end = 'Z';
  text.EndAt(end + 1);
}

bool DateColumns::HasOnlyDates(std::size_t column) const {
  const Column known = columns_[column];
  if (known != Column::Unknown) return known == Column::OnlyDates;
  const impl::TableImpl* const own = table_.OwnTable();
  const bool areDates = own && AreDates(*own, table_.ColumnIndex(column));
  columns_[column] = areDates ? Column::OnlyDates : Column::Other;
  return areDates;
}

bool DateColumns::Append(const _VARIANT& cell, std::size_t column, TextBuffer& text) const {
  DateTimeImpl* const value = OwnDateTime(cell);
  if (!value) return false;
  const ExactDateTime dateTime(*value);
  dateTime.Append(dateTime.IsDate() && HasOnlyDates(column), text);
  return true;
}

}  // namespace Data::c
