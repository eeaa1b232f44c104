#include <LayerData/Value.h>
#include <gtest/gtest.h>

#include <sstream>

#include "CppSupport.h"

namespace layerdata::tests {

using namespace std::chrono;
using Seconds = sys_time<seconds>;

TEST(Value, IsReadExactlyOrNotAtAll) {
  const Value large = (std::int64_t{1} << 53) + 1, most = std::numeric_limits<std::uint64_t>::max();
  const Value noon = DateTime(2024y / 11 / 14) + hours(12);
  const struct {
    std::string found, expected;
  } cases[] = {
      {Shown<int>(5), "5"},
      {Shown<int>(5.0), "5"},
      {Shown<int>(5.5), "the value '5.5' is not a whole number in range"},
      {Shown<std::int64_t>(0x1p63), "the value '9223372036854775808' is out of range"},
      {Shown<int>(1e300), "the value '1e+300' is not a whole number in range"},
      {Shown<std::uint8_t>(255), "255"},
      {Shown<std::uint8_t>(256), "the value '256' is out of range"},
      {Shown<std::uint8_t>(-1), "the value '-1' is out of range"},
      {Shown<std::uint64_t>(most), "18446744073709551615"},
      {Shown<std::int64_t>(most), "the value '18446744073709551615' is out of range"},
      {Shown<int>("5"), "the value '5' is not a number"},
      {Shown<int>(true), "the value 'true' is not a number"},
      {Shown<double>(large), "the value '9007199254740993' would be rounded"},
      {Shown<double>(3), "3"},
      {Shown<float>(0.5), "0.5"},
      {Shown<float>(0.1), "the value '0.1' would be rounded"},
      {Shown<float>(NAN), "nan"},
      {Shown<bool>(true), "1"},
      {Shown<bool>(1), "the value '1' is neither true nor false"},
      {Shown<std::string>(0.1), "0.1"},
      {Shown<std::string>(Value()), ""},
      {Shown<std::string>(noon), "2024-11-14T12:00:00Z"},
      {Shown<std::string_view>("exactly 16 bytes"), "exactly 16 bytes"},
      {Shown<std::string_view>("longer than 16 bytes"), "longer than 16 bytes"},
      {Shown<std::string_view>(1), "the value '1' is not a text"},
      {Shown<DateTime>(noon), "2024-11-14T12:00:00Z"},
      {Shown<DateTime>("2024"), "the value '2024' is not a date"},
      {Shown<Json>(Json::Parse("[1, 2]")), "[1, 2]"},
      {Shown<int>(Value()), "there is no value"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.found, c.expected);
  EXPECT_EQ(noon.As<Seconds>(), Seconds(sys_days(2024y / 11 / 14) + hours(12)));
  EXPECT_THROW(noon.As<sys_days>(), Error) << "would lose the time of day";
  EXPECT_EQ(Value().As<std::optional<int>>(), std::nullopt);
  EXPECT_EQ(Value(7).As<std::optional<int>>(), 7);
  EXPECT_EQ(Value().Or(3), 3);
  EXPECT_EQ(Value(std::optional<int>()).Type(), LD_VALUE_TYPE_NULL);
  const ld_uuid uuid{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
  EXPECT_EQ(std::memcmp(&uuid, std::vector{Value(uuid).As<ld_uuid>()}.data(), sizeof uuid), 0);
}

TEST(Value, ComparesAndHashesByWhatItIs) {
  const std::int64_t large = (std::int64_t{1} << 53) + 1;
  const Value ascending[] = {-0x1p70,
                             std::numeric_limits<std::int64_t>::min(),
                             -1.5,
                             -1,
                             0,
                             0.25,
                             large - 1,
                             large,
                             large + 1,
                             0x1p63 - 1024,
                             std::numeric_limits<std::uint64_t>::max(),
                             0x1p64};
  for (const Value& left : ascending)
    for (const Value& right : ascending)
      EXPECT_EQ(left <=> right, std::partial_ordering(&left <=> &right)) << left << " " << right;
  const std::pair<Value, Value> equal[] = {{1, 1.0},
                                           {0.0, -0.0},
                                           {"a", std::string("a")},
                                           {Value(), nullptr},
                                           {true, true},
                                           {0x1p63, std::uint64_t{1} << 63},
                                           {DateTime(1970y / 1 / 1), Seconds()}};
  for (const auto& [left, right] : equal) {
    EXPECT_EQ(left, right);
    EXPECT_EQ(std::hash<Value>()(left), std::hash<Value>()(right)) << left;
  }
  for (const auto& [left, right] : {std::pair<Value, Value>{1, "1"},
                                    {Value(), 0},
                                    {NAN, NAN},
                                    {NAN, 1},
                                    {true, 1},
                                    {"a", Value()}})
    EXPECT_EQ(left <=> right, std::partial_ordering::unordered) << left << " " << right;
  EXPECT_LT(Value("a"), Value("b"));
  EXPECT_GT(Value(DateTime(1700y / 1 / 1)), DateTime(1600y / 1 / 1));
  EXPECT_NE(Value(1), 2);
}

TEST(Value, OwnsItsObject) {
  Value text = "longer than sixteen bytes", copy = text;
  const Value moved = std::move(text);
  EXPECT_TRUE(text.IsNull());
  const Value& same = copy;
  copy = same;
  EXPECT_EQ(copy, moved);
  copy = 5;
  EXPECT_EQ(moved.ToText(), "longer than sixteen bytes");
}

TEST(DateTime, IsAPointInTime) {
  const struct {
    DateTime time;
    const char* text;
  } cases[] = {
      {DateTime(), "1970-01-01T00:00:00Z"},
      {DateTime::Parse("2024-11-14T10:20:30.5Z"), "2024-11-14T10:20:30.5Z"},
      {DateTime::Parse("2024-11-14"), "2024-11-14T12:00:00Z"},
      {DateTime(9999y / 12 / 31) + DateTime::Ticks(1), "9999-12-31T00:00:00.0000001Z"},
      {DateTime(1y / 1 / 1), "0001-01-01T00:00:00Z"},
      {DateTime(1600y / 12 / 31) - seconds(1), "1600-12-30T23:59:59Z"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.time.ToText(), c.text);
    EXPECT_EQ(Value(c.time).As<DateTime>(), c.time) << "as a value of the library";
  }
  EXPECT_EQ(DateTime(2024y / 3 / 1) - DateTime(2024y / 2 / 28), days(2));
  EXPECT_EQ(DateTime::Parse("2024-11-14T10:20:30Z").Date(), 2024y / 11 / 14);
  EXPECT_EQ(Message([] { DateTime::Parse("today at noon"); }),
            "Invalid date time format!today at noon");
}

TEST(Text, ConvertsToOtherEncodings) {
  const Text text("gr\u00FC\u00DFe");
  EXPECT_EQ(text.ToCodePage(1252),
            "gr\xFC\xDF"
            "e");
  EXPECT_EQ(Text::FromCodePage("gr\xFC\xDF"
                               "e",
                               1252),
            text);
  EXPECT_EQ(text.ToUtf16(), u"gr\u00FC\u00DFe");
  EXPECT_EQ(Text::FromUtf16(u"gr\u00FC\u00DFe"), text);
  EXPECT_EQ(text.Size(), 7u);
  EXPECT_TRUE(Text().IsEmpty() && Text("").IsEmpty());
  EXPECT_STREQ(Text().CStr(), "");
}

TEST(Json, ComparesContent) {
  const Json json = Json::Parse(R"({"a": 1, "b": [true]})");
  EXPECT_EQ(json, Json::Parse(R"({"b":[true],"a":1.0})"));
  EXPECT_EQ(json.ToCompactText(), Text(R"({"a":1,"b":[true]})"));
  EXPECT_EQ(Message([] { Json::Parse("{"); }), "The text is not valid JSON!");
}

}  // namespace layerdata::tests
