// Windows has the same conversions between calendar fields and ticks in its
// kernel: both must agree on everything that the kernel accepts.
#include <windows.h>

#include "DateTime/DateTimeSupport.h"

namespace Data::tests {

namespace {

FILETIME FileTimeOf(std::uint64_t ticks) {
  return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

std::uint64_t TicksOf(const FILETIME& time) {
  return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

bool HasFields(Interfaces::IDateTime& value, const SYSTEMTIME& fields) {
  return value.GetYear() == fields.wYear && value.GetMonth() == fields.wMonth &&
         value.GetDay() == fields.wDay && value.GetDayOfWeek() % 7 == fields.wDayOfWeek &&
         value.GetHour() == fields.wHour && value.GetMinute() == fields.wMinute &&
         value.GetSecond() == fields.wSecond &&
         value.GetNanosecond() == fields.wMilliseconds * 1'000'000u;
}

}  // namespace

TEST(KernelTime, AgreesOnTheFieldsOfEveryFileTime) {
  std::mt19937_64 random(20241114);
  for (int i = 0; i < 200'000; ++i) {
    const std::uint64_t ticks = random() >> (i % 24);
    const FILETIME time = FileTimeOf(ticks);
    SYSTEMTIME fields{};
    FileTimeToSystemTime(&time, &fields);  // leaves the fields zero where it fails
    const auto value = DateTimeOfTicks(ticks);
    ASSERT_EQ(value->GetFileTime(), ticks);
    fields.wDayOfWeek %= 7;
    ASSERT_TRUE(HasFields(*value, fields)) << ticks;
  }
}

TEST(KernelTime, AgreesOnTheTicksOfEveryDate) {
  std::mt19937 random(20241114);
  const auto value = DateTimeOf("2024");
  int accepted = 0;
  for (int i = 0; i < 200'000; ++i) {
    const auto below = [&](unsigned limit) { return static_cast<WORD>(random() % limit); };
    const SYSTEMTIME fields{static_cast<WORD>(1601 + below(29'000)),
                            static_cast<WORD>(1 + below(12)),
                            0,
                            static_cast<WORD>(1 + below(31)),
                            below(24),
                            below(60),
                            below(60),
                            below(1'000)};
    FILETIME time{};
    if (!SystemTimeToFileTime(&fields, &time)) continue;  // no such day
    ++accepted;
    value->SetYear(fields.wYear);
    value->SetMonth(fields.wMonth);
    value->SetDay(fields.wDay);
    value->SetHour(fields.wHour);
    value->SetMinute(fields.wMinute);
    value->SetSecond(fields.wSecond);
    value->SetNanosecond(fields.wMilliseconds * 1'000'000);
    ASSERT_EQ(value->GetFileTime(), TicksOf(time)) << TextOf(value);
  }
  EXPECT_GT(accepted, 190'000);
}

}  // namespace Data::tests
