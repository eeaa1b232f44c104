#include "CallersText.h"
#include "CsvSupport.h"
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
  const auto xml = New(Data_CreateXmlDocument);
  xml->SetContent("<a b=\"c\"/>", 10);
  const struct {
    const char* why;
    Variant cell;
    const char* text;
  } cases[] = {
      {"Null", Core::Null, ""},
      {"never written", Variant(), ""},
      {"smallest integer", INT64_MIN, "-9223372036854775808"},
      {"largest unsigned integer", UINT64_MAX, "18446744073709551615"},
      {"a double has six decimals", 1.5, "1.500000"},
      {"whatever its size", 1e20, "100000000000000000000.000000"},
      {"float", 0.1f, "0.100000"},
      {"bool", true, "true"},
      {"date-time", Date("2024-11-14T10:20:30.123"), "2024-11-14T10:20:30.123000000Z"},
      {"a null reference", NullReference(ValueType::DateTime), ""},
      {"a document is quoted as a text", JsonVariant("{\"a\":1}"), "\"{\"\"a\"\":1}\""},
      {"of either kind", xml, "\"<a b=\"\"c\"\"/>\""},
      {"an object of the caller's own without a text", Core::MakePtr<CallersText>(nullptr), "\"\""},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Write(MakeTable({"a", "b"}, {{c.cell, 1}}), ",", true),
              "a,b\n" + std::string(c.text) + ",1")
        << c.why;
  EXPECT_EQ(Write(MakeTable({"a"}, {{1.5}}), "."), "a\n1.500000") << "numbers are never quoted";
  EXPECT_EQ(Write(MakeTable({"a"}, {{Reference(ValueType::DateTime, Core::MakeString("x"))}})),
            "! Object does not implement Interfaces::IDateTime interface!");
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
