#include <bit>
#include <charconv>
#include <cmath>
#include <random>

#include "CsvSupport.h"
#include "Script.h"
#include "TableSupport.h"

namespace Data::tests {

namespace {

/// The text, or "! " and the failure.
std::string Write(const Ptr<ITable>& table, const char* separator = ",", bool alwaysQuote = false) {
  Ptr<IString> text;
  Ptr<IErrorCode> error;
  if (!Data_ConvertTableToCsv(table.Get(), separator, text.Receive(), alwaysQuote, error.Receive()))
    return "! " + MessageOf(error);
  return std::string(Core::Utf8View(*text));
}

}  // namespace

TEST(CsvWrite, WritesTextCells) {
  for (const Case& c : Cases("Csv.txt", "write"))
    EXPECT_EQ(Write(MakeTable({"a"}, {{c.fields[0]}}), c.fields[1].c_str(), c[2] == "quoted"),
              "a\n" + c.fields[3])
        << c.where;
}

TEST(CsvWrite, WritesOtherCellsAsTheirDisplayText) {
  for (const Case& c : Cases("Csv.txt", "write records"))
    EXPECT_EQ(Write(MakeTable({"a", "b"}, {{ValueOf(c.fields[0]), 1}}), ",", true), c[1])
        << c.where;
  EXPECT_EQ(Write(MakeTable({"a"}, {{1.5}}), "."), "a\n1.500000") << "numbers are never quoted";
}

TEST(CsvWrite, RoundsNumbersToSixDecimalsAsPrintfDoes) {
  std::mt19937_64 random(7);
  const auto table = MakeTable({"x"});
  std::string expected = "x";
  const auto add = [&](double value) {
    char digits[400];
    const auto format = std::chars_format::fixed;
    char* const end = std::to_chars(digits, std::end(digits), value, format, 6).ptr;
    expected += "\n" + std::string(digits, end);
    const Variant cell(value);
    table->AddRow(&cell, 1);
  };
  const auto addNeighbours = [&](double value) {
    for (const double bound : {0.0, value, 1e308}) add(std::nextafter(value, bound));
    add(-value);
  };
  for (int i = 0; i < 20'000; ++i) {
    const auto bits = random();
    const auto number = static_cast<std::int64_t>(bits) >> (11 + i % 53);
    add(std::bit_cast<double>(bits));                           // any exponent
    add(static_cast<double>(number) / 1e7);                     // as measured
    addNeighbours(static_cast<double>(number) / 1e6 + 0.5e-6);  // nearly half
    addNeighbours(static_cast<double>(number | 1) / 128);       // exactly half: x.xxxxxx5
    addNeighbours(std::floor(std::fabs(static_cast<double>(number)) / 1e6) + 0.9999995);  // carries
  }
  for (int exponent = -1074; exponent < 1024; ++exponent) addNeighbours(std::ldexp(1, exponent));
  for (const double value : {0.0, -0.0, -1e-9, HUGE_VAL, -HUGE_VAL, std::nan("")}) add(value);
  EXPECT_TRUE(Write(table) == expected);
}

TEST(CsvWrite, FindsQuotesAndSeparatorsAnywhereInATextOfAnyLength) {
  const auto table = MakeTable({"inline if it fits", "object"});
  std::string expected = "inline if it fits,object";
  for (std::size_t size = 1; size <= 50; ++size)
    for (std::size_t i = 0; i < size; ++i)
      for (const char c : {',', '"', ';', '\n'}) {
        std::string text(size, 'x');
        text[i] = c;
        const Variant cells[] = {Variant(text), Variant(Core::MakeString(text))};
        table->AddRow(cells, 2);
        if (c == '"') text.insert(i, 1, c);
        if (c == ',') text = '"' + text + '"';
        expected += "\n" + text + "," + text;
      }
  EXPECT_TRUE(Write(table) == expected);
}

TEST(CsvWrite, SeparatesRowsAndNamesColumns) {
  EXPECT_EQ(Write(MakeTable({"a", "b"})), "a,b\n") << "the header alone keeps its line end";
  EXPECT_EQ(Write(MakeTable({})), "\n") << "no columns";
  EXPECT_EQ(Write(MakeTable({"a", "b"}, {{1, 2}, {3}, {4, 5}}), " | "), "a | b\n1 | 2\n3 | \n4 | 5")
      << "no line end behind the last row";
  EXPECT_EQ(Write(MakeTable({"a,b", "\"c\""}, {{1, 2}}), ",", true), "a,b,\"c\"\n1,2")
      << "names are never quoted";
}

TEST(CsvWrite, ReadsBackWhatItWrote) {
  const char* text =
      "id,name,at,share\n1,\"x, \"\"y\"\" z\",2024-11-14T10:20:30.123000000Z,0.250000\n"
      "2,,2024-11-14T12:00:00.000000000Z,-1.500000";
  EXPECT_EQ(Write(ReadCsv(text).table), text);
}

}  // namespace Data::tests
