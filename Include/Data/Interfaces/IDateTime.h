#pragma once

#include "Data/Interfaces/IString.h"
#include "Data/Structures/DateTimeUnit.h"

namespace Data::Interfaces {

/// A date and time of day in UTC: calendar fields to the millisecond, kept in
/// step with a count of 100-nanosecond ticks since 1601-01-01.
///
/// The calendar is the proleptic Gregorian one from year 1 on; before 1601 the
/// tick count is negative, held as two's complement. It is exact modulo 2^64:
/// from year 30828 on it no longer fits a signed number, and `CompareTo` sorts
/// such values first. A tick count before year 1 has no calendar fields, they
/// are all zero.
///
/// Fields that form no date are kept as they were set; their tick count is that
/// of the same offset from the nearest earlier valid field: 30 February 2023
/// counts as 2 March, month 13 as the next January, hour 24 as the next
/// midnight. Setting a calendar field rebuilds the tick count from whole
/// milliseconds, changing the tick count rebuilds the fields. Setters and
/// arithmetic never fail. One thread at a time.
struct IDateTime : Core::IObject {
  // -- Calendar fields --

  virtual uint16_t GetYear() = 0;    ///< Slot 6.
  virtual uint16_t GetMonth() = 0;   ///< Slot 7. 1 to 12.
  virtual uint16_t GetDay() = 0;     ///< Slot 8. 1 to 31.
  virtual uint16_t GetHour() = 0;    ///< Slot 9. 0 to 23.
  virtual uint16_t GetMinute() = 0;  ///< Slot 10. 0 to 59.
  virtual uint16_t GetSecond() = 0;  ///< Slot 11. 0 to 59.
  /// Slot 12. Whole milliseconds of the second, in nanoseconds; single ticks
  /// are not reported.
  virtual uint32_t GetNanosecond() = 0;
  virtual int32_t GetUtcOffset() = 0;   ///< Slot 13. Minutes; always 0.
  virtual uint16_t GetDayOfWeek() = 0;  ///< Slot 14. Monday 1 to Sunday 7.
  /// Slot 15. The ISO 8601 week, 1 to 53: the first days of January may belong
  /// to the last week of the year before, the last of December to week 1.
  virtual int32_t GetWeekOfYear() = 0;
  virtual int32_t GetDayOfYear() = 0;  ///< Slot 16. 1 to 366.

  virtual void SetYear(uint16_t year) = 0;      ///< Slot 17.
  virtual void SetMonth(uint16_t month) = 0;    ///< Slot 18.
  virtual void SetDay(uint16_t day) = 0;        ///< Slot 19.
  virtual void SetHour(uint16_t hour) = 0;      ///< Slot 20.
  virtual void SetMinute(uint16_t minute) = 0;  ///< Slot 21.
  virtual void SetSecond(uint16_t second) = 0;  ///< Slot 22.
  /// Slot 23. Kept as whole milliseconds in a 16-bit word, rounded toward zero.
  virtual void SetNanosecond(int32_t nanosecond) = 0;

  // -- Arithmetic --

  /// Slot 24. `AddMonths` of 12 times as many; the 32-bit product wraps.
  virtual void AddYears(int32_t years) = 0;
  /// Slot 25. The day is cut to the length of the new month: 31 January and one
  /// month is 28 or 29 February. The year keeps 16 bits.
  virtual void AddMonths(int32_t months) = 0;
  /// Slot 26. `AddHours` of 24 times as many; the 32-bit product wraps.
  virtual void AddDays(int32_t days) = 0;
  // The amount becomes whole ticks, rounded toward zero; beyond 64 bits it is
  // cut to the largest or smallest number of ticks, and NaN adds nothing.
  virtual void AddHours(double hours) = 0;                ///< Slot 27.
  virtual void AddMinutes(double minutes) = 0;            ///< Slot 28.
  virtual void AddSeconds(double seconds) = 0;            ///< Slot 29.
  virtual void AddMilliseconds(double milliseconds) = 0;  ///< Slot 30.
  /// Slot 31. Adds ticks of 100 ns; the sum wraps.
  virtual void AddTicks(int64_t ticks) = 0;

  // -- Comparison --

  /// Slot 32. Compares field by field from the finest that `unit` covers to the
  /// year: milliseconds, seconds, minutes, hours, days, weeks, months, years.
  /// The first difference decides, so 2 January 2020 is later than 1 January
  /// 2021 by the day. By the week, months do not count. -100 means Millisecond.
  /// @return -1, 0 or 1; -1 for an unknown unit, without comparing
  /// @throws std::runtime_error "Null pointer exception! Interface is not
  ///         accessible: struct Data::Interfaces::IDateTime" for null
  virtual int32_t CompareByUnit(IDateTime* other, Structures::DateTimeUnit unit) = 0;
  /// Slot 33. Orders by tick count, as a signed number.
  /// @return -1 if this is earlier, 1 if later, else 0
  /// @throws as `CompareByUnit`; "Memory address [%p] is invalid ..." for an
  ///         object of another interface
  virtual int32_t CompareTo(IDateTime* other) = 0;

  // -- Copies and time zone --

  /// Slot 34. A new date-time of the same tick count, in time zone "Etc/UTC";
  /// overwrites `*out`, does nothing if `out` is null. The caller releases it.
  virtual void Clone(IDateTime** out) = 0;
  /// Slot 35. Copies a time-zone name, which the library never applies.
  /// @return true
  /// @throws std::runtime_error "Pointer of char must not be null!"
  virtual bool SetTimeZone(const char* name) = 0;
  /// Slot 36. The name, at first "Etc/UTC"; valid until it is set again.
  virtual const char* GetTimeZone() = 0;

  // -- Text --
  // The printers give a new UTF-8 string, which the caller releases; they
  // overwrite `*out` and do nothing if `out` is null.

  virtual void ToIso8601(IString** out) = 0;       ///< Slot 37. 2024-11-14T10:20:30.123000000Z
  virtual void ToIso8601Time(IString** out) = 0;   ///< Slot 38. T10:20:30.123000000Z
  virtual void ToIso8601Date(IString** out) = 0;   ///< Slot 39. 2024-11-14
  virtual void ToIso8601Basic(IString** out) = 0;  ///< Slot 40. 20241114T102030Z

  // -- Ticks --

  /// Slot 41. Ticks of the start of the period that contains this date-time,
  /// which does not change. Weeks begin on Monday. Millisecond and unknown units
  /// give the ticks of the calendar fields.
  virtual uint64_t GetStartOf(Structures::DateTimeUnit unit) = 0;
  /// Slot 42. The tick count.
  virtual uint64_t GetFileTime() = 0;
  /// Slot 43. Whole seconds since 1970-01-01, rounded toward zero.
  virtual int64_t ToPosixTime() = 0;

 protected:
  ~IDateTime() = default;
};

}  // namespace Data::Interfaces
