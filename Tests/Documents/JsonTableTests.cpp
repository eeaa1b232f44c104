#include "DocumentSupport.h"
#include "Records.h"
#include "Script.h"
#include "SmallStack.h"
#include "Tables/CsvSupport.h"
#include "Tables/TableSupport.h"

namespace Data::tests {

namespace {

Ptr<ITable> ReadTable(std::string_view json) {
  Ptr<ITable> table;
  Data_JsonToTable(Json(json).Get(), table.Receive(), nullptr);
  return table;
}

/// As `ShowTable`, with the name of the table before it, or "! " and the failure.
std::string Show(std::string_view json) {
  Ptr<ITable> table;
  const auto document = Json(json);
  const std::string failure = Failure(
      [&](IErrorCode** error) { return Data_JsonToTable(document.Get(), table.Receive(), error); });
  return table ? table->GetHeader()->GetName() + ": "s + ShowTable(*table) : "! " + failure;
}

template <class Source>
std::string Written(bool (*write)(Source*, IJsonDocument**, IErrorCode**), Source* source) {
  Ptr<IJsonDocument> document;
  Ptr<IErrorCode> error;
  if (!write(source, document.Receive(), error.Receive())) return "! " + MessageOf(error);
  EXPECT_TRUE(document->IsValid());
  return std::string(Core::Utf8View(*document->GetContent()));
}
std::string JsonOf(ITable* table) { return Written(Data_TableToJson, table); }
std::string JsonOf(IRow* row) { return Written(Data_TableRowToJson, row); }
std::string JsonOf(const Ptr<ITable>& table) { return JsonOf(table.Get()); }

std::string CsvOf(ITable* table) {
  Ptr<IString> text;
  EXPECT_TRUE(Data_ConvertTableToCsv(table, ",", text.Receive(), false, nullptr));
  return text->GetUtf8();
}

}  // namespace

TEST(JsonToTable, ReadsEveryKindOfValue) {
  for (const Case& c : Cases("Json.txt", "table")) EXPECT_EQ(Show(c[0]), c[1]) << c.where;
}

TEST(JsonToTable, TellsColumnsAndRowsAsWritingCellsDoes) {
  const auto table =
      ReadTable(R"([{"a":1,"b":null,"c":1},{"a":"x"},{},{"a":null,"c":null,"c":2.5}])");
  ASSERT_TRUE(table);
  EXPECT_EQ(ShowColumns(*table), "String? Null? Double?");
  EXPECT_EQ(ShowColumns(*ReadTable(R"([{"a":1,"b":1},{"a":1}])")), "Int64 Int64")
      << "a missing member writes nothing";
  const int modified[] = {1, 1, 0, 1};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(table->GetRow(i)->IsModified(), modified[i]) << i;
}

TEST(JsonToTable, KeepsNestedValuesAndZeroCharacters) {
  const auto table = ReadTable(R"([{"c":[1],"d":"a\u0000b"}])");
  const auto document = Core::GetJsonDocument(*table->GetCellAt(0, 0));
  EXPECT_TRUE(document->IsValid() && document->Equals(Json("[ 1.0 ]").Get()));
  EXPECT_EQ(Core::GetStringView(*table->GetCellAt(0, 1)), "a\0b"sv);
}

TEST(TableToJson, WritesEveryKindOfValue) {
  for (const Case& c : Cases("Json.txt", "cells"))
    EXPECT_EQ(JsonOf(MakeTable({"x"}, {{RecordOf(c[0])}})),
              c[1].starts_with('!') ? c[1] : "[{\"x\":" + c.fields[1] + "}]")
        << c.where;
  const Variant nullText(Core::MakePtr<CallersText>(nullptr));
  EXPECT_EQ(JsonOf(MakeTable({"x"}, {{nullText}})), R"([{"x":""}])");
}

TEST(TableToJson, WritesTheShortestDigits) {
  std::mt19937_64 random(11);
  const auto table = MakeTable({"x"});
  std::string expected = "[";
  for (int i = 0; i < 20'000; ++i) {
    // Decimal numbers of up to 16 digits, with up to nine decimals.
    const double value = static_cast<double>(static_cast<std::int64_t>(random()) >> (11 + i % 53)) /
                         std::pow(10, i % 10);
    const Variant cell(value);
    table->AddRow(&cell, 1);
    char digits[64];
    const auto format = std::fabs(value) < 1e-6 && value != 0 ? std::chars_format::scientific
                                                              : std::chars_format::fixed;
    std::string text(digits, std::to_chars(digits, std::end(digits), value, format).ptr);
    if (text.find_first_of(".e") == text.npos) text += ".0";
    if (const auto zero = text.find("e-0"); zero != text.npos) text.erase(zero + 2, 1);
    expected += (i == 0 ? "{\"x\":" : ",{\"x\":") + text + "}";
  }
  EXPECT_TRUE(JsonOf(table) == expected + "]");
}

TEST(TableToJson, EscapesCharactersAnywhereInATextOfAnyLength) {
  const auto table = MakeTable({"a", "b"});
  std::string expected = "[";
  for (std::size_t size = 1; size <= 50; ++size)
    for (std::size_t i = 0; i < size; ++i)
      for (const auto& [c, escaped] : {std::pair{'"', "\\\""},
                                       {'\\', "\\\\"},
                                       {'\x1F', "\\u001F"},
                                       {' ', " "},
                                       {'\x7F', "\x7F"},
                                       {'\xFF', "\xFF"}}) {
        std::string text(size, 'x');
        text[i] = c;
        const Variant cells[] = {Variant(text), Variant(Core::MakeString(text))};
        table->AddRow(cells, 2);
        text.replace(i, 1, escaped);
        expected += "{\"a\":\"" + text + "\",\"b\":\"" + text + "\"},";
      }
  expected.back() = ']';
  EXPECT_TRUE(JsonOf(table) == expected);
}

TEST(TableToJson, WritesRowsWithAllColumns) {
  const auto table = MakeTable({"a", "b \"quoted\"\n"}, {{1, 2}, {3}, {}});
  EXPECT_EQ(JsonOf(table), R"([{"a":1,"b \"quoted\"\n":2},{"a":3,"b \"quoted\"\n":null},)"
                           R"({"a":null,"b \"quoted\"\n":null}])");
  EXPECT_EQ(JsonOf(table->GetRow(1)), R"({"a":3,"b \"quoted\"\n":null})");
  EXPECT_EQ(JsonOf(MakeTable({"a"})), "[]");
  EXPECT_EQ(JsonOf(MakeTable({})), "[]");
  table->RemoveColumnAt(1);
  table->RemoveColumnAt(0);
  EXPECT_EQ(JsonOf(table), "[{},{},{}]");
  EXPECT_EQ(JsonOf(table->GetRow(0)), "{}");
  const Ptr<IRow> removed(table->GetRow(0));
  table->ClearRows();
  EXPECT_EQ(JsonOf(removed.Get()), "! "s + kNullTable);
}

TEST(TableWriting, SurvivesWhatACellDoesWhenItIsRead) {
  for (const Case& c : Cases("Json.txt", "changes while a cell is read")) {
    // Each way of writing gets a table of its own.
    const auto written = [&](auto write) {
      auto text = Core::MakePtr<CallersText>("text");
      Scene scene(MakeTable({"a", "b", "c"}, {{1, "x", 2}, {3, Variant(text), 4}, {5, "y", 6}}));
      text->onRead = [&scene, script = c.fields[0]]() mutable {
        scene.Run(std::exchange(script, ""));
      };
      text.Reset();
      return write(static_cast<ITable*>(scene.self));
    };
    EXPECT_EQ(written(CsvOf), "a,b,c\n" + c.fields[1]) << c.where;
    EXPECT_EQ(written([](ITable* table) { return JsonOf(table); }), c[2]) << c.where;
    EXPECT_EQ(written([](ITable* table) { return JsonOf(table->GetRow(1)); }), c[3]) << c.where;
  }
}

TEST(TableWriting, LeavesOutRowsThatAreAddedMeanwhile) {
  const auto text = Core::MakePtr<CallersText>("text");
  const auto table = MakeTable({"a"}, {{Variant(text)}});
  text->onRead = [&] {
    if (table->GetRowCount() < 100) table->AddRow(table->GetCellAt(0, 0), 1);
  };
  EXPECT_EQ(CsvOf(table.Get()), "a\ntext");
  table->ClearRows();
  table->AddRow(Given(text), 1);
  EXPECT_EQ(JsonOf(table), R"([{"a":"text"}])");
}

TEST(JsonTable, TakesNestingOfAnyDepth) {
  OnSmallStack([] {
    const std::string nested = Nested("[", "", "]", 500'000);
    const std::string objects = Nested("{\"a\":", "1", "}", 500'000);
    const auto table = ReadTable("[{\"a\":" + nested + ",\"b\":" + objects + "}]");
    ASSERT_TRUE(table);
    EXPECT_TRUE(Core::GetStringView(*table->GetCellAt(0, 0)) == nested);
    EXPECT_TRUE(Core::GetStringView(*table->GetCellAt(0, 1)) == objects);
    EXPECT_EQ(JsonOf(table).size(), nested.size() + objects.size() + 2 * 500'000 + 17);
    EXPECT_FALSE(ReadTable(nested));
  });
}

TEST(JsonTable, RandomValuesSurviveTheRoundTrip) {
  std::mt19937_64 random(7);
  const auto table = MakeTable({"integer", "real", "text", "flag"});
  for (int i = 0; i < 2000; ++i) {
    std::string text(random() % 40, '\0');
    for (char& c : text) c = static_cast<char>(random() % 128);
    const auto real = std::bit_cast<double>(random());
    const Variant cells[] = {static_cast<std::int64_t>(random() >> random() % 64),
                             std::isfinite(real) ? real : 0.5, "x" + text, random() % 2 == 0};
    table->AddRow(cells, std::size(cells));
  }
  const std::string json = JsonOf(table);
  const auto copy = ReadTable(json);
  ASSERT_TRUE(copy);
  EXPECT_EQ(JsonOf(copy), json);
}

}  // namespace Data::tests
