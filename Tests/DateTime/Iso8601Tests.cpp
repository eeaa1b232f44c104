#include "DateTime/DateTimeSupport.h"

namespace Data::tests {

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
  struct Forms {
    const char *what, *all, *time, *date, *basic;
  };
  const auto check = [](IDateTime& value, const Forms& expected) {
    EXPECT_EQ(Print(value, &IDateTime::ToIso8601), expected.all) << expected.what;
    EXPECT_EQ(Print(value, &IDateTime::ToIso8601Time), expected.time) << expected.what;
    EXPECT_EQ(Print(value, &IDateTime::ToIso8601Date), expected.date) << expected.what;
    EXPECT_EQ(Print(value, &IDateTime::ToIso8601Basic), expected.basic) << expected.what;
  };
  const auto value = DateTimeOf("2024-1-5T7:3:9.25");
  check(*value, {"padded with zeros", "2024-01-05T07:03:09.250000000Z", "T07:03:09.250000000Z",
                 "2024-01-05", "20240105T070309Z"});
  value->SetYear(65535);
  value->SetMonth(100);
  value->SetMinute(60000);
  check(*value, {"wider than usual", "65535-100-05T07:60000:09.250000000Z",
                 "T07:60000:09.250000000Z", "65535-100-05", "6553510005T076000009Z"});
  value->SetNanosecond(-5'000'000);
  EXPECT_EQ(value->GetNanosecond(), 65531u * 1'000'000u) << "the milliseconds are a 16-bit word";
  EXPECT_EQ(Print(*value, &IDateTime::ToIso8601Time), "T07:60000:09.1106490560Z");
  value->SetNanosecond(-65'000'000);
  EXPECT_EQ(Print(*value, &IDateTime::ToIso8601Time), "T07:60000:09.1046490560Z");
  value->SetNanosecond(-2'000'000'000);
  EXPECT_EQ(Print(*value, &IDateTime::ToIso8601Time), "T07:60000:09.-888509440Z");
}

}  // namespace Data::tests
