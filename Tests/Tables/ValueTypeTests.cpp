#include "Prelude.h"

namespace Data::tests {

namespace {

struct Case {
  const char* why;
  std::string_view text;
  ValueType type;
};

void CheckTypes(std::initializer_list<Case> cases) {
  for (const auto& c : cases)
    EXPECT_EQ(Core::GetValueTypeName(Data_DetectValueType(c.text.data(), c.text.size())),
              Core::GetValueTypeName(c.type))
        << c.why << ": " << c.text;
}

}  // namespace

TEST(ValueType, EmptyTextIsUnknown) {
  CheckTypes({
      {"no text", {}, ValueType::Unknown},
      {"every kind of space", "\t\n\v\f\r ", ValueType::Unknown},
      {"a zero byte is no space", std::string_view("\0", 1), ValueType::String},
  });
}

TEST(ValueType, Integers) {
  CheckTypes({
      {"plain", "12", ValueType::Int64},
      {"negative", "-5", ValueType::Int64},
      {"space around", " \t7\r\n", ValueType::Int64},
      {"a year alone is a number", "2020", ValueType::Int64},
      {"leading zeros", "007", ValueType::Int64},
      {"more digits than 64 bits hold", "123456789012345678901234567890", ValueType::Int64},
      {"a plus sign", "+5", ValueType::String},
      {"space behind the sign", "- 5", ValueType::String},
      {"two signs", "--5", ValueType::String},
      {"a thousands separator", "1,000", ValueType::String},
      {"a zero byte inside", std::string_view("1\0002", 3), ValueType::String},
      {"digits of another script", "\xD9\xA1\xD9\xA2", ValueType::String},
  });
}

TEST(ValueType, Doubles) {
  CheckTypes({
      {"plain", "1.5", ValueType::Double},
      {"no digit before the dot", ".5", ValueType::Double},
      {"no digit behind the dot", "5.", ValueType::Double},
      {"negative without whole digits", "-.5", ValueType::Double},
      {"exponent", "1e5", ValueType::Double},
      {"negative exponent", "1E-5", ValueType::Double},
      {"exponent without digits still looks like a number", "1e", ValueType::Double},
      {"so does a dot behind it", "1e5.5", ValueType::Double},
      {"and a sign anywhere behind it", "1e5-", ValueType::Double},
      {"out of range", "1e999", ValueType::Double},
      {"plus sign in the exponent", "1e+5", ValueType::String},
      {"two signs in the exponent", "1e--5", ValueType::String},
      {"two dots", "1.2.3", ValueType::String},
      {"two dots across the exponent", "1.2e3.4", ValueType::String},
      {"two exponents", "1e5e5", ValueType::String},
      {"exponent without a number", "e5", ValueType::String},
      {"exponent behind a lone dot", ".e5", ValueType::String},
      {"lone signs", "-", ValueType::String},
      {"lone dot", ".", ValueType::String},
      {"dot and sign", "-.", ValueType::String},
      {"decimal comma", "1,5", ValueType::String},
      {"not a number", "nan", ValueType::String},
      {"infinity", "-inf", ValueType::String},
      {"hexadecimal", "0x10", ValueType::String},
  });
}

TEST(ValueType, DateTimes) {
  CheckTypes({
      {"date", "2020-01-31", ValueType::DateTime},
      {"date and time", "2024-11-14T10:20:30.123Z", ValueType::DateTime},
      {"a space for the T", "2024-11-14 10:20:30", ValueType::DateTime},
      {"short numbers", "2024-1-5T7:3:9", ValueType::DateTime},
      {"day and month are not checked", "2024-99-99", ValueType::DateTime},
      {"time alone, by its one colon", "T10:00", ValueType::DateTime},
      {"time with two colons lacks the dashes", "T10:00:00", ValueType::String},
      {"time without a colon", "T10", ValueType::String},
      {"colons without a T", "10:00", ValueType::String},
      {"month zero", "2024-00-10", ValueType::String},
      {"day zero", "2024-10-00", ValueType::String},
      {"year and month alone", "2024-05", ValueType::String},
      {"year of five digits", "20241-01-01", ValueType::String},
      {"three dashes: a negative offset", "2024-11-14T10:20:30-02:00", ValueType::String},
      {"three colons: a positive offset", "2024-11-14T10:20:30+02:00", ValueType::String},
      {"three dashes with a single colon", "2024-11-14T10:20-02", ValueType::String},
      {"telephone number", "555-12-3456", ValueType::String},
      {"36 characters", "2024-11-14T10:20:30.1234567Z........", ValueType::DateTime},
      {"37 characters", "2024-11-14T10:20:30.1234567Z.........", ValueType::String},
      {"36 and space around", "\t2024-11-14T10:20:30.1234567Z........ ", ValueType::DateTime},
      {"negative year", "-2024-01-01", ValueType::String},
      {"quoted", "\"2024-01-01\"", ValueType::String},
  });
}

TEST(ValueType, EverythingElseIsText) {
  CheckTypes({
      {"there are no booleans", "true", ValueType::String},
      {"word", "abc", ValueType::String},
      {"quoted number", "\"12\"", ValueType::String},
      {"quotes around nothing", "\"\"", ValueType::String},
      {"null is a word", "null", ValueType::String},
  });
}

TEST(ValueType, ReadsNoFurtherThanItsSize) {
  const std::string text = "12x2020-01-019";
  EXPECT_EQ(Data_DetectValueType(text.data(), 2), ValueType::Int64);
  EXPECT_EQ(Data_DetectValueType(text.data() + 3, 10), ValueType::DateTime);
  EXPECT_EQ(Data_DetectValueType(text.data(), 0), ValueType::Unknown);
  EXPECT_EQ(Data_DetectValueType(nullptr, 0), ValueType::Unknown);
}

}  // namespace Data::tests
