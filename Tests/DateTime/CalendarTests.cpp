#include <chrono>

#include "DateTime/DateTimeSupport.h"

namespace Data::tests {

using namespace std::chrono;

namespace {

constexpr std::int64_t kTicksPerDay = 864'000'000'000;

std::int64_t TicksOf(sys_days day) {
  return (day - sys_days(1601y / 1 / 1)).count() * kTicksPerDay;
}

/// The days since 1 January.
std::int64_t DaysOfYear(sys_days day) {
  return (day - sys_days(year_month_day(day).year() / 1 / 1)).count();
}

}  // namespace

TEST(Calendar, CountsEveryDayAsTheStandardLibraryDoes) {
  const auto value = New(Data_CreateMinimumDateTime);
  for (const auto& [first, last] : {std::pair{1y, 2410y}, {9999y, 10001y}, {30800y, 30827y}})
    for (sys_days day = first / 1 / 1; day <= last / 12 / 31; day += days(1)) {
      value->AddTicks(TicksOf(day) - static_cast<std::int64_t>(value->GetFileTime()));
      // A week belongs to the year of its Thursday.
      const sys_days thursday = day + days(4) - days(weekday(day).iso_encoding());
      ASSERT_EQ(sys_days(year(value->GetYear()) / value->GetMonth() / value->GetDay()), day);
      ASSERT_EQ(value->GetDayOfYear(), DaysOfYear(day) + 1) << TextOf(value);
      ASSERT_EQ(value->GetUtcOffset(), 0) << TextOf(value);
      ASSERT_EQ(value->GetDayOfWeek(), weekday(day).iso_encoding()) << TextOf(value);
      ASSERT_EQ(value->GetWeekOfYear(), DaysOfYear(thursday) / 7 + 1) << TextOf(value);
      value->SetHour(0);  // the way back from fields to ticks
      ASSERT_EQ(static_cast<std::int64_t>(value->GetFileTime()), TicksOf(day));
    }
}

TEST(Calendar, KnowsItsLandmarks) {
  for (const Case& c : Cases(kDateTimeCases, "ticks"))
    EXPECT_EQ(static_cast<std::int64_t>(DateTimeOf(c[0])->GetFileTime()),
              std::stoll(std::string(c[1])))
        << c.where;
}

TEST(Calendar, TakesAnyFieldsAndAmounts) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const auto number :
       std::initializer_list<std::uint16_t>{0, 1, 31, 9999, 30827, 30828, 65535}) {
    const auto value = DateTimeOf("2024-11-14");
    for (const auto set : {&IDateTime::SetYear, &IDateTime::SetMonth, &IDateTime::SetDay,
                           &IDateTime::SetHour, &IDateTime::SetMinute, &IDateTime::SetSecond})
      ((*value).*set)(number);
    EXPECT_EQ(value->GetYear(), number);
    EXPECT_LE(value->GetDayOfWeek() - 1u, 6u);
    value->GetWeekOfYear();
    value->GetDayOfYear();
    for (int unit = 0; unit <= 8; ++unit) value->GetStartOf(static_cast<DateTimeUnit>(unit));
    for (const auto add : {&IDateTime::AddMonths, &IDateTime::AddYears, &IDateTime::AddDays})
      for (const std::int32_t amount : {INT32_MIN, -1, 1, INT32_MAX}) ((*value).*add)(amount);
    for (const auto add : {&IDateTime::AddHours, &IDateTime::AddMinutes, &IDateTime::AddSeconds,
                           &IDateTime::AddMilliseconds})
      for (const double amount : {-kInfinity, -1e300, 1e300, kInfinity, 9223372036854775807.0})
        ((*value).*add)(amount);
    for (const std::int64_t amount : {INT64_MIN, INT64_MAX}) value->AddTicks(amount);
    value->ToPosixTime();
  }
}

TEST(Calendar, ImpossibleAmountsMoveToTheBound) {
  const auto value = DateTimeOfTicks(100);
  value->AddHours(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(value->GetFileTime(), 100u) << "what is no number adds nothing";
  value->AddSeconds(1e300);
  EXPECT_EQ(value->GetFileTime(), 100u + (1ull << 63) - 1);
  EXPECT_EQ(TextOf(value), "0000-00-00T00:00:00.000000000Z") << "outside the calendar";
  value->AddTicks(-INT64_MAX);
  EXPECT_EQ(TextOf(value), "1601-01-01T00:00:00.000000000Z") << "and back";
  value->SetYear(40000);
  const auto days = (40000ull - 1600) / 400 * 146097 - 366;
  EXPECT_EQ(value->GetFileTime(), days * kTicksPerDay)
      << "1 January 40000 does not fit a signed number";
}

TEST(Calendar, FileTimesBeyondTheCalendarHaveNoFields) {
  for (const std::uint64_t ticks : {1ull << 63, ~0ull}) {
    const auto value = DateTimeOfTicks(ticks);
    EXPECT_EQ(value->GetFileTime(), ticks);
    EXPECT_EQ(TextOf(value), "0000-00-00T00:00:00.000000000Z");
    EXPECT_EQ(value->GetDayOfWeek(), 7);
    const auto clone = Made<IDateTime>(&IDateTime::Clone, value);
    EXPECT_EQ(clone->GetFileTime(), ticks);
    EXPECT_EQ(TextOf(clone), "0000-00-00T00:00:00.000000000Z");
  }
  EXPECT_EQ(TextOf(DateTimeOfTicks(INT64_MAX)), "30828-09-14T02:48:05.477000000Z");
}

}  // namespace Data::tests
