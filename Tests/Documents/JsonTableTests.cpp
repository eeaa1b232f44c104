#include "CallersText.h"
#include "DocumentSupport.h"
#include "SmallStack.h"
#include "Tables/CsvSupport.h"
#include "Tables/TableSupport.h"

namespace Data::tests {

namespace {

Ptr<ITable> TableOf(std::string_view json) {
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

/// The JSON of a value in the only cell of a table.
std::string JsonOf(const Variant& value) { return JsonOf(MakeTable({"x"}, {{value}})); }

}  // namespace

TEST(JsonToTable, ReadsEveryKindOfValue) {
  for (const Case& c : Cases("Json.txt", "table")) EXPECT_EQ(Show(c[0]), c[1]) << c.where;
}

TEST(JsonToTable, TellsColumnsAndRowsAsWritingCellsDoes) {
  const auto table =
      TableOf(R"([{"a":1,"b":null,"c":1},{"a":"x"},{},{"a":null,"c":null,"c":2.5}])");
  ASSERT_TRUE(table);
  EXPECT_EQ(ShowColumns(*table), "String? Null? Double?");
  EXPECT_EQ(ShowColumns(*TableOf(R"([{"a":1,"b":1},{"a":1}])")), "Int64 Int64")
      << "a missing member writes nothing";
  const int modified[] = {1, 1, 0, 1};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(table->GetRow(i)->IsModified(), modified[i]) << i;
}

TEST(JsonToTable, KeepsNestedValuesAndZeroCharacters) {
  const auto table = TableOf(R"([{"c":[1],"d":"a\u0000b"}])");
  const auto document = Core::GetJsonDocument(*table->GetCellAt(0, 0));
  EXPECT_TRUE(document->IsValid() && document->Equals(Json("[ 1.0 ]").Get()));
  EXPECT_EQ(Core::GetStringView(*table->GetCellAt(0, 1)), "a\0b"sv);
}

TEST(TableToJson, WritesEveryKindOfValue) {
  const Structures::_UUID uuid{0x01020304, 0x0506, 0x0708, {1, 2, 3, 4, 5, 6, 7, 8}};
  const auto some = Core::MakeString("some text in an object"), wide = Core::MakeString("");
  wide->SetWide(u"\u00e9 and more than fits", 20);
  const struct {
    const char* what;
    Variant value;
    std::string json;
  } cases[] = {
      {"Null", Core::Null, "null"},
      {"a null reference", NullReference(ValueType::String), "null"},
      {"a null reference of a number", NullReference(ValueType::Int64), "null"},
      {"a null address", Address(ValueType::Pointer, 0), "null"},
      {"an address", Address(ValueType::Pointer, 1), "\"\""},
      {"a zeroed record", Variant(), "\"\""},
      {"Int16", std::int16_t{-5}, "-5"},
      {"Byte", std::uint8_t{200}, "200"},
      {"Int64", INT64_MIN, "-9223372036854775808"},
      {"UInt64 by its bits", UINT64_MAX, "-1"},
      {"Int128 by its low word", ByValue(ValueType::Int128, 7, 9), "7"},
      {"Uuid by its first eight bytes", uuid, "506660481424032516"},
      {"an integer in reference form", Reference(ValueType::Int32, some), "! Must be value type!"},
      {"a Uuid in reference form", Reference(ValueType::Uuid, some), "! Must be value type!"},
      {"a double in reference form", Reference(ValueType::Double, some), "! Must be value type!"},
      {"a Bool in pointer form", Address(ValueType::Bool, 1), "! Must be value type!"},
      {"Double", 0.1, "0.1"},
      {"a whole Double", 100.0, "100.0"},
      {"Float, widened", 0.5f, "0.5"},
      {"its digits are those of the double", 0.1f, "0.10000000149011612"},
      {"negative zero", -0.0, "-0.0"},
      {"the largest Double", std::numeric_limits<double>::max(), "1.7976931348623157e308"},
      {"the smallest", 5e-324, "5e-324"},
      {"Bool", true, "true"},
      {"a short text", "a\"b\\c\n\x01", R"("a\"b\\c\n\u0001")"},
      {"a long text", some, R"("some text in an object")"},
      {"a wide text", wide, "\"\u00e9 and more than fits\""},
      {"an empty text", "", R"("")"},
      {"an object of a program's own without a text", Core::MakePtr<CallersText>(nullptr), R"("")"},
      {"text with a zero byte", "0123456789abcdef\0!"sv, R"("0123456789abcdef\u0000!")"},
      {"bytes that are no UTF-8", "\xC3(", "\"\xC3(\""},
      {"a nested document is text", Json("{\"a\": [1]}"), R"("{\"a\": [1]}")"},
      {"one without content", New(Data_CreateJsonDocument), R"("{}")"},
      {"DateTime", Date("2024-01-02"), R"("2024-01-02T12:00:00.000000000Z")"},
      {"an error", SomeError(),
       R"("Pointer to a pointer of struct Data::Interfaces::IVariantDictionary must not be null! Address of return must be specified!")"},
      {"not what its type says", Reference(ValueType::DateTime, some),
       "! Object does not implement Interfaces::IDateTime interface!"},
      {"NaN", std::nan(""), "! Column x holds a number that JSON cannot represent!"},
      {"an infinite Float", -std::numeric_limits<float>::infinity(),
       "! Column x holds a number that JSON cannot represent!"},
  };
  for (const auto& c : cases) {
    const std::string json = c.json.starts_with('!') ? c.json : "[{\"x\":" + c.json + "}]";
    EXPECT_EQ(JsonOf(c.value), json) << c.what;
  }
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

/// A CSV line of three cells as a JSON object.
std::string ObjectOf(std::string_view line) {
  std::string json = "{";
  for (const char name : {'a', 'b', 'c'}) {
    const std::string cell(line.substr(0, line.find(',')));
    line.remove_prefix(std::min(cell.size() + 1, line.size()));
    json += (name == 'a' ? "\""s : ",\""s) + name + "\":";
    json += cell.empty() ? "null" : name == 'b' ? "\"" + cell + "\"" : cell;
  }
  return json + "}";
}

TEST(TableWriting, SurvivesWhatACellDoesWhenItIsRead) {
  const struct {
    const char* what;
    void (*change)(Ptr<ITable>& table);
    std::vector<std::string> lines;
  } cases[] = {
      {"nothing", [](Ptr<ITable>&) {}, {"1,x,2", "3,text,4", "5,y,6"}},
      {"writes its cell",
       [](Ptr<ITable>& t) { t->GetRow(1)->SetCell(1, Given(Core::Null)); },
       {"1,x,2", "3,text,4", "5,y,6"}},
      {"its row", [](Ptr<ITable>& t) { t->RemoveRow(1); }, {"1,x,2", "3,text,", "5,y,6"}},
      {"the row before", [](Ptr<ITable>& t) { t->RemoveRow(0); }, {"1,x,2", "3,text,4", "5,y,6"}},
      {"its row and the row before",
       [](Ptr<ITable>& t) { t->RemoveRows(0, 2); },
       {"1,x,2", "3,text,", "5,y,6"}},
      {"the row behind", [](Ptr<ITable>& t) { t->RemoveRow(2); }, {"1,x,2", "3,text,4"}},
      {"all rows", [](Ptr<ITable>& t) { t->ClearRows(); }, {"1,x,2", "3,text,"}},
      {"a column before",
       [](Ptr<ITable>& t) { t->RemoveColumnAt(0); },
       {"1,x,2", "3,text,4", ",y,6"}},
      {"its column", [](Ptr<ITable>& t) { t->RemoveColumnAt(1); }, {"1,x,2", "3,text,4", "5,,6"}},
      {"adds a column", [](Ptr<ITable>& t) { t->AddColumn("d"); }, {"1,x,2", "3,text,4", "5,y,6"}},
      {"the table", [](Ptr<ITable>& t) { t.Reset(); }, {"1,x,2", "3,text,4", "5,y,6"}},
  };
  for (const auto& c : cases) {
    // Each way of writing gets a table of its own.
    const auto written = [&](auto write) {
      auto text = Core::MakePtr<CallersText>("text");
      auto table = MakeTable({"a", "b", "c"}, {{1, "x", 2}, {3, Variant(text), 4}, {5, "y", 6}});
      text->onRead = [&table, change = c.change, isDone = false]() mutable {
        if (!std::exchange(isDone, true)) change(table);
      };
      text.Reset();
      return write(table.Get());
    };
    std::string csv = "a,b,c\n", json = "[";
    for (const auto& line : c.lines) {
      csv += (json == "[" ? "" : "\n") + line;
      json += (json == "[" ? "" : ",") + ObjectOf(line);
    }
    EXPECT_EQ(written(CsvOf), csv) << c.what;
    EXPECT_EQ(written([](ITable* table) { return JsonOf(table); }), json + "]") << c.what;
    EXPECT_EQ(written([](ITable* table) { return JsonOf(table->GetRow(1)); }), ObjectOf(c.lines[1]))
        << c.what;
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
    const auto table = TableOf("[{\"a\":" + nested + ",\"b\":" + objects + "}]");
    ASSERT_TRUE(table);
    EXPECT_TRUE(Core::GetStringView(*table->GetCellAt(0, 0)) == nested);
    EXPECT_TRUE(Core::GetStringView(*table->GetCellAt(0, 1)) == objects);
    EXPECT_EQ(JsonOf(table).size(), nested.size() + objects.size() + 2 * 500'000 + 17);
    EXPECT_FALSE(TableOf(nested));
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
  const auto copy = TableOf(json);
  ASSERT_TRUE(copy);
  EXPECT_EQ(JsonOf(copy), json);
}

}  // namespace Data::tests
