#include "DateTime/DateTimeSupport.h"

namespace Data::tests {

namespace {

constexpr auto kWeek = DateTimeUnit::Week;
constexpr auto kDay = DateTimeUnit::Day;
constexpr auto kHour = DateTimeUnit::Hour;
constexpr auto kMillisecond = DateTimeUnit::Millisecond;

Ptr<IDateTime> DateTimeOfPosixTime(std::int64_t seconds) {
  Ptr<IDateTime> result;
  EXPECT_TRUE(Data_CreateDateTimeFromPosixTime(seconds, result.Receive()));
  return result;
}

}  // namespace

TEST(DateTime, FactoriesRejectOnlyANullOutPointer) {
  EXPECT_FALSE(Data_CreateCurrentDateTime(nullptr));
  EXPECT_FALSE(Data_CreateMinimumDateTime(nullptr));
  EXPECT_FALSE(Data_CreateMaximumDateTime(nullptr));
  EXPECT_FALSE(Data_CreateDateTimeFromPosixTime(0, nullptr));
  EXPECT_FALSE(Data_CreateDateTimeFromFileTime(0, nullptr));
  const auto held = DateTimeOf("2024");
  IDateTime* out = held.Get();
  EXPECT_TRUE(Data_CreateMaximumDateTime(&out)) << "what it held is overwritten";
  EXPECT_EQ(TextOf(Ptr<IDateTime>::Adopt(out)), "9999-12-31T00:00:00.000000000Z");
}

TEST(DateTime, FactoriesGiveTheirMoments) {
  Ptr<IDateTime> minimum, now, later;
  EXPECT_TRUE(Data_CreateMinimumDateTime(minimum.Receive()));
  EXPECT_TRUE(Data_CreateCurrentDateTime(now.Receive()));
  EXPECT_TRUE(Data_CreateCurrentDateTime(later.Receive()));
  EXPECT_EQ(TextOf(minimum), "0001-01-01T00:00:00.000000000Z");
  EXPECT_STREQ(minimum->GetTimeZone(), "Etc/UTC");
  EXPECT_GT(now->GetYear(), 2023);
  EXPECT_LE(now->CompareTo(later.Get()), 0);
  EXPECT_LT(later->GetFileTime() - now->GetFileTime(), 36'000'000'000u) << "an hour";
}

TEST(DateTime, ConvertsPosixTime) {
  const struct {
    std::int64_t seconds;
    const char* text;
  } cases[] = {
      {0, "1970-01-01T00:00:00.000000000Z"},
      {1731579630, "2024-11-14T10:20:30.000000000Z"},
      {-1, "1969-12-31T23:59:59.000000000Z"},
      {-11644473601, "1600-12-31T23:59:59.000000000Z"},
      {-62135596800, "0001-01-01T00:00:00.000000000Z"},
      {-62135596801, "0000-00-00T00:00:00.000000000Z"},
  };
  for (const auto& c : cases) {
    const auto value = DateTimeOfPosixTime(c.seconds);
    EXPECT_EQ(TextOf(value), c.text);
    EXPECT_EQ(value->ToPosixTime(), c.seconds) << c.text;
  }
  EXPECT_EQ(DateTimeOfTicks(116444735990000000)->ToPosixTime(), -1);
  EXPECT_EQ(DateTimeOfTicks(116444735990000001)->ToPosixTime(), 0) << "rounded toward zero";
  EXPECT_EQ(DateTimeOfPosixTime(INT64_MAX)->GetFileTime(),
            INT64_MAX * 10'000'000ull + 116444736000000000u)
      << "the product wraps";
}

TEST(DateTime, SettersMoveEverythingAlong) {
  const auto value = DateTimeOf("2021-1-1T1:2:3.5");
  EXPECT_EQ(value->GetDayOfWeek(), 5);
  value->SetYear(2024);
  value->SetMonth(12);
  value->SetDay(29);
  EXPECT_EQ(value->GetDayOfWeek(), 7) << "a Sunday";
  EXPECT_EQ(value->GetDayOfYear(), 364);
  value->SetHour(10);
  value->SetMinute(20);
  value->SetSecond(30);
  value->SetNanosecond(1'999'999);
  EXPECT_EQ(value->GetNanosecond(), 1'000'000u) << "whole milliseconds";
  EXPECT_EQ(value->GetFileTime(), DateTimeOf("2024-12-29T10:20:30.001")->GetFileTime() - 990'000)
      << "the fraction 001 means 100 ms";
  EXPECT_EQ(value->GetUtcOffset(), 0);
  value->SetNanosecond(-999'999);
  EXPECT_EQ(value->GetNanosecond(), 0u) << "rounded toward zero";
}

TEST(DateTime, FineTicksLastUntilACalendarFieldIsSet) {
  const auto value = DateTimeOfTicks(12'345);
  EXPECT_EQ(value->GetFileTime(), 12'345u);
  EXPECT_EQ(value->GetNanosecond(), 1'000'000u);
  value->AddTicks(7'000);
  EXPECT_EQ(value->GetFileTime(), 19'345u);
  value->SetHour(0);
  EXPECT_EQ(value->GetFileTime(), 10'000u);
}

TEST(DateTime, AddMonthsCutsTheDayToTheMonth) {
  const struct {
    const char* from;
    std::int32_t months;
    const char* to;
  } cases[] = {
      {"2023-01-31", 1, "2023-02-28"},        {"2024-01-31", 1, "2024-02-29"},
      {"2024-01-31", -13, "2022-12-31"},      {"2024-01-31", -1, "2023-12-31"},
      {"2024-01-31", 0, "2024-01-31"},        {"2024-12-31", 2, "2025-02-28"},
      {"2024-12-31", 12, "2025-12-31"},       {"2024-05-31", -1, "2024-04-30"},
      {"2024-05-15", -17, "2022-12-15"},      {"2024-05-15", -16, "2023-01-15"},
      {"1900-01-31", 1, "1900-02-28"},        {"2000-01-31", 1, "2000-02-29"},
      {"2024-05-15", 120'000, "12024-05-15"}, {"2024-05-15", -24'288, "0000-05-15"},
      {"2024-05-15", -24'300, "65535-05-15"},  // the year is a 16-bit word
      {"2023-13-31", 1, "2024-02-29"},
  };
  for (const auto& c : cases) {
    const auto value = DateTimeOf(c.from);
    value->AddMonths(c.months);
    EXPECT_EQ(Print(*value, &IDateTime::ToIso8601Date), c.to) << c.from << " " << c.months;
    EXPECT_EQ(value->GetHour(), 12);
  }
}

TEST(DateTime, AddsAmountsOfEveryUnit) {
  using Change = void (*)(IDateTime&);
  const struct {
    const char* what;
    Change change;
    const char* from;
    const char* to;
  } cases[] = {
      {"a leap day has no anniversary", [](IDateTime& d) { d.AddYears(1); }, "2024-02-29",
       "2025-02-28T12:00:00.000000000Z"},
      {"the 32-bit product of years wraps", [](IDateTime& d) { d.AddYears(0x55555556); },
       "2024-02-29T0", "2024-10-29T00:00:00.000000000Z"},
      {"days cross the leap day", [](IDateTime& d) { d.AddDays(2); }, "2024-02-28T1",
       "2024-03-01T01:00:00.000000000Z"},
      {"the 32-bit product of days wraps", [](IDateTime& d) { d.AddDays(0x0AAAAAAB); },
       "2024-01-01T0", "2024-01-01T08:00:00.000000000Z"},
      {"back before 1601", [](IDateTime& d) { d.AddDays(-1); }, "1601-01-01T12",
       "1600-12-31T12:00:00.000000000Z"},
      {"parts of hours", [](IDateTime& d) { d.AddHours(-0.5); }, "2024-01-01T0",
       "2023-12-31T23:30:00.000000000Z"},
      {"minutes", [](IDateTime& d) { d.AddMinutes(1.5); }, "2024-01-01T0",
       "2024-01-01T00:01:30.000000000Z"},
      {"seconds", [](IDateTime& d) { d.AddSeconds(-0.001); }, "2024-01-01T0",
       "2023-12-31T23:59:59.999000000Z"},
      {"milliseconds", [](IDateTime& d) { d.AddMilliseconds(1999.9); }, "2024-01-01T0",
       "2024-01-01T00:00:01.999000000Z"},
      {"ticks", [](IDateTime& d) { d.AddTicks(9'999); }, "2024-01-01T0",
       "2024-01-01T00:00:00.000000000Z"},
      {"a time alone", [](IDateTime& d) { d.AddHours(20); }, "T08:15",
       "0001-01-02T04:15:00.000000000Z"},
  };
  for (const auto& c : cases) {
    const auto value = DateTimeOf(c.from);
    c.change(*value);
    EXPECT_EQ(TextOf(value), c.to) << c.what;
  }
}

TEST(DateTime, CompareByUnitLooksFromTheFinestFieldOn) {
  const struct {
    const char* what;
    const char *left, *right;
    DateTimeUnit unit;
    std::int32_t result;
  } cases[] = {
      {"days differ before years", "2020-01-02", "2021-01-01", kDay, 1},
      {"weeks differ before months", "2024-01-15", "2024-02-15", kDay, -1},
      {"the same day", "2024-05-05T1", "2024-05-05T2", kDay, 0},
      {"hours", "2024-05-05T1", "2024-05-05T2", kHour, -1},
      {"hours before days", "2024-05-06T1", "2024-05-05T2", kHour, -1},
      {"minutes", "2024-05-05T1:3", "2024-05-05T2:2", DateTimeUnit::Minute, 1},
      {"seconds", "T1:1:2", "T1:1:1", DateTimeUnit::Second, 1},
      {"milliseconds", "T1:1:1.4", "T1:1:2.3", kMillisecond, 1},
      {"the older name of milliseconds", "T1:1:1.4", "T1:1:2.3", DateTimeUnit{-100}, 1},
      {"milliseconds are no part of seconds", "T1:1:1.4", "T1:1:1.3", DateTimeUnit::Second, 0},
      {"a week goes over months", "2024-04-30", "2024-05-01", kWeek, 0},
      {"a day does not", "2023-05-01", "2024-05-01", kDay, -1},
      {"week before year", "2024-05-08", "2025-05-01", kWeek, 1},
      {"the year of equal weeks", "2024-05-01", "2025-05-01", kWeek, -1},
      {"months", "2024-06-01", "2025-05-01", DateTimeUnit::Month, 1},
      {"equal months", "2024-05-01", "2025-05-02", DateTimeUnit::Month, -1},
      {"years", "2024-05-01", "2024-12-31", DateTimeUnit::Year, 0},
      {"an unknown unit", "2024", "2024", DateTimeUnit{99}, -1},
      {"another one", "2025", "2024", DateTimeUnit{-1}, -1},
  };
  for (const auto& c : cases)
    EXPECT_EQ(DateTimeOf(c.left)->CompareByUnit(DateTimeOf(c.right).Get(), c.unit), c.result)
        << c.what;
}

TEST(DateTime, CompareToOrdersTicks) {
  const auto early = DateTimeOf("T0"), late = DateTimeOf("2024");
  EXPECT_EQ(early->CompareTo(late.Get()), -1) << "before 1601 too";
  EXPECT_EQ(late->CompareTo(early.Get()), 1);
  EXPECT_EQ(DateTimeOfTicks(5)->CompareTo(DateTimeOfTicks(5).Get()), 0);
  EXPECT_EQ(DateTimeOfTicks(5)->CompareTo(DateTimeOfTicks(6).Get()), -1) << "single ticks";
  const std::string failure =
      "Null pointer exception! Interface is not accessible: struct Data::Interfaces::IDateTime";
  EXPECT_EQ(ThrownBy([&] { early->CompareTo(nullptr); }), failure);
  EXPECT_EQ(ThrownBy([&] { early->CompareByUnit(nullptr, kDay); }), failure);
}

TEST(DateTime, GetStartOfTruncates) {
  const struct {
    DateTimeUnit unit;
    const char *from, *start;
  } cases[] = {
      {DateTimeUnit::Year, "2024-11-14T10:20:30.5", "2024-01-01T00:00:00"},
      {DateTimeUnit::Month, "2024-11-14T10:20:30.5", "2024-11-01T00:00:00"},
      {kWeek, "2024-11-14T10:20:30.5", "2024-11-11T00:00:00"},
      {kWeek, "2024-11-17T23:59:59", "2024-11-11T00:00:00"},
      {kWeek, "2024-11-11T00:00:00", "2024-11-11T00:00:00"},
      {kWeek, "2025-01-01T10:00:00", "2024-12-30T00:00:00"},
      {kDay, "2024-11-14T10:20:30.5", "2024-11-14T00:00:00"},
      {kHour, "2024-11-14T10:20:30.5", "2024-11-14T10:00:00"},
      {DateTimeUnit::Minute, "2024-11-14T10:20:30.5", "2024-11-14T10:20:00"},
      {DateTimeUnit::Second, "2024-11-14T10:20:30.5", "2024-11-14T10:20:30"},
      {kMillisecond, "2024-11-14T10:20:30.5", "2024-11-14T10:20:30.5"},
      {DateTimeUnit{99}, "2024-11-14T10:20:30.5", "2024-11-14T10:20:30.5"},
      {DateTimeUnit::Year, "T8", "0001-01-01T00:00:00"},
  };
  for (const auto& c : cases) {
    const auto value = DateTimeOf(c.from);
    EXPECT_EQ(value->GetStartOf(c.unit), DateTimeOf(c.start)->GetFileTime()) << c.from;
    EXPECT_EQ(TextOf(value), TextOf(DateTimeOf(c.from))) << "the object stays as it is";
  }
  const auto fine = DateTimeOfTicks(12'345);
  EXPECT_EQ(fine->GetStartOf(kMillisecond), 10'000u) << "counted from the calendar fields";
}

TEST(DateTime, CloneKeepsTheTicksAlone) {
  const auto value = DateTimeOfTicks(12'345);
  value->SetTimeZone("Europe/Vienna");
  Ptr<IDateTime> clone;
  value->Clone(clone.Receive());
  EXPECT_EQ(clone->GetFileTime(), 12'345u);
  EXPECT_STREQ(clone->GetTimeZone(), "Etc/UTC");
  EXPECT_EQ(clone.Detach()->Release(), 0u) << "one reference, for the caller";
  const auto invalid = DateTimeOf("2023-02-30");
  invalid->Clone(clone.Receive());
  EXPECT_EQ(Print(*clone, &IDateTime::ToIso8601Date), "2023-03-02");
  value->Clone(nullptr);
}

TEST(DateTime, KeepsATimeZoneNameItNeverApplies) {
  const auto value = DateTimeOf("2024-05-05");
  const std::string before = TextOf(value);
  EXPECT_TRUE(value->SetTimeZone("America/Argentina/ComodRivadavia"));
  EXPECT_STREQ(value->GetTimeZone(), "America/Argentina/ComodRivadavia");
  EXPECT_TRUE(value->SetTimeZone(value->GetTimeZone() + 8)) << "a part of itself";
  EXPECT_STREQ(value->GetTimeZone(), "Argentina/ComodRivadavia");
  EXPECT_EQ(TextOf(value), before);
  EXPECT_TRUE(value->SetTimeZone(""));
  EXPECT_STREQ(value->GetTimeZone(), "");
  EXPECT_EQ(ThrownBy([&] { value->SetTimeZone(nullptr); }), "Pointer of char must not be null!");
}

}  // namespace Data::tests
