#pragma once

#include <memory>

#include "Core/ObjectBase.h"
#include "Core/ObjectPool.h"
#include "Core/Ptr.h"
#include "Data/Interfaces/IDateTime.h"
#include "DateTime/Iso8601Text.h"

namespace Data::impl {

struct DateTimeImpl final : Core::ObjectBase<Interfaces::IDateTime> {
  /// Computes the day of week and the tick count from the other fields.
  explicit DateTimeImpl(const CalendarFields& fields) { SetDate(fields); }
  explicit DateTimeImpl(std::uint64_t ticks) { SetTicks(ticks); }
  DateTimeImpl(std::uint64_t ticks, const CalendarFields& fields)
      : ticks_(ticks), fields_(fields) {}

  const CalendarFields& Fields() const { return fields_; }

  std::uint16_t GetYear() override { return fields_.year; }
  std::uint16_t GetMonth() override { return fields_.month; }
  std::uint16_t GetDay() override { return fields_.day; }
  std::uint16_t GetHour() override { return fields_.hour; }
  std::uint16_t GetMinute() override { return fields_.minute; }
  std::uint16_t GetSecond() override { return fields_.second; }
  std::uint32_t GetNanosecond() override { return NanosecondsOf(fields_); }
  std::int32_t GetUtcOffset() override { return 0; }
  std::uint16_t GetDayOfWeek() override;
  std::int32_t GetWeekOfYear() override { return ComputeWeekOfYear(fields_); }
  std::int32_t GetDayOfYear() override { return ComputeDayOfYear(fields_); }

  void SetYear(std::uint16_t year) override;
  void SetMonth(std::uint16_t month) override;
  void SetDay(std::uint16_t day) override;
  void SetHour(std::uint16_t hour) override;
  void SetMinute(std::uint16_t minute) override;
  void SetSecond(std::uint16_t second) override;
  void SetNanosecond(std::int32_t nanosecond) override;

  void AddYears(std::int32_t years) override;
  void AddMonths(std::int32_t months) override;
  void AddDays(std::int32_t days) override;
  void AddHours(double hours) override;
  void AddMinutes(double minutes) override;
  void AddSeconds(double seconds) override;
  void AddMilliseconds(double milliseconds) override;
  void AddTicks(std::int64_t ticks) override;

  std::int32_t CompareByUnit(Interfaces::IDateTime* other, Structures::DateTimeUnit unit) override;
  std::int32_t CompareTo(Interfaces::IDateTime* other) override;
  void Clone(Interfaces::IDateTime** out) override;
  bool SetTimeZone(const char* name) override;
  const char* GetTimeZone() override { return timeZone_ ? timeZone_.get() : "Etc/UTC"; }

  void ToIso8601(Interfaces::IString** out) override;
  void ToIso8601Time(Interfaces::IString** out) override;
  void ToIso8601Date(Interfaces::IString** out) override;
  void ToIso8601Basic(Interfaces::IString** out) override;

  std::uint64_t GetStartOf(Structures::DateTimeUnit unit) override;
  std::uint64_t GetFileTime() override { return ticks_; }
  std::int64_t ToPosixTime() override;

  static void* operator new(std::size_t size) { return ::operator new(size); }
  static void* operator new(std::size_t size, Core::ObjectPool* pool) {
    return Core::ObjectPool::Allocate(pool, size);
  }
  static void operator delete(void* object) { Core::ObjectPool::Free(object); }
  static void operator delete(void* object, Core::ObjectPool*) { Core::ObjectPool::Free(object); }

 private:
  void SetDate(const CalendarFields& fields);
  void SetFields(const CalendarFields& fields);
  void SetTicks(std::uint64_t ticks);

  std::uint64_t ticks_;
  std::unique_ptr<char[]> timeZone_;  ///< null: "Etc/UTC"
  CalendarFields fields_;
};

/// A date-time with these calendar fields; their day of week is ignored.
/// @param pool  for many date-times created together; null for the heap
inline Core::Ptr<DateTimeImpl> MakeDateTime(const CalendarFields& fields,
                                            Core::ObjectPool* pool = nullptr) {
  return Core::Ptr<DateTimeImpl>::Adopt(new (pool) DateTimeImpl(fields));
}

}  // namespace Data::impl
