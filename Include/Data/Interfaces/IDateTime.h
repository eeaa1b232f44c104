#pragma once

#include "Data/Interfaces/IString.h"
#include "Data/Structures/DateTimeUnit.h"

namespace Data::Interfaces {

/// A date and time of day in UTC. It consists of calendar fields with milliseconds and a count of
/// 100-nanosecond ticks since 1601-01-01. Setting a field recomputes the ticks from whole
/// milliseconds; changing the ticks recomputes the fields.
///
/// The calendar is the proleptic Gregorian calendar from year 1 on. The tick count is a 64-bit
/// number in two's complement. It is negative before 1601, and wraps to negative again in year
/// 30828, so `CompareTo` orders such values first. For a tick count before year 1, all fields are
/// zero.
///
/// Out-of-range fields are kept as set; the tick count normalises them. 30 February 2023 counts as
/// 2 March, month 13 as the next January, hour 24 as the next midnight.
///
/// Failures. No operation is guarded. `Clone`, `SetTimeZone` and the text operations throw
/// std::bad_alloc and then change nothing. All others fail only where stated.
///
/// Callbacks. Only the comparisons call another object, which may be one that the caller
/// implements.
///
/// Threads. Not synchronised: concurrent reads are safe, a change needs exclusive access. Take
/// `Lock` around shared use. Reference counting is atomic.
struct IDateTime : Core::IObject {
  // -- Calendar fields --

  virtual uint16_t GetYear() = 0;    ///< Slot 6.
  virtual uint16_t GetMonth() = 0;   ///< Slot 7. 1 to 12.
  virtual uint16_t GetDay() = 0;     ///< Slot 8. 1 to 31.
  virtual uint16_t GetHour() = 0;    ///< Slot 9. 0 to 23.
  virtual uint16_t GetMinute() = 0;  ///< Slot 10. 0 to 59.
  virtual uint16_t GetSecond() = 0;  ///< Slot 11. 0 to 59.
  /// Slot 12. The fraction of the second in nanoseconds, in whole milliseconds.
  virtual uint32_t GetNanosecond() = 0;
  virtual int32_t GetUtcOffset() = 0;   ///< Slot 13. Minutes; always 0.
  virtual uint16_t GetDayOfWeek() = 0;  ///< Slot 14. Monday 1 to Sunday 7.
  /// Slot 15. The ISO 8601 week, 1 to 53. The first days of January may belong to the last week of
  /// the previous year, and the last days of December to week 1 of the next.
  virtual int32_t GetWeekOfYear() = 0;
  virtual int32_t GetDayOfYear() = 0;  ///< Slot 16. 1 to 366.

  virtual void SetYear(uint16_t year) = 0;      ///< Slot 17. Sets the year.
  virtual void SetMonth(uint16_t month) = 0;    ///< Slot 18. Sets the month.
  virtual void SetDay(uint16_t day) = 0;        ///< Slot 19. Sets the day.
  virtual void SetHour(uint16_t hour) = 0;      ///< Slot 20. Sets the hour.
  virtual void SetMinute(uint16_t minute) = 0;  ///< Slot 21. Sets the minute.
  virtual void SetSecond(uint16_t second) = 0;  ///< Slot 22. Sets the second.
  /// Slot 23. Sets the fraction of the second. Stored as whole milliseconds in 16 bits, rounded
  /// toward zero.
  virtual void SetNanosecond(int32_t nanosecond) = 0;

  // -- Arithmetic --

  /// Slot 24. Adds 12 months per year; the 32-bit product wraps.
  virtual void AddYears(int32_t years) = 0;
  /// Slot 25. Adds calendar months. The day is limited to the length of the new month: 31 January
  /// plus one month is 28 or 29 February. The year wraps at 16 bits.
  virtual void AddMonths(int32_t months) = 0;
  /// Slot 26. Adds 24 hours per day; the 32-bit product wraps.
  virtual void AddDays(int32_t days) = 0;
  /// Slot 27. Adds hours, rounded toward zero to whole ticks and limited to 64 bits. NaN adds
  /// nothing.
  virtual void AddHours(double hours) = 0;
  /// Slot 28. Adds minutes as `AddHours` does.
  virtual void AddMinutes(double minutes) = 0;
  /// Slot 29. Adds seconds as `AddHours` does.
  virtual void AddSeconds(double seconds) = 0;
  /// Slot 30. Adds milliseconds as `AddHours` does.
  virtual void AddMilliseconds(double milliseconds) = 0;
  /// Slot 31. Adds ticks of 100 ns; the sum wraps.
  virtual void AddTicks(int64_t ticks) = 0;

  // -- Comparison --

  /// Slot 32. Compares fields, starting with that of `unit`, in the order milliseconds, seconds,
  /// minutes, hours, days, weeks, months, years. The first difference decides: compared by Day, 2
  /// January 2020 is later than 1 January 2021. Comparing by Week skips the months. Unit -100 means
  /// Millisecond.
  /// @param other  of any implementation; read through its operations, and held meanwhile
  /// @return -1 if this is earlier, 1 if this is later, otherwise 0; -1 for an unknown unit
  /// @throws std::runtime_error "Null pointer exception! Interface is not accessible: struct
  ///         Data::Interfaces::IDateTime" for null, "Memory address [%p] is invalid ..." for an
  ///         object of another interface
  virtual int32_t CompareByUnit(IDateTime* other, Structures::DateTimeUnit unit) = 0;
  /// Slot 33. Compares the tick counts as signed numbers.
  /// @param other  of any implementation; only `GetFileTime` is called
  /// @return -1 if this is earlier, 1 if this is later, otherwise 0
  /// @throws std::runtime_error as `CompareByUnit`
  virtual int32_t CompareTo(IDateTime* other) = 0;

  // -- Copies and time zone --

  /// Slot 34. A new date-time with the same tick count and the time zone "Etc/UTC", which the
  /// caller releases. Overwrites `*out` without releasing it; does nothing if `out` is null.
  virtual void Clone(IDateTime** out) = 0;
  /// Slot 35. Stores a copy of a time-zone name, which the library never applies.
  /// @return true
  /// @throws std::runtime_error "Pointer of char must not be null!"
  virtual bool SetTimeZone(const char* name) = 0;
  /// Slot 36. The time-zone name, initially "Etc/UTC". Owned by the object; valid until the name is
  /// set again or the object is destroyed.
  virtual const char* GetTimeZone() = 0;

  // -- Text --
  // Each creates a new UTF-8 string, which the caller releases. It overwrites `*out` without
  // releasing it, and does nothing if `out` is null.

  virtual void ToIso8601(IString** out) = 0;       ///< Slot 37. 2024-11-14T10:20:30.123000000Z
  virtual void ToIso8601Time(IString** out) = 0;   ///< Slot 38. T10:20:30.123000000Z
  virtual void ToIso8601Date(IString** out) = 0;   ///< Slot 39. 2024-11-14
  virtual void ToIso8601Basic(IString** out) = 0;  ///< Slot 40. 20241114T102030Z

  // -- Ticks --

  /// Slot 41. The tick count of the start of the period that contains this date-time. Changes
  /// nothing. Weeks begin on Monday. Millisecond and unknown units give the tick count of the
  /// calendar fields.
  virtual uint64_t GetStartOf(Structures::DateTimeUnit unit) = 0;
  /// Slot 42. The tick count, in units of 100 nanoseconds since 1601-01-01.
  virtual uint64_t GetFileTime() = 0;
  /// Slot 43. Whole seconds since 1970-01-01, rounded toward zero.
  virtual int64_t ToPosixTime() = 0;

 protected:
  ~IDateTime() = default;
};

}  // namespace Data::Interfaces
