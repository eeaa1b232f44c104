#pragma once

#include "Data/Interfaces/IString.h"
#include "Data/Structures/DateTimeUnit.h"

namespace Data::Interfaces {

/// A date and time of day in UTC: calendar fields to the millisecond, kept in
/// step with a count of 100-nanosecond ticks since 1601-01-01.
///
/// The calendar is the proleptic Gregorian one from year 1 on; before 1601 the
/// tick count is negative, held as two's complement. Fields that form no date
/// (30 February) are kept as they were set; their tick count is that of the
/// same offset from the nearest earlier valid date. Setters and arithmetic
/// never fail. One thread at a time.
struct IDateTime : Core::IObject {
  virtual uint16_t GetYear() = 0;    ///< Slot 6.
  virtual uint16_t GetMonth() = 0;   ///< Slot 7. 1 to 12.
  virtual uint16_t GetDay() = 0;     ///< Slot 8. 1 to 31.
  virtual uint16_t GetHour() = 0;    ///< Slot 9.
  virtual uint16_t GetMinute() = 0;  ///< Slot 10.
  virtual uint16_t GetSecond() = 0;  ///< Slot 11.
  /// Slot 12. Whole milliseconds of the second, in nanoseconds.
  virtual uint32_t GetNanosecond() = 0;
  virtual int32_t GetUtcOffset() = 0;           ///< Slot 13. Minutes; always 0.
  virtual uint16_t GetDayOfWeek() = 0;          ///< Slot 14. Monday 1 to Sunday 7.
  virtual int32_t GetWeekOfYear() = 0;          ///< Slot 15. ISO 8601 week.
  virtual int32_t GetDayOfYear() = 0;           ///< Slot 16. 1 to 366.
  virtual void SetYear(uint16_t year) = 0;      ///< Slot 17.
  virtual void SetMonth(uint16_t month) = 0;    ///< Slot 18.
  virtual void SetDay(uint16_t day) = 0;        ///< Slot 19.
  virtual void SetHour(uint16_t hour) = 0;      ///< Slot 20.
  virtual void SetMinute(uint16_t minute) = 0;  ///< Slot 21.
  virtual void SetSecond(uint16_t second) = 0;  ///< Slot 22.
  /// Slot 23. Kept to the whole millisecond, rounded toward zero.
  virtual void SetNanosecond(int32_t nanosecond) = 0;
  /// Slot 24. `AddMonths` of 12 times as many.
  virtual void AddYears(int32_t years) = 0;
  /// Slot 25. The day is cut to the length of the new month.
  virtual void AddMonths(int32_t months) = 0;
  virtual void AddDays(int32_t days) = 0;                 ///< Slot 26.
  virtual void AddHours(double hours) = 0;                ///< Slot 27.
  virtual void AddMinutes(double minutes) = 0;            ///< Slot 28.
  virtual void AddSeconds(double seconds) = 0;            ///< Slot 29.
  virtual void AddMilliseconds(double milliseconds) = 0;  ///< Slot 30.
  virtual void AddTicks(int64_t ticks) = 0;               ///< Slot 31. Of 100 ns.
  /// Slot 32. Compares field by field from the finest that `unit` covers to the
  /// year; the first difference decides.
  /// @return -1, 0 or 1; -1 for an unknown unit
  virtual int32_t CompareByUnit(IDateTime* other, Structures::DateTimeUnit unit) = 0;
  /// Slot 33. Orders by tick count.
  /// @return -1 if this is earlier, 1 if later, else 0
  virtual int32_t CompareTo(IDateTime* other) = 0;
  /// Slot 34. A new date-time of the same tick count, in time zone "Etc/UTC";
  /// overwrites `*out`, does nothing if `out` is null. The caller releases it.
  virtual void Clone(IDateTime** out) = 0;
  /// Slot 35. Copies a time-zone name, which the library never applies.
  /// @return true
  virtual bool SetTimeZone(const char* name) = 0;
  /// Slot 36. The name; valid until it is set again.
  virtual const char* GetTimeZone() = 0;
  // The printers give a new string, which the caller releases; they overwrite
  // `*out` and do nothing if `out` is null.
  virtual void ToIso8601(IString** out) = 0;       ///< Slot 37. 2024-11-14T10:20:30.123000000Z
  virtual void ToIso8601Time(IString** out) = 0;   ///< Slot 38. T10:20:30.123000000Z
  virtual void ToIso8601Date(IString** out) = 0;   ///< Slot 39. 2024-11-14
  virtual void ToIso8601Basic(IString** out) = 0;  ///< Slot 40. 20241114T102030Z
  /// Slot 41. Ticks of the start of the period that contains this date-time,
  /// which does not change.
  virtual uint64_t GetStartOf(Structures::DateTimeUnit unit) = 0;
  /// Slot 42. The tick count.
  virtual uint64_t GetFileTime() = 0;
  /// Slot 43. Whole seconds since 1970-01-01, rounded toward zero.
  virtual int64_t ToPosixTime() = 0;

 protected:
  ~IDateTime() = default;
};

}  // namespace Data::Interfaces
