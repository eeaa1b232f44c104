#include "CsvSupport.h"

namespace Data::tests {

using Core::IErrorCode;
using Core::Ptr;
using Interfaces::IObjectList;
using Interfaces::ITable;
using std::string_view_literals::operator""sv;
using Structures::ValueType;

namespace {

struct Case {
  const char* why;
  std::string_view text;
  std::string_view table;
};

void CheckReading(std::initializer_list<Case> cases) {
  for (const auto& c : cases) EXPECT_EQ(Show(ReadCsv(c.text)), c.table) << c.why;
}

constexpr std::string_view kNoLines = "! No lines detected in the csv content";

std::string TooManyValues(int columns, int values, int line) {
  return Core::StringFormat(
      "Csv file does not have consistent usage of column separator between lines!, Columns %d vs "
      "Values %d at line %d",
      columns, values, line);
}

}  // namespace

TEST(CsvRead, TypesEachCellByItself) {
  CheckReading({
      {"a column may mix types", "v\n1\n1.5\n2024-11-14\nx\n",
       "v\n1\n1.5f\n@2024-11-14T12:00:00.000\n'x'"},
      {"date-times", "d,e\n2024-01-05T07:03:09Z,2024-01-05 07:03:09.5\n",
       "d|e\n@2024-01-05T07:03:09.000|@2024-01-05T07:03:09.500"},
      {"the largest integers", "a,b\n9223372036854775807,-9223372036854775808",
       "a|b\n9223372036854775807|-9223372036854775808"},
      {"integers beyond 64 bits stay text", "a,b\n9223372036854775808,-9223372036854775809",
       "a|b\n'9223372036854775808'|'-9223372036854775809'"},
      {"leading zeros do not count", "a\n0000000000000000000000000000000042", "a\n42"},
      {"doubles are the nearest ones", "a,b\n0.1,123456789.12345679",
       "a|b\n0.1f|123456789.12345679f"},
      {"half-way between two doubles", "a,b\n9007199254740993.0,9007199254740995.",
       "a|b\n9007199254740992f|9007199254740996f"},
      {"the smallest and the largest doubles", "a,b,c\n4.9e-324,1.7976931348623157e308,-0.0",
       "a|b|c\n5e-324f|1.7976931348623157e+308f|-0f"},
      {"more digits than a double has", "a\n3.14159265358979323846264338327950288419716939937510",
       "a\n3.141592653589793f"},
      {"numbers in shape only stay text", "a,b,c,d\n1e,1e5.5,1e999,1e5-",
       "a|b|c|d\n'1e'|'1e5.5'|'1e999'|'1e5-'"},
      {"so does what would round to zero", "a,b\n1e-999,0e-999", "a|b\n'1e-999'|0f"},
      {"empty values are Null", "a,b,c\n,,x\n1,,", "a|b|c\n~|~|'x'\n1|~|~"},
      {"booleans are text", "a,b\ntrue,false", "a|b\n'true'|'false'"},
  });
}

TEST(CsvRead, TextCellsLoseTheirQuotes) {
  CheckReading({
      {"the separator inside", "a,b\n\"x,y\",z", "a|b\n'x,y'|'z'"},
      {"a line break inside", "a,b\n\"x\r\ny\",z\n", "a|b\n'x\r\ny'|'z'"},
      {"doubled quotes", "a,b\n\"say \"\"no\"\" now\",", "a|b\n'say \"no\" now'|~"},
      {"every quote at the ends goes", "a,b\n\"\"\"x\"\"\",\"\"y", "a|b\n'x'|'y'"},
      {"pairs count from the left", "a\nx\"\"\"y\"z", "a\n'x\"\"y\"z'"},
      {"nothing but quotes is an empty text", "a,b\n\"\",\"\"\"\"", "a|b\n''|''"},
      {"space inside stays, around it goes", "a,b\n  \" x \" ,y", "a|b\n' x '|'y'"},
      {"a quoted number is text", "a,b\n\"12\",\"2024-01-01\"", "a|b\n'12'|'2024-01-01'"},
      {"single quotes inside stay", "a\nx\"y\"z", "a\n'x\"y\"z'"},
      {"pairs in a long text", "a\n\"123456789 123456789\"\"0\"", "a\n'123456789 123456789\"0'"},
      {"pairs that make it short", "a\nx\"\"\"\"\"\"\"\"\"\"\"\"\"\"\"\"x",
       "a\n'x\"\"\"\"\"\"\"\"x'"},
      {"a quote never closed takes the rest", "a,b\nx,\"y,1\nz,2", "a|b\n'x'|'y,1\nz,2'"},
      {"a zero byte in a short text", "a,b\nx\0y,1"sv, "a|b\n'x\0y'|1"sv},
      {"bytes of any encoding", "a\n\xE9\xFF\x80", "a\n'\xE9\xFF\x80'"},
  });
}

TEST(CsvRead, ShortTextsStayInTheRecord) {
  const auto result = ReadCsv("a,b,c,d\n1234567890123456x,x234567890123456,x\0y,\"\""sv);
  const auto isInline = [&](std::int32_t column) {
    return Core::HasForm(*result.table->GetRow(0)->GetCellAt(column), Core::StorageForm::Value);
  };
  EXPECT_FALSE(isInline(0)) << "17 bytes";
  EXPECT_TRUE(isInline(1)) << "16 bytes";
  EXPECT_FALSE(isInline(2)) << "a zero byte would end it";
  EXPECT_TRUE(isInline(3)) << "empty";
}

TEST(CsvRead, FindsTheLines) {
  CheckReading({
      {"carriage returns go with the trim", "a,b\r\nx,1\r\ny,2\r\n", "a|b\n'x'|1\n'y'|2"},
      {"empty lines are dropped", "\n\na,b\n \t\n\0\n\r\nx,1\n\n"sv, "a|b\n'x'|1"},
      {"a carriage return alone ends no line", "a\rb\nx\ry", "a\rb\n'x\ry'"},
      {"a byte-order mark",
       "\xEF\xBB\xBF"
       "a,b\nx,1",
       "a|b\n'x'|1"},
      {"only one of them",
       "\xEF\xBB\xBF\xEF\xBB\xBF"
       "a\nx",
       "\xEF\xBB\xBF"
       "a\n'x'"},
      {"zero bytes around a line, not around values", "a,b,c\n\0x,\0y,z\0"sv,
       "a|b|c\n'x'|'\0y'|'z'"sv},
      {"a byte-order mark alone", "\xEF\xBB\xBF", kNoLines},
      {"nothing but space", " \t\r\n\v\f\n\0"sv, kNoLines},
      {"one byte", "x", "x"},
      {"quotes never closed from the start", "\"a,b\nx,1", "\"a,b\nx,1"},
  });
}

TEST(CsvRead, DetectsTheSeparator) {
  CheckReading({
      {"the earliest candidate", "a;b,c\n1;2,3", "a|b,c\n1|'2,3'"},
      {"TAB", "a\tb;c\n1\t2", "a|b;c\n1|2"},
      {"vertical bar", "a|b\n1|2", "a|b\n1|2"},
      {"none is one column", "abc\n12 3\n4", "abc\n'12 3'\n4"},
      {"quotes do not hide a candidate", "\"a;b\",c\n1,2", "\"a;b\",c\n'1,2'"},
      {"a candidate far behind", "abc\n1\n2;3", "Column 1|Column 2\n2|3"},
      {"TABs at the ends of a line go with the trim", "a\tb\tc\nx\ty\tz\n\t1\t2\n3\t\t4\n5\t\t",
       "a|b|c\n'x'|'y'|'z'\n1|2|~\n3|~|4\n5|~|~"},
  });
}

TEST(CsvRead, FindsTheHeader) {
  CheckReading({
      {"numbers are no header", "1,2\n3,4", "Column 1|Column 2\n1|2\n3|4"},
      {"one number is enough", "a,2\nb,4", "Column 1|Column 2\n'a'|2\n'b'|4"},
      {"nor is what has only the shape of a number", "a,1e\nb,4",
       "Column 1|Column 2\n'a'|'1e'\n'b'|4"},
      {"nor a date", "a,2024-01-01\nb,x",
       "Column 1|Column 2\n'a'|@2024-01-01T12:00:00.000\n'b'|'x'"},
      {"names keep their quotes", "\"a\",\"b,c\"\n1,2", "\"a\"|\"b,c\"\n1|2"},
      {"names are trimmed", " a , b\t\n1,2", "a|b\n1|2"},
      {"empty values alone are no header", ",,\n1,2,3", "Column 1|Column 2|Column 3\n~|~|~\n1|2|3"},
      {"a header alone", "a,b\n", "a|b"},
      {"text below text", "a,b\nc,d", "a|b\n'c'|'d'"},
      {"shorter lines before it are a preamble", "title\nas of,2024\na,b,c\n1,2,3", "a|b|c\n1|2|3"},
      {"and no preamble before data", "title\n1,2\n3,4", "Column 1|Column 2\n1|2\n3|4"},
  });
}

TEST(CsvRead, NamesEmptyHeaderCells) {
  const auto result = ReadCsv("a,,\" \", \n1,2,3,4");
  ASSERT_TRUE(result.table);
  const std::string second = result.table->GetColumn(1)->GetName();
  const std::string fourth = result.table->GetColumn(3)->GetName();
  EXPECT_EQ(second.substr(0, 8), "Unnamed_");
  EXPECT_NE(second, fourth);
  Structures::_UUID uuid;
  EXPECT_TRUE(Data_UuidFromString(second.c_str() + 8, &uuid));
  EXPECT_STREQ(result.table->GetColumn(2)->GetName(), "\" \"");
}

TEST(CsvRead, OnlyTheFirstHundredLinesTellTheWidth) {
  const auto linesBefore = [](int count, const char* line) {
    std::string text;
    for (int i = 0; i < count; ++i) text += "x\n";
    return text + line;
  };
  const auto inside = ReadCsv(linesBefore(99, "a,b\n1,2\n"));
  EXPECT_EQ(Show(inside), "a|b\n1|2");
  const auto beyond = ReadCsv(linesBefore(100, "a,b\n"));
  EXPECT_EQ(beyond.failure, TooManyValues(1, 2, 100));
}

TEST(CsvRead, LinesWithTooManyValues) {
  const struct {
    const char* why;
    std::string_view text;
    int columns, values, line;
    std::string_view kept, skipped;
  } cases[] = {
      {"a value too many behind the sample's header", "a,a,b\n1,2,3\n4,5\n", 2, 3, 1,
       "a|b\n1|2\n4|5", "a|b\n4|5"},
      {"a separator at the end is a value", "a,b,a\n\n1,2\n3,4,\n", 2, 3, 2, "a|b\n1|2\n3|4",
       "a|b\n1|2"},
      {"lines count from the preamble on", "note\na,b,a\n1,2\n\n1,2,3\n", 2, 3, 3, "a|b\n1|2\n1|2",
       "a|b\n1|2"},
  };
  for (const auto& c : cases) {
    const std::string message = TooManyValues(c.columns, c.values, c.line);
    EXPECT_EQ(Show(ReadCsv(c.text)), "! " + message) << c.why;
    const auto kept = ReadCsv(c.text, CsvMode::KeepRows);
    EXPECT_EQ(Show(kept), c.kept) << c.why;
    EXPECT_EQ(kept.problems, std::vector{message}) << c.why;
    const auto skipped = ReadCsv(c.text, CsvMode::SkipRows);
    EXPECT_EQ(Show(skipped), c.skipped) << c.why;
    EXPECT_EQ(skipped.problems, std::vector{message}) << c.why;
  }
}

TEST(CsvRead, LeavesNoProblemsWithoutBadLines) {
  const auto result = ReadCsv("a,b\n1,2\n3", CsvMode::SkipRows);
  EXPECT_EQ(Show(result), "a|b\n1|2\n3|~");
  EXPECT_TRUE(result.problems.empty());
}

TEST(CsvRead, TellsTheColumnsWhatTheyHold) {
  const auto result = ReadCsv("a,b,c,d\n1,x,,4\n1.5,2024-01-01,,5\n,y,\n");
  const struct {
    const char* why;
    ValueType type;
    bool hasSeenNull;
  } columns[] = {
      {"the last value that is not Null gives the type", ValueType::Double, true},
      {"text after a date", ValueType::String, false},
      {"never a value: the type of the first cell", ValueType::Null, true},
      {"a missing value is an explicit Null", ValueType::Int64, true},
  };
  std::int32_t index = 0;
  for (const auto& expected : columns) {
    auto* column = result.table->GetColumn(index++);
    EXPECT_EQ(column->GetType(), expected.type) << expected.why;
    EXPECT_EQ(column->HasSeenNull(), expected.hasSeenNull) << expected.why;
  }
  EXPECT_EQ(result.table->GetRow(0)->IsModified(), 0);
}

TEST(CsvRead, TakesAnySeparator) {
  const struct {
    const char* why;
    const char* separator;
    std::string_view text, table;
  } cases[] = {
      {"one byte", ":", "a:b,c\n1:2,3", "a|b,c\n1|'2,3'"},
      {"several bytes", "||", "a||b\n1||2|3", "a|b\n1|'2|3'"},
      {"their occurrences do not overlap", "||", "a||b|||c\n1||2||3", "a|b||c\n1|2|3"},
      {"several bytes inside quotes", "::", "a::b\n\"x::y\"::z", "a|b\n'x::y'|'z'"},
      {"a doubled quote inside", "::", "a::b\n\"x\"\"::y\"::z", "a|b\n'x\"::y'|'z'"},
      {"empty counts as a comma", "", "a,b\n1,2", "a|b\n1|2"},
      {"space, which the trim takes from the ends", " ", "a b c\n 1  2 \nx",
       "a|b|c\n1|~|2\n'x'|~|~"},
      {"with space in it", ", ", "a, b\n1, 2\n3,4", "a|b\n1|2\n'3,4'|~"},
      {"carriage return", "\r", "a\rb\r\n1\r2\r\n", "a|b\n1|2"},
      {"a line end never separates values", "\n", "a\n1\n\"x\ny\"", "a\n1\n'x\ny'"},
      {"a byte above 127", "\xA7",
       "a\xA7"
       "b\n1\xA7"
       "2",
       "a|b\n1|2"},
      {"longer than the text", "abcdefgh", "x\n1", "x\n1"},
      {"a quote separates where none is open, line ends then stand inside", "\"", "a\"b\nx\"1",
       "a|b\nx\"1"},
      {"with a quote in it", ";\"", "a;\"b\n", "a|b"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Show(ReadSeparatedBy(c.separator, c.text)), c.table) << c.why;
}

/// Anything but one pass over the text would take minutes for one of these.
TEST(CsvRead, LongTextsOfOneKindTakeOnePass) {
  constexpr std::size_t kSize = 1 << 20;
  const std::string plain(kSize, 'x'), quotes(kSize, '"'), separators(kSize / 8, ',');
  std::string values;
  for (int i = 0; i < 100000; ++i) values += "1,";
  const struct {
    const char* why;
    std::string text;
    std::int64_t columns, rows;
  } cases[] = {
      {"one quoted field", "a\n\"" + plain + "\"", 1, 1},
      {"one quoted field of pairs", "a\nx" + quotes + "x", 1, 1},
      {"only quotes", quotes, 1, 0},
      {"only separators", separators, kSize / 8 + 1, 1},
      {"only line ends but for the ends", "a" + std::string(kSize, '\n') + "b", 1, 1},
      {"a line with 100,001 values", values + "1\n" + values, 100001, 2},
      {"a quote that is never closed", "a,b\n1,\"" + values + separators, 2, 1},
      {"separators that quotes hide", "a,b\n1,\"" + separators + "\"", 2, 1},
  };
  for (const auto& c : cases) {
    const auto result = ReadCsv(c.text);
    ASSERT_TRUE(result.table) << c.why << ": " << result.failure;
    EXPECT_EQ(result.table->GetColumnCount(), c.columns) << c.why;
    EXPECT_EQ(result.table->GetRowCount(), c.rows) << c.why;
  }
  EXPECT_EQ(ReadSeparatedBy("\",", "a\n" + quotes + separators).table->GetRowCount(), 1);
}

TEST(CsvRead, RejectsBadArguments) {
  constexpr std::string_view kNullOut =
      "Pointer to a pointer of struct Data::Interfaces::ITable must not be null! Address of return "
      "must be specified!";
  constexpr std::string_view kUsedOut =
      "Pointer of struct Data::Interfaces::ITable must be null in order to avoid memory leaks!";
  constexpr std::string_view kNullText = "Pointer of char must not be null!";
  constexpr std::string_view kNoSize =
      "Size cannot be 0. We don't call strlen internally because data might not contain null "
      "terminator!";
  Ptr<ITable> used;
  ASSERT_TRUE(Data_CreateTable(used.Receive(), nullptr));
  ITable* usedTable = used.Get();
  const struct {
    const char* why;
    const char* content;
    std::uint64_t size;
    ITable** table;
    std::string_view failure;
  } cases[] = {
      {"no out-pointer", "x", 1, nullptr, kNullOut},
      {"an out-pointer in use", "x", 1, &usedTable, kUsedOut},
      {"no content", nullptr, 1, Ptr<ITable>().Receive(), kNullText},
      {"no size", "x", 0, Ptr<ITable>().Receive(), kNoSize},
  };
  for (const auto& c : cases) {
    Ptr<ITable> table;
    ITable** out = c.table == nullptr || c.table == &usedTable ? c.table : table.Receive();
    Ptr<IErrorCode> error;
    Ptr<IObjectList> problems;
    EXPECT_FALSE(Data_ParseCsv(c.content, c.size, out, error.Receive())) << c.why;
    EXPECT_EQ(MessageOf(error), c.failure) << c.why;
    EXPECT_FALSE(Data_ParseCsvWithSeparator(c.content, ",", out, c.size, error.Receive())) << c.why;
    EXPECT_EQ(MessageOf(error), c.failure) << c.why;
    EXPECT_FALSE(
        Data_ParseCsvWithErrors(c.content, out, problems.Receive(), c.size, 1, error.Receive()))
        << c.why;
    EXPECT_EQ(MessageOf(error), c.failure) << c.why;
    EXPECT_FALSE(problems) << c.why;
    EXPECT_FALSE(Data_ParseCsv(c.content, c.size, out, nullptr)) << c.why;
  }
  EXPECT_EQ(usedTable, used.Get());
}

TEST(CsvRead, RejectsBadSeparatorsAndLists) {
  Ptr<ITable> table;
  Ptr<IErrorCode> error;
  EXPECT_FALSE(Data_ParseCsvWithSeparator("x", nullptr, table.Receive(), 1, error.Receive()));
  EXPECT_EQ(MessageOf(error), "Pointer of char must not be null!");
  EXPECT_FALSE(Data_ParseCsvWithErrors("x", table.Receive(), nullptr, 1, 1, error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer to a pointer of struct Data::Interfaces::IObjectList must not be null! "
            "Address of return must be specified!");
  EXPECT_FALSE(table);
}

}  // namespace Data::tests
