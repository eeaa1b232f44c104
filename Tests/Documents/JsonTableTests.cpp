#include "DocumentSupport.h"
#include "SmallStack.h"
#include "Tables/CsvSupport.h"
#include "Tables/TableSupport.h"

namespace Data::tests {

using Core::ValueType;

namespace {

struct ReadResult {
  Ptr<ITable> table;
  std::string failure;
};

ReadResult ReadTable(const Ptr<IJsonDocument>& document) {
  ReadResult result;
  Ptr<IErrorCode> error;
  const bool succeeded = Data_JsonToTable(document.Get(), result.table.Receive(), error.Receive());
  EXPECT_EQ(succeeded, static_cast<bool>(result.table));
  EXPECT_EQ(succeeded, !error);
  result.failure = MessageOf(error);
  return result;
}

Ptr<ITable> TableOf(std::string_view json) { return ReadTable(Json(json)).table; }

/// As `ShowTable`, with the name of the table before it and documents as their text.
std::string Show(const ReadResult& result) {
  if (!result.table) return "! " + result.failure;
  ITable& table = *result.table;
  std::string text = table.GetHeader()->GetName() + ": "s + NamesOf(table);
  for (std::int64_t row = 0; row < table.GetRowCount(); ++row)
    for (std::int32_t i = 0; i < table.GetColumnCount(); ++i) {
      const auto& cell = *table.GetRow(row)->GetCellAt(i);
      const ValueType type = Core::TypeOf(cell);
      const bool isPlain = type == ValueType::Bool || type == ValueType::JsonDocument;
      text += (i == 0 ? "\n" : " | ") + (isPlain ? Core::ToText(cell) : ShowCell(cell));
    }
  return text;
}

std::string Written(bool succeeded, const Ptr<IJsonDocument>& document,
                    const Ptr<IErrorCode>& error) {
  EXPECT_EQ(succeeded, static_cast<bool>(document));
  EXPECT_EQ(succeeded, !error);
  if (!succeeded) return "! " + MessageOf(error);
  EXPECT_TRUE(document->IsValid());
  return std::string(Core::Utf8View(*document->GetContent()));
}

std::string JsonOf(const Ptr<ITable>& table) {
  Ptr<IJsonDocument> document;
  Ptr<IErrorCode> error;
  const bool succeeded = Data_TableToJson(table.Get(), document.Receive(), error.Receive());
  return Written(succeeded, document, error);
}

std::string JsonOf(IRow* row) {
  Ptr<IJsonDocument> document;
  Ptr<IErrorCode> error;
  const bool succeeded = Data_TableRowToJson(row, document.Receive(), error.Receive());
  return Written(succeeded, document, error);
}

/// The JSON of a value in the only cell of a table.
std::string JsonOf(const Variant& value) { return JsonOf(MakeTable({"x"}, {{value}})); }

}  // namespace

TEST(JsonToTable, ReadsEveryKindOfValue) {
  const struct {
    const char* what;
    std::string_view json;
    std::string table;
  } cases[] = {
      {"an empty array", " [ ] ", "JsonArray: "},
      {"an object", R"({"a":1,"b":"x"})", "JsonObject: a b\n1 | 'x'"},
      {"members that only some objects have", R"([{"a":1},{"b":true},{"a":2,"b":false}])",
       "JsonArray: a b\n1 | ~\n~ | true\n2 | false"},
      {"members in another order", R"([{"a":1,"b":2,"c":3},{"c":6,"a":4,"b":5},{"b":8,"c":9}])",
       "JsonArray: a b c\n1 | 2 | 3\n4 | 5 | 6\n~ | 8 | 9"},
      {"an object without members after others", R"([{"a":1},{},{"a":2}])",
       "JsonArray: a\n1\n~\n2"},
      {"a repeated member: the last one", R"([{"a":1,"b":"0123456789abcdefg","a":"x","b":null}])",
       "JsonArray: a b\n'x' | ~"},
      {"an empty name", R"([{"":1}])", "JsonArray: \n1"},
      {"names end at their first zero character", R"([{"a\u0000x":1,"a":2,"\u0000":3}])",
       "JsonArray: a \n2 | 3"},
      {"an integer alone", "42", "JsonValue: Value\n42"},
      {"null alone", "null", "JsonValue: Value\n~"},
      {"a truth value alone", "\xEF\xBB\xBFtrue", "JsonValue: Value\ntrue"},
      {"integers to the ends of 64 bits",
       "[{\"a\":-9223372036854775808,\"b\":9223372036854775807}]",
       "JsonArray: a b\n-9223372036854775808 | 9223372036854775807"},
      {"doubles", "[{\"a\":1.0,\"b\":-1e3,\"c\":0.1,\"d\":18446744073709551616}]",
       "JsonArray: a b c d\n1f | -1000f | 0.1f | 18446744073709551616f"},
      {"texts short and long",
       R"([{"a":"0123456789abcdef","b":"0123456789abcdefg","c":"\u00e9\n"}])",
       "JsonArray: a b c\n'0123456789abcdef' | '0123456789abcdefg' | '\u00e9\n'"},
      {"text with a zero character", R"(["x"])",
       "! "
       "Object in the array is not of the type object! Data structure is inconsistent across array!"},
      {"nested values", R"([{"a":[ 1, {"b" : []} ],"c":{ }, "d" : {"e":"\u0041\n", "f":1e2}}])",
       R"(JsonArray: a c d)"
       "\n"
       R"([1,{"b":[]}] | {} | {"e":"A\n","f":100.0})"},
      {"an unsigned integer within a nested value", R"([{"a":[18446744073709551615]}])",
       "JsonArray: a\n[18446744073709551615]"},
  };
  for (const auto& c : cases) EXPECT_EQ(Show(ReadTable(Json(c.json))), c.table) << c.what;
}

TEST(JsonToTable, RecognisesDates) {
  const struct {
    const char* what;
    std::string_view text, cell;
  } cases[] = {
      {"a date", "2024-01-02", "@2024-01-02T12:00:00.000"},
      {"a date and time", "2024-11-14T10:20:30.123Z", "@2024-11-14T10:20:30.123"},
      {"a space instead of the T", "2024-11-14 10:20", "@2024-11-14T10:20:00.000"},
      {"an hour and minute", "T10:20", "@0001-01-01T10:20:00.000"},
      {"a time with seconds has two colons and no dashes", "T10:20:30", "'T10:20:30'"},
      {"digits alone", "12345", "'12345'"},
      {"a year and month", "2024-05", "'2024-05'"},
      {"a month that is none", "2024-00-10", "'2024-00-10'"},
      {"space before it", " 2024-01-02", "' 2024-01-02'"},
      {"space behind it is read over", "2024-01-02 ", "@2024-01-02T12:00:00.000"},
      {"36 characters", "2024-11-14T10:20:30.123456789Z      ", "@2024-11-14T10:20:30.123"},
      {"37 characters", "2024-11-14T10:20:30.123456789Z       ",
       "'2024-11-14T10:20:30.123456789Z       '"},
      {"nothing", "", "''"},
      {"a negative year", "-2024-01-02", "'-2024-01-02'"},
  };
  for (const auto& c : cases) {
    const auto table = TableOf("\"" + std::string(c.text) + "\"");
    ASSERT_TRUE(table) << c.what;
    EXPECT_EQ(ShowCell(*table->GetCellAt(0, 0)), c.cell) << c.what;
  }
}

TEST(JsonToTable, FailsWithoutATable) {
  const std::string inconsistent =
      "Object in the array is not of the type object! Data structure is inconsistent across array!";
  const struct {
    const char* what;
    std::string_view json;
    std::string failure;
  } cases[] = {
      {"not JSON", "[1,", "JsonDocument content is not valid"},
      {"a number after objects", R"([{"a":"0123456789abcdefg","b":[1]},2])", inconsistent},
      {"an array", "[[]]", inconsistent},
      {"null", "[null]", inconsistent},
      {"an unsigned integer that is no object either", "[18446744073709551615]", inconsistent},
      {"an unsigned integer alone", "18446744073709551615", "Unsupported variant type"},
      {"one as a member", R"([{"a":"0123456789abcdefg","b":9223372036854775808}])",
       "Unsupported variant type"},
      {"an object without members alone", "{}",
       "Table JsonObject must contain at least one column before you insert new row!"},
      {"one before all others", R"([{},{"a":1}])",
       "Table JsonArray must contain at least one column before you insert new row!"},
  };
  for (const auto& c : cases) EXPECT_EQ(ReadTable(Json(c.json)).failure, c.failure) << c.what;
}

TEST(JsonToTable, ChecksItsArguments) {
  const auto document = Json("[]"), invalid = Json("[");
  const auto held = MakeTable({});
  ITable* out = held.Get();
  ITable* null = nullptr;
  const struct {
    IJsonDocument* document;
    ITable** out;
    const char* message;
  } cases[] = {
      {nullptr, nullptr, "Pointer of struct Data::Interfaces::IJsonDocument must not be null!"},
      {invalid.Get(), nullptr,
       "Pointer to a pointer of struct Data::Interfaces::ITable must not be null! Address of "
       "return must be specified!"},
      {document.Get(), &out,
       "Pointer of struct Data::Interfaces::ITable must be null in order to avoid memory leaks!"},
  };
  for (const auto& c : cases) {
    Ptr<IErrorCode> error;
    EXPECT_FALSE(Data_JsonToTable(c.document, c.out, error.Receive()));
    EXPECT_EQ(MessageOf(error), c.message);
    EXPECT_EQ(error->GetCode(), 2u);
    EXPECT_FALSE(Data_JsonToTable(c.document, c.out, nullptr));
  }
  EXPECT_EQ(out, held.Get());
  EXPECT_FALSE(Data_JsonToTable(Json("1 2").Get(), &null, nullptr));
  EXPECT_EQ(null, nullptr);
}

TEST(JsonToTable, FailsForContentChangedBehindTheDocument) {
  const auto document = Json("[]");
  document->GetContent()->SetUtf8("[", 1);
  EXPECT_EQ(ReadTable(document).failure, "Json document is not valid!");
}

TEST(JsonToTable, TellsColumnsAndRowsAsWritingCellsDoes) {
  const auto table =
      TableOf(R"([{"a":1,"b":null,"c":1},{"a":"x"},{},{"a":null,"c":null,"c":2.5}])");
  ASSERT_TRUE(table);
  const struct {
    const char* name;
    ValueType type;
    int hasSeenNull;
  } columns[] = {
      {"a", ValueType::String, 1}, {"b", ValueType::Null, 1}, {"c", ValueType::Double, 1}};
  for (const auto& c : columns) {
    EXPECT_EQ(table->GetColumnByName(c.name)->GetType(), c.type) << c.name;
    EXPECT_EQ(table->GetColumnByName(c.name)->HasSeenNull(), c.hasSeenNull) << c.name;
  }
  const auto unseen = TableOf(R"([{"a":1,"b":1},{"a":1}])");
  EXPECT_EQ(unseen->GetColumnByName("b")->HasSeenNull(), 0) << "a missing member writes nothing";
  const int modified[] = {1, 1, 0, 1};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(table->GetRow(i)->IsModified(), modified[i]) << i;
}

TEST(JsonToTable, CellsOwnWhatTheyHold) {
  const auto table =
      TableOf(R"([{"a":"0123456789abcdefg","b":"2024-01-02","c":[1],"d":"a\u0000b"}])");
  ASSERT_TRUE(table);
  const Structures::_VARIANT* const cells = table->GetRow(0)->GetCellAt(0);
  EXPECT_EQ(ReferencesTo(Core::ToStringObject(cells[0])), 2u);
  EXPECT_EQ(ReferencesTo(Core::GetDateTime(cells[1])), 2u);
  const auto document = Core::GetJsonDocument(cells[2]);
  EXPECT_EQ(ReferencesTo(document), 2u);
  EXPECT_TRUE(document->IsValid() && document->Equals(Json("[ 1.0 ]").Get()));
  EXPECT_EQ(Core::GetStringView(cells[3]), "a\0b"sv);
}

TEST(TableToJson, WritesEveryKindOfValue) {
  const Structures::_UUID uuid{0x01020304, 0x0506, 0x0708, {1, 2, 3, 4, 5, 6, 7, 8}};
  const auto some = Core::MakeString("some text in an object");
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
      {"an empty text", "", R"("")"},
      {"text with a zero byte", "0123456789abcdef\0!"sv, R"("0123456789abcdef\u0000!")"},
      {"bytes that are no UTF-8", "\xC3(", "\"\xC3(\""},
      {"a nested document is text", Json("{\"a\": [1]}"), R"("{\"a\": [1]}")"},
      {"one without content", New(Data_CreateJsonDocument), R"("{}")"},
      {"DateTime",
       TableOf("\"2024-01-02\"")->GetCellAt(0, 0)
           ? Variant(*TableOf("\"2024-01-02\"")->GetCellAt(0, 0))
           : Variant(),
       R"("2024-01-02T12:00:00.000000000Z")"},
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

TEST(TableToJson, WritesTheStoredTextWhateverItsEncoding) {
  const auto wide = Core::MakeString("");
  wide->SetWide(u"\u00e9 and more than fits", 20);
  EXPECT_EQ(JsonOf(Variant(wide)), "[{\"x\":\"\u00e9 and more than fits\"}]");
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
}

TEST(TableToJson, ChecksItsArguments) {
  const auto table = MakeTable({"a"}, {{1}});
  const auto document = Json("1");
  IJsonDocument* out = document.Get();
  Ptr<IErrorCode> error;
  const std::string used =
      "Pointer of struct Data::Interfaces::IJsonDocument must be null in order to avoid memory "
      "leaks!";
  EXPECT_FALSE(Data_TableToJson(nullptr, &out, error.Receive()));
  EXPECT_EQ(MessageOf(error), "Pointer of struct Data::Interfaces::ITable must not be null!");
  EXPECT_FALSE(Data_TableRowToJson(nullptr, &out, error.Receive()));
  EXPECT_EQ(MessageOf(error), "Pointer of struct Data::Interfaces::IRow must not be null!");
  EXPECT_FALSE(Data_TableToJson(table.Get(), &out, error.Receive()));
  EXPECT_EQ(MessageOf(error), used);
  EXPECT_FALSE(Data_TableRowToJson(table->GetRow(0), &out, error.Receive()));
  EXPECT_EQ(MessageOf(error), used);
  EXPECT_EQ(out, document.Get());
  const Ptr<IRow> removed(table->GetRow(0));
  table->ClearRows();
  EXPECT_EQ(JsonOf(removed.Get()),
            "! Null pointer exception! Interface is not accessible: struct "
            "Data::Interfaces::ITable");
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
  const auto randomDouble = [&] {
    const auto value = std::bit_cast<double>(random());
    return std::isfinite(value) ? value : 0.5;
  };
  const auto table = MakeTable({"integer", "real", "text", "flag"});
  for (int i = 0; i < 2000; ++i) {
    std::string text(random() % 40, '\0');
    for (char& c : text) c = static_cast<char>(random() % 128);
    const Variant cells[] = {static_cast<std::int64_t>(random() >> random() % 64), randomDouble(),
                             "x" + text, random() % 2 == 0};
    table->AddRow(cells, std::size(cells));
  }
  const std::string json = JsonOf(table);
  const auto copy = TableOf(json);
  ASSERT_TRUE(copy);
  EXPECT_EQ(JsonOf(copy), json);
  int changed = 0;
  for (int i = 0; i < 2000; ++i)
    for (int c = 0; c < 4; ++c) {
      const auto &before = *table->GetCellAt(i, c), &after = *copy->GetCellAt(i, c);
      const bool isSame = c == 2 ? Core::GetStringView(before) == Core::GetStringView(after)
                                 : before.type == after.type && before.value[0] == after.value[0];
      if (!isSame) ++changed;
    }
  EXPECT_EQ(changed, 0);
}

}  // namespace Data::tests
