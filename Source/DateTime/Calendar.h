#pragma once

#include <cstdint>

/// The proleptic Gregorian calendar: conversions between calendar fields and
/// ticks of 100 nanoseconds since 1601-01-01. Total functions: every input has
/// a defined result, tick counts are exact modulo 2^64.
namespace Data::impl {

inline constexpr std::int64_t kTicksPerMillisecond = 10'000;
inline constexpr std::int64_t kTicksPerSecond = 1'000 * kTicksPerMillisecond;
inline constexpr std::int64_t kTicksPerMinute = 60 * kTicksPerSecond;
inline constexpr std::int64_t kTicksPerHour = 60 * kTicksPerMinute;
inline constexpr std::int64_t kTicksPerDay = 24 * kTicksPerHour;
inline constexpr std::uint64_t kTicksAtPosixEpoch = 116'444'736'000'000'000;

/// The eight words of the system-time record of Windows, in its order.
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

/// Ticks of seconds since 1970-01-01.
constexpr std::uint64_t TicksOfPosixTime(std::int64_t seconds) {
  return static_cast<std::uint64_t>(seconds) * kTicksPerSecond + kTicksAtPosixEpoch;
}

/// The day of week of year, month and day, Sunday 0.
std::uint16_t ComputeDayOfWeek(const CalendarFields& fields);

/// Ticks of any fields. Fields beyond their range count on from the nearest
/// earlier valid value: 30 February is 2 March or 1 March, month 13 is the next
/// January, day 0 the day before day 1. Before 1601 the count is negative, as
/// two's complement.
std::uint64_t ToTicks(const CalendarFields& fields);

/// Fields of a tick count, read as signed. Before year 1 they are all zero.
CalendarFields ToFields(std::uint64_t ticks);

/// 1 for 1 January.
std::int32_t ComputeDayOfYear(const CalendarFields& fields);
/// Week number of ISO 8601, by the stored day of week.
std::int32_t ComputeWeekOfYear(const CalendarFields& fields);

/// Moves by whole months: the year keeps 16 bits, the day is cut to the length
/// of the new month, the day of week follows.
CalendarFields ShiftMonths(CalendarFields fields, std::int32_t months);

}  // namespace Data::impl
