#pragma once

#include "Callers.h"
#include "Prelude.h"

namespace Data::tests {

/// The caller's own date-time, which returns the same as one of the library's. Create it with
/// `Core::MakePtr<CallersDateTime>("2024-11-14")`.
class CallersDateTime final : public CallersOwn<IDateTime> {
 public:
  explicit CallersDateTime(const char* iso8601) : date_(Date(iso8601).As<Ptr<IDateTime>>()) {}

  /// Called by each operation that reads; the call may destroy the object.
  std::function<void()> onRead = [] {};

  std::uint16_t GetYear() override { return Read()->GetYear(); }
  std::uint16_t GetMonth() override { return Read()->GetMonth(); }
  std::uint16_t GetDay() override { return Read()->GetDay(); }
  std::uint16_t GetHour() override { return Read()->GetHour(); }
  std::uint16_t GetMinute() override { return Read()->GetMinute(); }
  std::uint16_t GetSecond() override { return Read()->GetSecond(); }
  std::uint32_t GetNanosecond() override { return Read()->GetNanosecond(); }
  std::int32_t GetUtcOffset() override { return 0; }
  std::uint16_t GetDayOfWeek() override { return Read()->GetDayOfWeek(); }
  std::int32_t GetWeekOfYear() override { return Read()->GetWeekOfYear(); }
  std::int32_t GetDayOfYear() override { return Read()->GetDayOfYear(); }
  void SetYear(std::uint16_t) override {}
  void SetMonth(std::uint16_t) override {}
  void SetDay(std::uint16_t) override {}
  void SetHour(std::uint16_t) override {}
  void SetMinute(std::uint16_t) override {}
  void SetSecond(std::uint16_t) override {}
  void SetNanosecond(std::int32_t) override {}
  void AddYears(std::int32_t) override {}
  void AddMonths(std::int32_t) override {}
  void AddDays(std::int32_t) override {}
  void AddHours(double) override {}
  void AddMinutes(double) override {}
  void AddSeconds(double) override {}
  void AddMilliseconds(double) override {}
  void AddTicks(std::int64_t) override {}
  std::int32_t CompareByUnit(IDateTime* other, DateTimeUnit unit) override {
    return Read()->CompareByUnit(other, unit);
  }
  std::int32_t CompareTo(IDateTime* other) override { return Read()->CompareTo(other); }
  void Clone(IDateTime** out) override { Read()->Clone(out); }
  bool SetTimeZone(const char*) override { return false; }
  const char* GetTimeZone() override { return nullptr; }
  void ToIso8601(IString** out) override { Read()->ToIso8601(out); }
  void ToIso8601Time(IString** out) override { Read()->ToIso8601Time(out); }
  void ToIso8601Date(IString** out) override { Read()->ToIso8601Date(out); }
  void ToIso8601Basic(IString** out) override { Read()->ToIso8601Basic(out); }
  std::uint64_t GetStartOf(DateTimeUnit unit) override { return Read()->GetStartOf(unit); }
  std::uint64_t GetFileTime() override { return Read()->GetFileTime(); }
  std::int64_t ToPosixTime() override { return Read()->ToPosixTime(); }

 private:
  Ptr<IDateTime> Read() {
    const auto date = date_;
    const auto call = onRead;
    call();
    return date;
  }

  Ptr<IDateTime> date_;
};

}  // namespace Data::tests
