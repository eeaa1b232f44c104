#include "CsvSupport.h"
#include "TableSupport.h"

namespace Data::tests {

using Core::IErrorCode;
using Core::Ptr;
using Core::Variant;
using Interfaces::IDateTime;
using Interfaces::IString;
using Interfaces::ITable;

namespace {

/// The text, or "! " and the failure.
std::string Write(ITable* table, const char* separator = ",", bool alwaysQuote = false) {
  Ptr<IString> text;
  Ptr<IErrorCode> error;
  if (!Data_ConvertTableToCsv(table, separator, text.Receive(), alwaysQuote, error.Receive()))
    return "! " + MessageOf(error);
  return std::string(Core::Utf8View(*text));
}

}  // namespace

TEST(CsvWrite, WritesTextCells) {
  const struct {
    const char* why;
    const char *cell, *separator;
    bool alwaysQuote;
    const char* text;
  } cases[] = {
      {"plain", "x y", ",", false, "x y"},
      {"with the separator", "x,y", ",", false, "\"x,y\""},
      {"with part of the separator", "x:y", "::", false, "x:y"},
      {"with a long separator", "x::y", "::", false, "\"x::y\""},
      {"empty counts as a comma", "x,y", "", false, "\"x,y\""},
      {"quotes are doubled, not wrapped", "say \"no\"", ",", false, "say \"\"no\"\""},
      {"quotes and separator", "\"a\",b", ",", false, "\"\"\"a\"\",b\""},
      {"a line break is not wrapped", "x\ny", ",", false, "x\ny"},
      {"always quoted", "x", ",", true, "\"x\""},
      {"always quoted, empty", "", ",", true, "\"\""},
      {"longer than a record holds", "0123456789,0123456789", ",", false,
       "\"0123456789,0123456789\""},
  };
  for (const auto& c : cases) {
    const auto table = MakeTable({"a"}, {{c.cell}});
    EXPECT_EQ(Write(table.Get(), c.separator, c.alwaysQuote), std::string("a\n") + c.text) << c.why;
  }
}

TEST(CsvWrite, WritesOtherCellsAsTheirDisplayText) {
  Ptr<IDateTime> dateTime;
  Data_CreateDateTimeFromIso8601("2024-11-14T10:20:30.123", dateTime.Receive(), nullptr);
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
      {"date-time", dateTime, "2024-11-14T10:20:30.123000000Z"},
  };
  for (const auto& c : cases) {
    const auto table = MakeTable({"a", "b"}, {{c.cell, 1}});
    EXPECT_EQ(Write(table.Get(), ",", true), "a,b\n" + std::string(c.text) + ",1") << c.why;
  }
  // Even the separator in such a text changes nothing.
  EXPECT_EQ(Write(MakeTable({"a"}, {{1.5}}).Get(), "."), "a\n1.500000");
}

TEST(CsvWrite, SeparatesRowsAndNamesColumns) {
  EXPECT_EQ(Write(MakeTable({"a", "b"}).Get()), "a,b\n") << "the header alone keeps its line end";
  EXPECT_EQ(Write(MakeTable({}).Get()), "\n") << "no columns";
  EXPECT_EQ(Write(MakeTable({"a", "b"}, {{1, 2}, {3}, {4, 5}}).Get(), " | "),
            "a | b\n1 | 2\n3 | \n4 | 5")
      << "no line end behind the last row";
  EXPECT_EQ(Write(MakeTable({"a,b", "\"c\""}, {{1, 2}}).Get(), ",", true), "a,b,\"c\"\n1,2")
      << "names are never quoted";
}

TEST(CsvWrite, ReadsBackWhatItWrote) {
  const char* text =
      "id,name,at,share\n1,\"x, \"\"y\"\" z\",2024-11-14T10:20:30.123000000Z,0.250000\n"
      "2,,2024-11-14T12:00:00.000000000Z,-1.500000";
  const auto table = ReadCsv(text).table;
  EXPECT_EQ(Write(table.Get()), text);
}

TEST(CsvWrite, RejectsBadArguments) {
  const auto table = MakeTable({"a"}, {{1}});
  EXPECT_EQ(Write(nullptr), "! Pointer of struct Data::Interfaces::ITable must not be null!");
  EXPECT_EQ(Write(table.Get(), nullptr), "! Pointer of char must not be null!");
  Ptr<IErrorCode> error;
  EXPECT_FALSE(Data_ConvertTableToCsv(table.Get(), ",", nullptr, false, error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer to a pointer of struct Data::Interfaces::IString must not be null! Address of "
            "return must be specified!");
  Ptr<IString> used = Core::MakeString("x");
  IString* usedString = used.Get();
  EXPECT_FALSE(Data_ConvertTableToCsv(table.Get(), ",", &usedString, false, error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer of struct Data::Interfaces::IString must be null in order to avoid memory "
            "leaks!");
}

TEST(CsvWrite, FailsForACellThatIsNotWhatItsTypeSays) {
  const auto table = MakeTable({"a"}, {{1}});
  *table->GetRow(0)->GetCellAt(0) = Core::MakeReference(Core::ValueType::DateTime, nullptr);
  EXPECT_EQ(Write(table.Get()), "a\n") << "a null reference has no text";
  const Ptr<IString> text = Core::MakeString("x");
  *table->GetRow(0)->GetCellAt(0) =
      Core::MakeReference(Core::ValueType::DateTime, Ptr<IString>(text).Detach());
  EXPECT_EQ(Write(table.Get()), "! Object does not implement Interfaces::IDateTime interface!");
}

}  // namespace Data::tests
