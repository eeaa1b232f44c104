#include "DateTime/DateTimeSupport.h"

namespace Data::tests {

TEST(Iso8601, ReadsEveryShapeOfDateAndTime) {
  const struct {
    const char *text, *read;
  } cases[] = {
      // Dates without a time mean noon.
      {"2024-11-14", "2024-11-14T12:00:00.000000000Z"},
      {"2024", "2024-01-01T12:00:00.000000000Z"},
      {"2024-1-5", "2024-01-05T12:00:00.000000000Z"},
      {"5-1-5", "0005-01-05T12:00:00.000000000Z"},
      // A time behind "T", or behind a space that ends a date of full length.
      {"2024-11-14T10:20:30.123Z", "2024-11-14T10:20:30.123000000Z"},
      {"2024-11-14T10:20:30", "2024-11-14T10:20:30.000000000Z"},
      {"2024-11-14 10:20:30", "2024-11-14T10:20:30.000000000Z"},
      {"2024-11-14 10:20:30.5", "2024-11-14T10:20:30.500000000Z"},
      {"2024-11-14T10:20", "2024-11-14T10:20:00.000000000Z"},
      {"2024-11-14T7", "2024-11-14T07:00:00.000000000Z"},
      {"2024-1-5T7:3:9", "2024-01-05T07:03:09.000000000Z"},
      {"2024-1-5 7:3:9", "2024-01-05T12:00:00.000000000Z"},
      {"2024-11-14T", "2024-11-14T12:00:00.000000000Z"},
      {"2024-11-14 ", "2024-11-14T12:00:00.000000000Z"},
      {"2024-11-14 T10:20", "2024-11-14T12:00:00.000000000Z"},
      // A time alone.
      {"T08:15", "0001-01-01T08:15:00.000000000Z"},
      {"T", "0001-01-01T00:00:00.000000000Z"},
      {"T10:", "0001-01-01T10:00:00.000000000Z"},
      {"T10::5", "0001-01-01T10:00:05.000000000Z"},
      // A time that cannot be read does not spoil its date.
      {"2024-11-14T10:20:30.1234567891Z", "2024-11-14T12:00:00.000000000Z"},
      {"2024-11-14T10:20Z", "2024-11-14T12:00:00.000000000Z"},
      {"2024-11-14T100:20:30", "2024-11-14T12:00:00.000000000Z"},
      {"2024-11-14T10:20:300", "2024-11-14T12:00:00.000000000Z"},
      {"2024-11-14T10:20:30x", "2024-11-14T12:00:00.000000000Z"},
      {"2024-11-14T10:20:30:40", "2024-11-14T12:00:00.000000000Z"},
      // Fractions count by their value; offsets are never applied.
      {"2024-11-14T10:20:30.05Z", "2024-11-14T10:20:30.500000000Z"},
      {"T10:20:30.10", "0001-01-01T10:20:30.100000000Z"},
      {"T10:20:30.000000001", "0001-01-01T10:20:30.100000000Z"},
      {"T10:20:30.999999999", "0001-01-01T10:20:30.999000000Z"},
      {"T10:20:30.", "0001-01-01T10:20:30.000000000Z"},
      {"T10:20:30.1x3", "0001-01-01T10:20:30.100000000Z"},
      {"T10:20:30+02:00", "0001-01-01T10:20:30.200000000Z"},
      {"2024-11-14T10:20:30+02:00", "2024-11-14T10:20:30.200000000Z"},
      {"2024-11-14T10:20:30-12", "2024-11-14T10:20:30.120000000Z"},
      {"2024-11-14T10:20:30.25+02:00", "2024-11-14T10:20:30.250000000Z"},
      {"2024-11-14T10:20:30.25Z and no more", "2024-11-14T10:20:30.250000000Z"},
      {"2024-11-14T10:20:30Z7", "2024-11-14T10:20:30.700000000Z"},
      {"2024-11-14T10:20:30Z0123456789", "2024-11-14T12:00:00.000000000Z"},
      // Pieces are read up to their first character that is no digit.
      {"20x4-1x-1x", "0020-01-01T12:00:00.000000000Z"},
      {"2024-11-1xT1x:2x:3x.4x", "2024-11-01T01:02:03.400000000Z"},
      {"year", "0000-01-01T12:00:00.000000000Z"},
      {"-5-6", "0000-05-06T12:00:00.000000000Z"},
      {" 999-1-1", "0000-01-01T12:00:00.000000000Z"},
      // Nothing but zero is out of range; negative numbers wrap around.
      {"2024-99-99T99:99:99", "2024-99-99T99:99:99.000000000Z"},
      {"2024-11--1T-1:-2", "2024-11-65535T65535:65534:00.000000000Z"},
      {"2024-11-14T10:20:-1", "2024-11-14T10:20:00.100000000Z"},
  };
  for (const auto& c : cases) EXPECT_EQ(TextOf(DateTimeOf(c.text)), c.read) << c.text;
}

TEST(Iso8601, RejectsTextWithoutADateOrTime) {
  const struct {
    const char *text, *message;
  } cases[] = {
      {"", "Input lenght is 0"},
      {"2024-00-10", "Month cannot be 0"},
      {"2024-00-10T10:20:30", "Month cannot be 0"},
      {"2024-05", "Day cannot be 0"},
      {"2024-05-00", "Day cannot be 0"},
      {"2024-05-00 10:20:30.1Z", "Day cannot be 0"},
      {"2024-", "Month cannot be 0"},
      {"5-12", "Day cannot be 0"},
      {"202", "Month cannot be 0"},
      {"20241-01-01", "Invalid date time format!20241-01-01"},
      {"2024-011-01", "Invalid date time format!2024-011-01"},
      {"2024-01-011", "Invalid date time format!2024-01-011"},
      {"2024-01-01Z", "Invalid date time format!2024-01-01Z"},
      {"20241-1-12 10:20", "Invalid date time format!20241-1-12 10:20"},
      {"20240101", "Invalid date time format!20240101"},
      {"T10:20:30.1234567891Z", "Invalid time format!T10:20:30.1234567891Z"},
      {"T10:20Z", "Invalid time format!T10:20Z"},
      {"T100", "Invalid time format!T100"},
  };
  for (const auto& c : cases) {
    Ptr<IErrorCode> error;
    IDateTime* out = nullptr;
    EXPECT_FALSE(Data_CreateDateTimeFromIso8601(c.text, &out, error.Receive())) << c.text;
    EXPECT_EQ(out, nullptr) << c.text;
    EXPECT_EQ(MessageOf(error), c.message) << c.text;
    EXPECT_EQ(error->GetCode(), 2u) << c.text;
  }
}

TEST(Iso8601, ReportsBadArguments) {
  Ptr<IErrorCode> error;
  IDateTime* out = nullptr;
  EXPECT_FALSE(Data_CreateDateTimeFromIso8601(nullptr, &out, error.Receive()));
  EXPECT_EQ(MessageOf(error), "Pointer of char must not be null!");
  EXPECT_FALSE(Data_CreateDateTimeFromIso8601("2024", nullptr, error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer to a pointer of struct Data::Interfaces::IDateTime must not be null! Address "
            "of return must be specified!");
  const auto held = DateTimeOf("2024");
  out = held.Get();
  EXPECT_FALSE(Data_CreateDateTimeFromIso8601("2024", &out, error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer of struct Data::Interfaces::IDateTime must be null in order to avoid memory "
            "leaks!");
  EXPECT_EQ(out, held.Get());
  out = nullptr;
  IErrorCode* const earlier = error.Get();
  IErrorCode* slot = earlier;
  EXPECT_FALSE(Data_CreateDateTimeFromIso8601("", &out, &slot));
  EXPECT_EQ(slot, earlier) << "a failure that is there already stays";
  EXPECT_FALSE(Data_CreateDateTimeFromIso8601("", &out, nullptr));
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

TEST(Iso8601, PrintersLeaveANullOutPointerAlone) {
  const auto value = DateTimeOf("2024");
  EXPECT_EQ(ThrownBy([&] {
              value->ToIso8601(nullptr);
              value->ToIso8601Time(nullptr);
              value->ToIso8601Date(nullptr);
              value->ToIso8601Basic(nullptr);
            }),
            "");
}

}  // namespace Data::tests
