#pragma once

#include <cstdint>

/// The proleptic Gregorian calendar: conversions between calendar fields and
/// ticks of 100 nanoseconds since 1601-01-01. Every input has a defined result;
/// tick counts are exact modulo 2^64.
namespace Data::impl {

inline constexpr std::int64_t kTicksPerMillisecond = 10'000;
inline constexpr std::int64_t kTicksPerSecond = 1'000 * kTicksPerMillisecond;
inline constexpr std::int64_t kTicksPerMinute = 60 * kTicksPerSecond;
inline constexpr std::int64_t kTicksPerHour = 60 * kTicksPerMinute;
inline constexpr std::int64_t kTicksPerDay = 24 * kTicksPerHour;
inline constexpr std::uint64_t kTicksAtPosixEpoch = 116'444'736'000'000'000;
/// 9999-12-31T00:00:00: the start of the last day, not its end.
inline constexpr std::uint64_t kTicksAtMaximum = 2'650'466'880'000'000'000;

/// The eight words of the Windows system-time record, in its order.
struct CalendarFields {
  std::uint16_t year = 0;
  std::uint16_t month = 0;
  std::uint16_t dayOfWeek = 0;  ///< Sunday 0 to Saturday 6
  std::uint16_t day = 0;
  std::uint16_t hour = 0;
  std::uint16_t minute = 0;
  std::uint16_t second = 0;
  std::uint16_t millisecond = 0;

  friend bool operator==(const CalendarFields&, const CalendarFields&) = default;
};

inline constexpr CalendarFields kMinimumFields = {.year = 1, .month = 1, .day = 1};

/// The tick count of a number of seconds since 1970-01-01; the product wraps.
constexpr std::uint64_t TicksOfPosixTime(std::int64_t seconds) {
  return static_cast<std::uint64_t>(seconds) * kTicksPerSecond + kTicksAtPosixEpoch;
}

/// The day of the week, Sunday 0; meaningless for a month above 12.
std::uint16_t ComputeDayOfWeek(const CalendarFields& fields);

/// The tick count of any fields. An out-of-range field carries over: 30 February
/// is 1 or 2 March, month 13 the next January, day 0 the day before day 1.
/// Before 1601 the count is negative, in two's complement.
std::uint64_t ToTicks(const CalendarFields& fields);

/// The fields of a tick count, taken as signed; all zero before year 1.
CalendarFields ToFields(std::uint64_t ticks);

/// 1 for 1 January.
std::int32_t ComputeDayOfYear(const CalendarFields& fields);
/// The ISO 8601 week number, computed from the stored day of week.
std::int32_t ComputeWeekOfYear(const CalendarFields& fields);

/// Moves by whole months. The day is reduced to the length of the new month, the
/// year wraps at 16 bits and the day of week is recomputed.
CalendarFields ShiftMonths(CalendarFields fields, std::int32_t months);

}  // namespace Data::impl
