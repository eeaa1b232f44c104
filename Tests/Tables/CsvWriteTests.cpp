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
