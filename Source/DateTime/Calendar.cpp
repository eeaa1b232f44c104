#include "DateTime/Calendar.h"

#include <algorithm>

namespace Data::impl {

namespace {

constexpr std::int64_t FloorDivide(std::int64_t value, std::int64_t divisor) {
  const std::int64_t quotient = value / divisor;
  return quotient - (value % divisor < 0);
}

/// Days since 1970-01-01. The year is counted from March: then the leap day is its last day and the
/// lengths of the months follow a linear rule.
constexpr std::int64_t DayNumber(std::int64_t year, std::int64_t month, std::int64_t day) {
  const bool beforeMarch = month < 3;
  const std::int64_t shiftedYear = year - beforeMarch;
  const std::int64_t century = FloorDivide(shiftedYear, 100);
  const std::int64_t daysBeforeMonth = ((month + (beforeMarch ? 9 : -3)) * 979 + 19) / 32;
  return daysBeforeMonth + FloorDivide(shiftedYear * 1461, 4) + day + FloorDivide(century, 4) -
         century - 719469;
}

constexpr std::int64_t kDay1601 = DayNumber(1601, 1, 1);
constexpr std::int64_t kFirstDay = DayNumber(1, 1, 1);

/// Like `DayNumber`, for any month: 13 is January of the next year. Month 0, the December of the
/// previous year, is right in `DayNumber`.
constexpr std::int64_t DayNumberOf(const CalendarFields& fields) {
  return DayNumber(fields.year + fields.month / 12, fields.month % 12, fields.day);
}

constexpr std::uint16_t DayOfWeekOfDay(std::int64_t dayNumber) {
  const std::int64_t shifted = dayNumber + 4;  // 1970-01-01 was a Thursday
  return static_cast<std::uint16_t>(shifted - 7 * FloorDivide(shifted, 7));
}

constexpr std::int64_t TicksOfDay(const CalendarFields& fields) {
  return fields.hour * kTicksPerHour + fields.minute * kTicksPerMinute +
         fields.second * kTicksPerSecond + fields.millisecond * kTicksPerMillisecond;
}

/// The inverse of `DayNumber`, from year 1 on.
void SetDayNumber(CalendarFields& fields, std::int64_t dayNumber) {
  // Days since 0000-03-01, the start of a 400-year cycle.
  const auto days = static_cast<std::uint32_t>(dayNumber - DayNumber(0, 3, 1));
  const std::uint32_t era = days / 146097;
  const std::uint32_t dayOfEra = days % 146097;
  const std::uint32_t yearOfEra =
      (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const std::uint32_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::uint32_t monthFromMarch = (5 * dayOfYear + 2) / 153;
  const std::uint32_t month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
  fields.day = static_cast<std::uint16_t>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
  fields.month = static_cast<std::uint16_t>(month);
  fields.year = static_cast<std::uint16_t>(era * 400 + yearOfEra + (month < 3));
  fields.dayOfWeek = DayOfWeekOfDay(dayNumber);
}

constexpr bool IsLeapYear(std::uint32_t year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

constexpr std::uint16_t DaysInMonth(std::uint16_t year, std::uint16_t month) {
  constexpr std::uint16_t kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

constexpr std::int32_t IsoDayOfWeek(std::uint16_t dayOfWeek) {
  return dayOfWeek == 0 ? 7 : dayOfWeek;
}

constexpr std::uint16_t LastDayOfWeek(std::int64_t year) {
  return DayOfWeekOfDay(DayNumber(year, 12, 31));
}

std::int32_t WeekOf(std::int64_t year, std::int32_t dayOfYear, std::uint16_t dayOfWeek) {
  const auto week =
      static_cast<std::int32_t>(FloorDivide(dayOfYear - IsoDayOfWeek(dayOfWeek) + 10, 7));
  if (week == 0)  // the last week of the previous year
    return WeekOf(year - 1, 365 + IsLeapYear(static_cast<std::uint32_t>(year - 1)),
                  LastDayOfWeek(year - 1));
  if (week == 53 && IsoDayOfWeek(LastDayOfWeek(year)) < 4) return 1;
  return week;
}

}  // namespace

std::uint16_t ComputeDayOfWeek(const CalendarFields& fields) {
  return DayOfWeekOfDay(DayNumber(fields.year, fields.month, fields.day));
}

std::uint64_t ToTicks(const CalendarFields& fields) {
  const auto days = static_cast<std::uint64_t>(DayNumberOf(fields) - kDay1601);
  return days * static_cast<std::uint64_t>(kTicksPerDay) +
         static_cast<std::uint64_t>(TicksOfDay(fields));
}

CalendarFields ToFields(std::uint64_t ticks) {
  const auto signedTicks = static_cast<std::int64_t>(ticks);
  const std::int64_t days = FloorDivide(signedTicks, kTicksPerDay);
  CalendarFields fields;
  if (days + kDay1601 < kFirstDay) return fields;
  SetDayNumber(fields, days + kDay1601);
  const auto milliseconds =
      static_cast<std::uint32_t>((signedTicks - days * kTicksPerDay) / kTicksPerMillisecond);
  fields.hour = static_cast<std::uint16_t>(milliseconds / 3'600'000);
  fields.minute = static_cast<std::uint16_t>(milliseconds / 60'000 % 60);
  fields.second = static_cast<std::uint16_t>(milliseconds / 1'000 % 60);
  fields.millisecond = static_cast<std::uint16_t>(milliseconds % 1'000);
  return fields;
}

std::int32_t ComputeDayOfYear(const CalendarFields& fields) {
  return static_cast<std::int32_t>(DayNumberOf(fields) - DayNumber(fields.year, 1, 1) + 1);
}

std::int32_t ComputeWeekOfYear(const CalendarFields& fields) {
  return WeekOf(fields.year, ComputeDayOfYear(fields), fields.dayOfWeek);
}

CalendarFields ShiftMonths(CalendarFields fields, std::int32_t months) {
  const std::int64_t month = std::int64_t{fields.month} + months;
  const std::int64_t years = FloorDivide(month - 1, 12);
  fields.month = static_cast<std::uint16_t>(month - 12 * years);
  fields.year = static_cast<std::uint16_t>(fields.year + years);
  fields.day = std::min(fields.day, DaysInMonth(fields.year, fields.month));
  fields.dayOfWeek = ComputeDayOfWeek(fields);
  return fields;
}

}  // namespace Data::impl
