#include <map>

#include "CallersDateTime.h"
#include "DateTime/DateTimeSupport.h"

namespace Data::tests {

namespace {

Ptr<IDateTime> DateTimeOfPosixTime(std::int64_t seconds) {
  return Made<IDateTime>(Data_CreateDateTimeFromPosixTime, seconds);
}

/// A setter or adder of any argument type, called with a `double`.
template <class Number>
auto Change(void (IDateTime::*change)(Number)) {
  return [=](IDateTime& date, double number) { (date.*change)(static_cast<Number>(number)); };
}

}  // namespace

TEST(DateTime, FactoriesGiveTheirMoments) {
  const auto now = New(Data_CreateCurrentDateTime), later = New(Data_CreateCurrentDateTime);
  EXPECT_EQ(TextOf(New(Data_CreateMinimumDateTime)), "0001-01-01T00:00:00.000000000Z");
  EXPECT_EQ(TextOf(New(Data_CreateMaximumDateTime)), "9999-12-31T00:00:00.000000000Z");
  EXPECT_STREQ(now->GetTimeZone(), "Etc/UTC");
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

TEST(DateTime, ChangesByFieldsAndAmounts) {
  const std::map<std::string_view, std::function<void(IDateTime&, double)>> changes = {
      {"years", Change(&IDateTime::AddYears)},
      {"months", Change(&IDateTime::AddMonths)},
      {"days", Change(&IDateTime::AddDays)},
      {"hours", Change(&IDateTime::AddHours)},
      {"minutes", Change(&IDateTime::AddMinutes)},
      {"seconds", Change(&IDateTime::AddSeconds)},
      {"milliseconds", Change(&IDateTime::AddMilliseconds)},
      {"ticks", Change(&IDateTime::AddTicks)},
      {"year", Change(&IDateTime::SetYear)},
      {"month", Change(&IDateTime::SetMonth)},
      {"day", Change(&IDateTime::SetDay)},
      {"hour", Change(&IDateTime::SetHour)},
      {"minute", Change(&IDateTime::SetMinute)},
      {"second", Change(&IDateTime::SetSecond)},
      {"nanosecond", Change(&IDateTime::SetNanosecond)}};
  for (const Case& c : Cases(kDateTimeCases, "changes")) {
    const auto value = DateTimeOf(c[0]);
    changes.at(c[2])(*value, std::stod(c.fields[1]));
    EXPECT_EQ(TextOf(value), c[3]) << c.where;
    const auto clone = Made<IDateTime>(&IDateTime::Clone, value);  // copies only the ticks
    EXPECT_EQ(TextOf(clone), c[4].empty() ? c[3] : c[4]) << c.where;
    EXPECT_TRUE(clone->GetDayOfWeek() == value->GetDayOfWeek() || !c[4].empty()) << c.where;
  }
  const auto value = DateTimeOfTicks(12'345);
  value->SetMonth(0);
  EXPECT_EQ(value->GetDayOfYear(), -30);
  value->SetMonth(1);
  EXPECT_EQ(value->GetFileTime(), 10'000u) << "single ticks are no field";
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
  const std::function<std::int32_t(IDateTime&, IDateTime*)> comparisons[] = {
      &IDateTime::CompareTo,
      [](auto& date, auto* other) { return date.CompareByUnit(other, DateTimeUnit::Year); },
      [](auto& date, auto* other) { return date.CompareByUnit(other, DateTimeUnit::Millisecond); }};
  for (const auto& compare : comparisons) {
    auto date = DateTimeOf("2024-11-14T10:20:30.5");
    auto callers = Core::MakePtr<CallersDateTime>("2025-11-14T10:20:30.5");
    callers->onRead = [&] {
      date.Reset();
      callers.Reset();
    };
    EXPECT_EQ(compare(*date, callers.Get()), -1);
  }
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
  auto clone = Made<IDateTime>(&IDateTime::Clone, value);
  EXPECT_EQ(clone->GetFileTime(), 12'345u);
  EXPECT_STREQ(clone->GetTimeZone(), "Etc/UTC");
  clone = Made<IDateTime>(&IDateTime::Clone, DateTimeOf("2023-02-30"));
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

TEST(Iso8601, ReadsEveryShapeOfDateAndTime) {
  for (const Case& c : Cases(kDateTimeCases, "read"))
    EXPECT_EQ(TextOf(DateTimeOf(c[0])), c[1]) << c.where;
}

TEST(Iso8601, RejectsTextWithoutADateOrTime) {
  for (const Case& c : Cases(kDateTimeCases, "fail"))
    EXPECT_EQ(Failure([&](IErrorCode** error) {
                Ptr<IDateTime> date;
                return Data_CreateDateTimeFromIso8601(std::string(c[0]).c_str(), date.Receive(),
                                                      error);
              }),
              c[1])
        << c.where;
}

TEST(Iso8601, PrintsFourForms) {
  const auto value = DateTimeOf("2024-1-5T7:3:9.25");
  const auto forms = [&] {
    return TextOf(value) + " " + Print(*value, &IDateTime::ToIso8601Time) + " " +
           Print(*value, &IDateTime::ToIso8601Date) + " " +
           Print(*value, &IDateTime::ToIso8601Basic);
  };
  EXPECT_EQ(forms(),
            "2024-01-05T07:03:09.250000000Z T07:03:09.250000000Z 2024-01-05 20240105T070309Z");
  value->SetYear(65535);
  value->SetMonth(100);
  value->SetMinute(60000);
  EXPECT_EQ(
      forms(),
      "65535-100-05T07:60000:09.250000000Z T07:60000:09.250000000Z 65535-100-05 6553510005T076000009Z")
      << "wider than usual";
  for (const auto& [nanosecond, printed] : {std::pair{-5'000'000, "T07:60000:09.1106490560Z"},
                                            {-65'000'000, "T07:60000:09.1046490560Z"},
                                            {-1'211'000'000, "T07:60000:09.-99509440Z"}}) {
    value->SetNanosecond(nanosecond);
    EXPECT_EQ(Print(*value, &IDateTime::ToIso8601Time), printed);
  }
  EXPECT_EQ(value->GetNanosecond(), 64325u * 1'000'000u) << "the milliseconds are a 16-bit word";
}

}  // namespace Data::tests
