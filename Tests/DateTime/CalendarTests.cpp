#include "DateTime/DateTimeSupport.h"

namespace Data::tests {

namespace {

constexpr std::int64_t kTicksPerDay = 864'000'000'000;

/// A calendar that counts days one by one.
struct DayCounter {
  int year, month = 1, day = 1, dayOfYear = 1, dayOfWeek;

  bool IsLeap() const { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }
  int MonthLength() const {
    const int lengths[] = {31, IsLeap() ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return lengths[month - 1];
  }
  void Next() {
    dayOfWeek = dayOfWeek % 7 + 1;
    ++dayOfYear;
    if (++day <= MonthLength()) return;
    day = 1;
    if (++month <= 12) return;
    month = dayOfYear = 1;
    ++year;
  }
  /// The week with this day's Thursday, counted from 1 January of its year.
  int Week() const {
    DayCounter thursday = *this;
    while (thursday.dayOfWeek < 4) thursday.Next();
    if (thursday.dayOfWeek == 4) return (thursday.dayOfYear + 6) / 7;
    const int back = thursday.dayOfWeek - 4;
    if (back < dayOfYear) return (dayOfYear - back + 6) / 7;
    const int before = year - 1;
    const bool leap = before % 4 == 0 && (before % 100 != 0 || before % 400 == 0);
    return ((leap ? 366 : 365) + dayOfYear - back + 6) / 7;
  }
};

/// Walks `days` days from 1 January of a year.
void ExpectCountedDays(DayCounter expected, IDateTime& value, int days) {
  std::uint64_t ticks = value.GetFileTime();
  for (int i = 0; i < days; ++i) {
    const bool same = value.GetYear() == expected.year && value.GetMonth() == expected.month &&
                      value.GetDay() == expected.day &&
                      value.GetDayOfYear() == expected.dayOfYear &&
                      value.GetDayOfWeek() == expected.dayOfWeek &&
                      value.GetWeekOfYear() == expected.Week() && value.GetHour() == 0;
    ASSERT_TRUE(same) << expected.year << "-" << expected.month << "-" << expected.day;
    value.SetMinute(0);  // the way back from fields to ticks
    ASSERT_EQ(value.GetFileTime(), ticks)
        << expected.year << "-" << expected.month << "-" << expected.day;
    expected.Next();
    ticks += kTicksPerDay;
    value.AddTicks(kTicksPerDay);
  }
}

}  // namespace

TEST(Calendar, CountsEveryDayFromYearOne) {
  Ptr<IDateTime> value;
  ASSERT_TRUE(Data_CreateMinimumDateTime(value.Receive()));
  ExpectCountedDays({.year = 1, .dayOfWeek = 1}, *value, 2410 * 365);
}

TEST(Calendar, CountsEveryDayToTheLastThatTicksReach) {
  const auto value = DateTimeOf("9999-1-1T0");
  ExpectCountedDays({.year = 9999, .dayOfWeek = 5}, *value, 800);
  value->SetYear(30800);  // as 2000 in the cycle of 400 years, a Saturday
  value->SetMonth(1);
  value->SetDay(1);
  ExpectCountedDays({.year = 30800, .dayOfWeek = 6}, *value, 28 * 365);
}

TEST(Calendar, KnowsItsLandmarks) {
  for (const Case& c : Cases(kDateTimeCases, "ticks"))
    EXPECT_EQ(static_cast<std::int64_t>(DateTimeOf(c[0])->GetFileTime()),
              std::stoll(std::string(c[1])))
        << c.where;
}

TEST(Calendar, OutOfRangeFieldsCarryOver) {
  for (const Case& c : Cases(kDateTimeCases, "carried")) {
    const auto value = DateTimeOf(c[0]);
    const std::string asSet = TextOf(value);
    value->SetHour(value->GetHour());
    EXPECT_EQ(TextOf(value), asSet) << c.where << ": the fields stay as they were set";
    value->AddTicks(0);
    EXPECT_EQ(TextOf(value), c[1]) << c.where;
  }
  const auto value = DateTimeOf("2024-1-1T1");
  value->SetMonth(0);
  value->SetDay(0);
  EXPECT_EQ(value->GetDayOfYear(), -31);
  value->AddTicks(0);
  EXPECT_EQ(TextOf(value), "2023-11-30T01:00:00.000000000Z");
}

TEST(Calendar, TakesAnyFieldsAndAmounts) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const int number : {0, 1, 31, 9999, 30827, 30828, 65535}) {
    const auto word = static_cast<std::uint16_t>(number);
    const auto value = DateTimeOf("2024-11-14");
    value->SetYear(word);
    value->SetMonth(word);
    value->SetDay(word);
    value->SetHour(word);
    value->SetMinute(word);
    value->SetSecond(word);
    EXPECT_EQ(value->GetYear(), word);
    EXPECT_LE(value->GetDayOfWeek() - 1u, 6u);
    value->GetWeekOfYear();
    value->GetDayOfYear();
    for (int unit = 0; unit <= 8; ++unit) value->GetStartOf(static_cast<DateTimeUnit>(unit));
    for (const std::int32_t amount : {INT32_MIN, -1, 1, INT32_MAX}) {
      value->AddMonths(amount);
      value->AddYears(amount);
      value->AddDays(amount);
    }
    for (const double amount : {-kInfinity, -1e300, 1e300, kInfinity, 9223372036854775807.0}) {
      value->AddHours(amount);
      value->AddMinutes(amount);
      value->AddSeconds(amount);
      value->AddMilliseconds(amount);
    }
    value->AddTicks(INT64_MIN);
    value->AddTicks(INT64_MAX);
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
  EXPECT_EQ(value->GetFileTime(),
            (40000ull - 1600) / 400 * 146097 * kTicksPerDay - 366 * kTicksPerDay)
      << "1 January 40000 does not fit a signed number";
}

TEST(Calendar, FileTimesBeyondTheCalendarHaveNoFields) {
  for (const std::uint64_t ticks : {1ull << 63, ~0ull}) {
    const auto value = DateTimeOfTicks(ticks);
    EXPECT_EQ(value->GetFileTime(), ticks);
    EXPECT_EQ(TextOf(value), "0000-00-00T00:00:00.000000000Z");
    EXPECT_EQ(value->GetDayOfWeek(), 7);
    Ptr<IDateTime> clone;
    value->Clone(clone.Receive());
    EXPECT_EQ(clone->GetFileTime(), ticks);
    EXPECT_EQ(TextOf(clone), "0000-00-00T00:00:00.000000000Z");
  }
  EXPECT_EQ(TextOf(DateTimeOfTicks(INT64_MAX)), "30828-09-14T02:48:05.477000000Z");
}

}  // namespace Data::tests
