#include "DateTime/DateTimeImpl.h"

#include <cmath>
#include <cstring>
#include <limits>

#include "Core/ExactCast.h"
#include "Core/Variant.h"
#include "DateTime/Iso8601Text.h"

namespace Data::impl {

using Interfaces::IDateTime;
using Interfaces::IString;
using Structures::DateTimeUnit;

namespace {

/// Truncated toward zero; out-of-range values become the nearest bound, NaN
/// becomes 0.
std::int64_t ToWholeTicks(double ticks) {
  constexpr double kBound = 9223372036854775808.0;
  if (std::isnan(ticks)) return 0;
  if (ticks >= kBound) return std::numeric_limits<std::int64_t>::max();
  if (ticks < -kBound) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(ticks);
}

/// The product modulo 2^32.
std::int32_t WrappingProduct(std::int32_t value, std::uint32_t factor) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(value) * factor);
}

void MakeText(char* (*put)(char*, const CalendarFields&), const CalendarFields& fields,
              IString** out) {
  if (!out) return;
  char text[kIso8601Room];
  const char* const end = put(text, fields);
  *out = Core::MakeString({text, static_cast<std::size_t>(end - text)}).Detach();
}

/// The fields that `CompareByUnit` compares, in order. It starts at the field of the unit and ends
/// at the year.
using FieldReader = std::int32_t (*)(IDateTime&);
constexpr FieldReader kFieldsFromFinest[] = {
    [](IDateTime& value) { return static_cast<std::int32_t>(value.GetNanosecond() / 1'000'000); },
    [](IDateTime& value) -> std::int32_t { return value.GetSecond(); },
    [](IDateTime& value) -> std::int32_t { return value.GetMinute(); },
    [](IDateTime& value) -> std::int32_t { return value.GetHour(); },
    [](IDateTime& value) -> std::int32_t { return value.GetDay(); },
    [](IDateTime& value) { return value.GetWeekOfYear(); },
    [](IDateTime& value) -> std::int32_t { return value.GetMonth(); },
    [](IDateTime& value) -> std::int32_t { return value.GetYear(); },
};
constexpr std::int32_t kFinestUnit = static_cast<std::int32_t>(DateTimeUnit::Millisecond);
/// Another number that callers use for the finest unit.
constexpr std::int32_t kFinestUnitAlias = -100;

std::int32_t Order(std::int64_t left, std::int64_t right) {
  return left < right ? -1 : left > right ? 1 : 0;
}

CalendarFields StartOfWeek(const CalendarFields& fields, std::int32_t isoDayOfWeek) {
  return ToFields(ToTicks(fields) - static_cast<std::uint64_t>(isoDayOfWeek - 1) *
                                        static_cast<std::uint64_t>(kTicksPerDay));
}

}  // namespace

void DateTimeImpl::SetDate(const CalendarFields& fields) {
  SetFields(fields);
  fields_.dayOfWeek = ComputeDayOfWeek(fields);
}

void DateTimeImpl::SetFields(const CalendarFields& fields) {
  fields_ = fields;
  ticks_ = ToTicks(fields);
}

void DateTimeImpl::SetTicks(std::uint64_t ticks) {
  ticks_ = ticks;
  fields_ = ToFields(ticks);
}

std::uint16_t DateTimeImpl::GetDayOfWeek() {
  return fields_.dayOfWeek == 0 ? std::uint16_t{7} : fields_.dayOfWeek;
}

void DateTimeImpl::SetYear(std::uint16_t year) {
  fields_.year = year;
  SetDate(fields_);
}

void DateTimeImpl::SetMonth(std::uint16_t month) {
  fields_.month = month;
  SetDate(fields_);
}

void DateTimeImpl::SetDay(std::uint16_t day) {
  fields_.day = day;
  SetDate(fields_);
}

void DateTimeImpl::SetHour(std::uint16_t hour) {
  fields_.hour = hour;
  SetFields(fields_);
}

void DateTimeImpl::SetMinute(std::uint16_t minute) {
  fields_.minute = minute;
  SetFields(fields_);
}

void DateTimeImpl::SetSecond(std::uint16_t second) {
  fields_.second = second;
  SetFields(fields_);
}

void DateTimeImpl::SetNanosecond(std::int32_t nanosecond) {
  fields_.millisecond = static_cast<std::uint16_t>(nanosecond / 1'000'000);
  SetFields(fields_);
}

void DateTimeImpl::AddYears(std::int32_t years) { AddMonths(WrappingProduct(years, 12)); }

void DateTimeImpl::AddMonths(std::int32_t months) { SetFields(ShiftMonths(fields_, months)); }

void DateTimeImpl::AddDays(std::int32_t days) { AddHours(WrappingProduct(days, 24)); }

void DateTimeImpl::AddHours(double hours) { AddTicks(ToWholeTicks(hours * kTicksPerHour)); }

void DateTimeImpl::AddMinutes(double minutes) { AddTicks(ToWholeTicks(minutes * kTicksPerMinute)); }

void DateTimeImpl::AddSeconds(double seconds) { AddTicks(ToWholeTicks(seconds * kTicksPerSecond)); }

void DateTimeImpl::AddMilliseconds(double milliseconds) {
  AddTicks(ToWholeTicks(milliseconds * kTicksPerMillisecond));
}

void DateTimeImpl::AddTicks(std::int64_t ticks) {
  SetTicks(ticks_ + static_cast<std::uint64_t>(ticks));
}

std::int32_t DateTimeImpl::CompareByUnit(IDateTime* other, DateTimeUnit unit) {
  auto finest = static_cast<std::int32_t>(unit);
  if (finest == kFinestUnitAlias) finest = kFinestUnit;
  if (finest < 0 || finest > kFinestUnit) return -1;
  if (!Core::ExactCast<DateTimeImpl>(other)) Core::CheckInterface(other);
  // Both are held: code of the other object may release them.
  const Core::Ptr<IDateTime> held(this), heldOther(other);
  for (std::int32_t field = kFinestUnit - finest; field <= kFinestUnit; ++field) {
    // A week lies in a year, not in a month.
    if (unit == DateTimeUnit::Week && field == kFinestUnit - 1) continue;
    const FieldReader read = kFieldsFromFinest[field];
    if (const std::int32_t order = Order(read(*this), read(*other))) return order;
  }
  return 0;
}

std::int32_t DateTimeImpl::CompareTo(IDateTime* other) {
  if (!Core::ExactCast<DateTimeImpl>(other)) Core::CheckInterface(other);
  const auto ticks = static_cast<std::int64_t>(ticks_);  // read before the other object's code runs
  return Order(ticks, static_cast<std::int64_t>(other->GetFileTime()));
}

void DateTimeImpl::Clone(IDateTime** out) {
  if (!out) return;
  // A date-time created from a file time of 2^63 or more has no fields, and its
  // clone has none either.
  const bool beyondCalendar = fields_ == CalendarFields();
  *out = (beyondCalendar ? Core::MakePtr<DateTimeImpl>(ticks_, fields_)
                         : Core::MakePtr<DateTimeImpl>(ticks_))
             .Detach();
}

bool DateTimeImpl::SetTimeZone(const char* name) {
  Core::CheckArgument(name);
  const std::size_t size = std::strlen(name) + 1;
  auto copy = std::make_unique<char[]>(size);
  std::memcpy(copy.get(), name, size);
  timeZone_ = std::move(copy);  // last: the name may be this object's own
  return true;
}

void DateTimeImpl::ToIso8601(IString** out) { MakeText(PutIso8601DateTime, fields_, out); }

void DateTimeImpl::ToIso8601Time(IString** out) { MakeText(PutIso8601Time, fields_, out); }

void DateTimeImpl::ToIso8601Date(IString** out) { MakeText(PutIso8601Date, fields_, out); }

void DateTimeImpl::ToIso8601Basic(IString** out) { MakeText(PutIso8601Basic, fields_, out); }

std::uint64_t DateTimeImpl::GetStartOf(DateTimeUnit unit) {
  CalendarFields start = fields_;
  switch (unit) {
    case DateTimeUnit::Year:
      start.month = 1;
      [[fallthrough]];
    case DateTimeUnit::Month:
      start.day = 1;
      [[fallthrough]];
    case DateTimeUnit::Day:
      start.hour = 0;
      [[fallthrough]];
    case DateTimeUnit::Hour:
      start.minute = 0;
      [[fallthrough]];
    case DateTimeUnit::Minute:
      start.second = 0;
      [[fallthrough]];
    case DateTimeUnit::Second:
      start.millisecond = 0;
      break;
    case DateTimeUnit::Week:
      start = StartOfWeek(fields_, GetDayOfWeek());
      start.hour = start.minute = start.second = start.millisecond = 0;
      break;
    default:
      break;
  }
  return ToTicks(start);
}

std::int64_t DateTimeImpl::ToPosixTime() {
  return static_cast<std::int64_t>(ticks_ - kTicksAtPosixEpoch) / kTicksPerSecond;
}

}  // namespace Data::impl
