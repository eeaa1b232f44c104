#include "Tables/CsvSupport.h"
#include "Tables/TableSupport.h"

namespace Data::tests {

TEST(ValueType, IsDetectedFromTheText) {
  for (const Case& c : Cases("ValueTypes.txt", "types"))
    EXPECT_EQ(Core::GetValueTypeName(Data_DetectValueType(ExactCopy(c[0]).get(), c[0].size())),
              c[1])
        << c.where;
  EXPECT_EQ(Data_DetectValueType(nullptr, 0), ValueType::Unknown);
}

TEST(CsvRead, ReadsTextsAsTables) {
  for (const Case& c : Cases("Csv.txt", "read")) EXPECT_EQ(Show(ReadCsv(c[0])), c[1]) << c.where;
}

// Each text follows a preamble line of varying length, so that it starts at every position in the
// blocks and chunks of the scan.
TEST(CsvRead, ReadsTextsAtAnyPosition) {
  for (const Case& c : Cases("Csv.txt", "read")) {
    if (c[1].find(" / ") == c[1].npos || c[0].starts_with('\xEF')) continue;
    for (std::size_t size = 4000; size < 4100; ++size)
      ASSERT_EQ(Show(ReadCsv(std::string(size, 'x') + "\n" + c.fields[0])), c[1])
          << c.where << " behind " << size;
  }
}

TEST(CsvRead, TakesAnySeparator) {
  for (const Case& c : Cases("Csv.txt", "separated"))
    EXPECT_EQ(Show(ReadCsv(c[1], c.fields[0].c_str())), c[2]) << c.where;
}

TEST(CsvRead, LinesWithTooManyValues) {
  for (const Case& c : Cases("Csv.txt", "too many values")) {
    EXPECT_EQ(ReadCsv(c[0]).failure, c[1]) << c.where;
    const auto kept = ReadCsvWithErrors(c[0], 1), skipped = ReadCsvWithErrors(c[0], 0);
    EXPECT_EQ(Show(kept), c[2]) << c.where;
    EXPECT_EQ(Show(skipped), c[3]) << c.where;
    EXPECT_EQ(kept.problems, std::vector{c.fields[1]}) << c.where;
    EXPECT_EQ(skipped.problems, kept.problems) << c.where;
  }
}

TEST(CsvRead, ShortTextsStayInTheRecord) {
  const auto result = ReadCsv("a,b,c,d\n1234567890123456x,x234567890123456,x\0y,\"\""sv);
  std::string inlined;
  for (std::int32_t i = 0; i < 4; ++i)
    inlined += Core::HasForm(*result.table->GetCellAt(0, i), Core::StorageForm::Value) ? "y" : "n";
  EXPECT_EQ(inlined, "nyny") << "17 and 16 bytes, a zero byte that would end it, nothing";
}

TEST(CsvRead, NamesEmptyHeaderCells) {
  const auto result = ReadCsv("a,,\" \",\0x\n1,2,3,4"sv);
  ASSERT_TRUE(result.table);
  const std::string second = result.table->GetColumn(1)->GetName();
  const std::string fourth = result.table->GetColumn(3)->GetName();
  EXPECT_EQ(second.substr(0, 8), "Unnamed_");
  EXPECT_EQ(fourth.substr(0, 8), "Unnamed_") << "nothing before the zero byte";
  EXPECT_NE(second, fourth);
  _UUID uuid;
  EXPECT_TRUE(Data_UuidFromString(second.c_str() + 8, &uuid));
  EXPECT_STREQ(result.table->GetColumn(2)->GetName(), "\" \"");
}

TEST(CsvRead, OnlyTheFirstHundredLinesTellTheWidth) {
  std::string lines;
  for (int i = 0; i < 99; ++i) lines += "x\n";
  EXPECT_EQ(Show(ReadCsv(lines + "a,b\n1,2\n")), "a / b\n1 / 2");
  EXPECT_EQ(ReadCsv(lines + "x\na,b\n").failure,
            "Csv file does not have consistent usage of column separator between lines!, Columns 1 "
            "vs Values 2 at line 100");
}

TEST(CsvRead, TellsTheColumnsWhatTheyHold) {
  // The last value that is not Null gives the type, a missing value is an explicit Null.
  const auto result = ReadCsv("a,b,c,d\n1,x,,4\n1.5,2024-01-01,,5\n,y,\n");
  EXPECT_EQ(ShowColumns(*result.table), "Double? String Null? Int64?");
  EXPECT_EQ(result.table->GetRow(0)->IsModified(), 0);
}

/// Anything but one pass over the text would take minutes for one of these.
TEST(CsvRead, LongTextsOfOneKindTakeOnePass) {
  constexpr std::size_t kSize = 1 << 20;
  const std::string plain(kSize, 'x'), quotes(kSize, '"'), separators(kSize / 8, ',');
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
      {"a quote that is never closed", "a,b\n1,\"" + plain + separators, 2, 1},
      {"separators that quotes hide", "a,b\n1,\"" + separators + "\"", 2, 1},
  };
  for (const auto& c : cases) {
    const auto result = ReadCsv(c.text);
    ASSERT_TRUE(result.table) << c.why << ": " << result.failure;
    EXPECT_EQ(result.table->GetColumnCount(), c.columns) << c.why;
    EXPECT_EQ(result.table->GetRowCount(), c.rows) << c.why;
  }
  EXPECT_EQ(ReadCsv("a\n" + quotes + separators, "\",").table->GetRowCount(), 1);
}

/// The positions of one line fill many chunks.
TEST(CsvRead, FindsEveryValueOfAWideLine) {
  constexpr int kColumns = 20'000;
  std::string line;
  for (int i = 0; i < kColumns; ++i) line += std::to_string(i) + (i + 1 < kColumns ? "," : "\n");
  const auto table = ReadCsv(line + line + "1\n" + line).table;
  ASSERT_TRUE(table);
  ASSERT_EQ(table->GetRowCount(), 4);
  int wrong = 0;
  for (const std::int64_t row : {0, 1, 3})
    for (std::int32_t i = 0; i < kColumns; ++i)
      wrong += Core::ToInt64(*table->GetCellAt(row, i)) != i;
  EXPECT_EQ(wrong, 0);
}

}  // namespace Data::tests
