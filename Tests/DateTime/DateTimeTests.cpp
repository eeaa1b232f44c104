#include "CallersDateTime.h"
#include "DateTime/DateTimeSupport.h"

namespace Data::tests {

namespace {

Ptr<IDateTime> DateTimeOfPosixTime(std::int64_t seconds) {
  Ptr<IDateTime> result;
  EXPECT_TRUE(Data_CreateDateTimeFromPosixTime(seconds, result.Receive()));
  return result;
}

}  // namespace

TEST(DateTime, FactoriesGiveTheirMoments) {
  Ptr<IDateTime> minimum, maximum, now, later;
  EXPECT_TRUE(Data_CreateMinimumDateTime(minimum.Receive()));
  EXPECT_TRUE(Data_CreateMaximumDateTime(maximum.Receive()));
  EXPECT_TRUE(Data_CreateCurrentDateTime(now.Receive()));
  EXPECT_TRUE(Data_CreateCurrentDateTime(later.Receive()));
  EXPECT_EQ(TextOf(minimum), "0001-01-01T00:00:00.000000000Z");
  EXPECT_EQ(TextOf(maximum), "9999-12-31T00:00:00.000000000Z");
  EXPECT_STREQ(minimum->GetTimeZone(), "Etc/UTC");
  EXPECT_GT(now->GetYear(), 2023);
  EXPECT_LE(now->CompareTo(later.Get()), 0);
  EXPECT_LT(later->GetFileTime() - now->GetFileTime(), 36'000'000'000u) << "an hour";
}

TEST(DateTime, ConvertsPosixTime) {
  for (const Case& c : Cases(kDateTimeCases, "seconds")) {
    const std::int64_t seconds = std::stoll(std::string(c[0]));
    const auto value = DateTimeOfPosixTime(seconds);
    EXPECT_EQ(TextOf(value), c[1]) << c.where;
    EXPECT_EQ(value->ToPosixTime(), seconds) << c.where;
  }
  EXPECT_EQ(DateTimeOfTicks(116444735990000000)->ToPosixTime(), -1);
  EXPECT_EQ(DateTimeOfTicks(116444735990000001)->ToPosixTime(), 0) << "rounded toward zero";
  EXPECT_EQ(DateTimeOfPosixTime(INT64_MAX)->GetFileTime(),
            INT64_MAX * 10'000'000ull + 116444736000000000u)
      << "the product wraps";
}

TEST(DateTime, EachSetterRebuildsTheTicks) {
  const struct {
    void (*set)(IDateTime&);
    const char* expected;
  } cases[] = {
      {[](IDateTime& d) { d.SetYear(2024); }, "2024-01-01T01:02:03.5"},
      {[](IDateTime& d) { d.SetMonth(12); }, "2021-12-01T01:02:03.5"},
      {[](IDateTime& d) { d.SetDay(29); }, "2021-01-29T01:02:03.5"},
      {[](IDateTime& d) { d.SetHour(10); }, "2021-01-01T10:02:03.5"},
      {[](IDateTime& d) { d.SetMinute(20); }, "2021-01-01T01:20:03.5"},
      {[](IDateTime& d) { d.SetSecond(30); }, "2021-01-01T01:02:30.5"},
      {[](IDateTime& d) { d.SetNanosecond(123'999'999); }, "2021-01-01T01:02:03.123"},
      {[](IDateTime& d) { d.SetNanosecond(-999'999); }, "2021-01-01T01:02:03"},
  };
  for (const auto& c : cases) {
    const auto value = DateTimeOf("2021-1-1T1:2:3.5"), expected = DateTimeOf(c.expected);
    value->AddTicks(7);
    c.set(*value);
    EXPECT_EQ(TextOf(value), TextOf(expected));
    EXPECT_EQ(value->GetFileTime(), expected->GetFileTime()) << c.expected << ": no single ticks";
    EXPECT_EQ(value->GetDayOfWeek(), expected->GetDayOfWeek()) << c.expected;
    EXPECT_EQ(value->GetUtcOffset(), 0);
  }
}

TEST(DateTime, AddsAmountsOfEveryUnit) {
  const std::pair<std::string_view, void (*)(IDateTime&, double)> additions[] = {
      {"years", [](IDateTime& d, double n) { d.AddYears(static_cast<std::int32_t>(n)); }},
      {"months", [](IDateTime& d, double n) { d.AddMonths(static_cast<std::int32_t>(n)); }},
      {"days", [](IDateTime& d, double n) { d.AddDays(static_cast<std::int32_t>(n)); }},
      {"hours", [](IDateTime& d, double n) { d.AddHours(n); }},
      {"minutes", [](IDateTime& d, double n) { d.AddMinutes(n); }},
      {"seconds", [](IDateTime& d, double n) { d.AddSeconds(n); }},
      {"milliseconds", [](IDateTime& d, double n) { d.AddMilliseconds(n); }},
      {"ticks", [](IDateTime& d, double n) { d.AddTicks(static_cast<std::int64_t>(n)); }},
  };
  for (const Case& c : Cases(kDateTimeCases, "amounts"))
    for (const auto& [unit, add] : additions) {
      const auto value = DateTimeOf(c[0]);
      if (unit != c[2]) continue;
      add(*value, std::stod(std::string(c[1])));
      EXPECT_EQ(TextOf(value), c[3]) << c.where;
    }
}

TEST(DateTime, CompareByUnitStartsAtTheFinestField) {
  for (const Case& c : Cases(kDateTimeCases, "comparisons")) {
    const auto left = DateTimeOf(c[0]), right = DateTimeOf(c[1]);
    EXPECT_EQ(left->CompareByUnit(right.Get(), Unit(c[2])), Number(c[3])) << c.where;
  }
}

TEST(DateTime, CompareToOrdersByTicks) {
  const auto early = DateTimeOf("0001-01-01T0"), late = DateTimeOf("2024");
  EXPECT_EQ(early->CompareTo(late.Get()), -1) << "before 1601 too";
  EXPECT_EQ(late->CompareTo(early.Get()), 1);
  EXPECT_EQ(DateTimeOfTicks(5)->CompareTo(DateTimeOfTicks(5).Get()), 0);
  EXPECT_EQ(DateTimeOfTicks(5)->CompareTo(DateTimeOfTicks(6).Get()), -1) << "single ticks";
  const std::string failure =
      "Null pointer exception! Interface is not accessible: struct Data::Interfaces::IDateTime";
  EXPECT_EQ(ThrownBy([&] { early->CompareTo(nullptr); }), failure);
  EXPECT_EQ(ThrownBy([&] { early->CompareByUnit(nullptr, DateTimeUnit::Day); }), failure);
}

TEST(DateTime, ADateTimeOfTheCallersMayEndBothWhileItIsCompared) {
  const auto compare = [](auto comparison) {
    auto date = DateTimeOf("2024-11-14T10:20:30.5");
    auto callers = Core::MakePtr<CallersDateTime>("2025-11-14T10:20:30.5");
    callers->onRead = [&] {
      date.Reset();
      callers.Reset();
    };
    return comparison(*date, callers.Get());
  };
  EXPECT_EQ(compare([](IDateTime& date, IDateTime* other) { return date.CompareTo(other); }), -1);
  for (const auto unit : {DateTimeUnit::Year, DateTimeUnit::Millisecond})
    EXPECT_EQ(
        compare([=](IDateTime& date, IDateTime* other) { return date.CompareByUnit(other, unit); }),
        -1);
}

TEST(DateTime, GetStartOfTruncates) {
  for (const Case& c : Cases(kDateTimeCases, "starts")) {
    const auto value = DateTimeOf(c[0]);
    EXPECT_EQ(value->GetStartOf(Unit(c[1])), DateTimeOf(c[2])->GetFileTime()) << c.where;
    EXPECT_EQ(TextOf(value), TextOf(DateTimeOf(c[0]))) << "the object stays as it is";
  }
  EXPECT_EQ(DateTimeOfTicks(12'345)->GetStartOf(DateTimeUnit::Millisecond), 10'000u)
      << "counted from the calendar fields";
}

TEST(DateTime, CloneKeepsTheTicksAlone) {
  const auto value = DateTimeOfTicks(12'345);
  value->SetTimeZone("Europe/Vienna");
  Ptr<IDateTime> clone;
  value->Clone(clone.Receive());
  EXPECT_EQ(clone->GetFileTime(), 12'345u);
  EXPECT_STREQ(clone->GetTimeZone(), "Etc/UTC");
  DateTimeOf("2023-02-30")->Clone(clone.Receive());
  EXPECT_EQ(Print(*clone, &IDateTime::ToIso8601Date), "2023-03-02");
}

TEST(DateTime, KeepsATimeZoneNameItNeverApplies) {
  const auto value = DateTimeOf("2024-05-05");
  EXPECT_TRUE(value->SetTimeZone("America/Argentina/ComodRivadavia"));
  EXPECT_STREQ(value->GetTimeZone(), "America/Argentina/ComodRivadavia");
  EXPECT_TRUE(value->SetTimeZone(value->GetTimeZone() + 8)) << "a part of itself";
  EXPECT_STREQ(value->GetTimeZone(), "Argentina/ComodRivadavia");
  EXPECT_EQ(TextOf(value), TextOf(DateTimeOf("2024-05-05")));
  EXPECT_TRUE(value->SetTimeZone(""));
  EXPECT_STREQ(value->GetTimeZone(), "");
  EXPECT_EQ(ThrownBy([&] { value->SetTimeZone(nullptr); }), kNullText);
}

}  // namespace Data::tests
