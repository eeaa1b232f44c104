#include "DateTime/DateTimeSupport.h"
#include "Schema/SchemaSupport.h"
#include "SmallStack.h"

namespace Data::tests {

using Names = std::vector<std::string>;

namespace {

const std::string kHeader =
    R"("schema":{"uuid":"{00000000-0000-0000-0000-000000000000}","title":"t","description":"",)"
    R"("version":3})";

/// A document of one column: its name, type, width and decimals, and more.
std::string ColumnDocument(const std::string& type, const std::string& more = "") {
  return "{" + kHeader + R"(,"columns":[{"name":"c","type":")" + type +
         R"(","width":4,"decimals":1)" + more + "}]}";
}

std::string AllowedValueDocument(const std::string& allowed) {
  return ColumnDocument("string", R"(,"allowedValues":[)" + allowed + "]");
}

Ptr<ISchema> SchemaWithDefault(ValueType type, const Variant& value) {
  auto schema = NewSchema();
  EXPECT_TRUE(schema->AddColumn("c", type, 1, 1, nullptr));
  EXPECT_TRUE(schema->SetDefaultValue("c", &value, nullptr));
  return schema;
}

/// The member of a key in a document without white space.
std::string MemberOf(const std::string& json, const std::string& key) {
  const auto begin = json.find("\"" + key + "\":");
  if (begin == std::string::npos) return "none";
  const auto value = begin + key.size() + 3;
  return json.substr(value, json.find_first_of(",}", value) - value);
}

}  // namespace

TEST(SchemaDocument, IsWrittenWithEveryMemberInOrder) {
  const auto schema = NewSchema();
  schema->SetVersion(2);
  EXPECT_TRUE(
      schema->AddColumnFull("fid", "Keys", "Id", ValueType::Int32, 9, 0, "\"key\"", "m", nullptr));
  EXPECT_TRUE(schema->SetUpdateExpression("fid", "Area() * 2", nullptr));
  EXPECT_TRUE(schema->SetInsertExpression("fid", "1 + 1", nullptr));
  EXPECT_TRUE(schema->SetNullable("fid", true, nullptr));
  EXPECT_TRUE(schema->SetHelpUri("fid", "http://help", nullptr));
  EXPECT_TRUE(schema->AddAllowedValue(
      "fid", AllowedValue(Variant(7), ComparisonOperator::LessOrEqual).Get(), nullptr));
  EXPECT_TRUE(schema->AddColumn("flag", ValueType::Bool, 1, 0, nullptr));
  EXPECT_EQ(
      JsonOf(*schema),
      R"({"$schema":"./qv.schema.layer.json",)"
      R"("schema":{"uuid":"6b29fc40-ca47-1067-b31d-00dd010662da","title":"Roads",)"
      R"("description":"All roads","identifierColumn":"fid","version":2},)"
      R"("columns":[{"name":"fid","group":"Keys","displayName":"Id","description":"\"key\"",)"
      R"("helpUri":"http://help","type":"integer","defaultValue":"0",)"
      R"("updateExpression":"Area() * 2","insertExpression":"1 + 1","unit":"m","width":9,)"
      R"("decimals":0,"readOnly":false,"allowAnyValue":true,"displayAttribute":false,)"
      R"("visible":true,"nullable":true,"allowedValues":[{"value":"7","type":"integer",)"
      R"("comparison":"less-or-equal","displayName":"Shown","description":"Described",)"
      R"("category":"Sorted","helpUri":"Linked"}]},)"
      R"({"name":"flag","group":"Attribute Properties","displayName":"flag","description":"",)"
      R"("helpUri":"","type":"boolean","defaultValue":"false","width":1,"decimals":0,)"
      R"("readOnly":false,"allowAnyValue":true,"displayAttribute":false,"visible":true}]})");
}

TEST(SchemaDocument, ReadsBackWhatItWrote) {
  const auto schema = NewSchema();
  EXPECT_TRUE(
      schema->AddColumnFull("key", "Keys", "Id", ValueType::Int64, 9, 0, "\x01\"", "m", nullptr));
  EXPECT_TRUE(schema->AddColumn("when", ValueType::DateTime, 1, 0, nullptr));
  EXPECT_TRUE(schema->AddColumn("what", ValueType::String, 1, 0, nullptr));
  EXPECT_TRUE(schema->AddColumn("more", ValueType::JsonDocument, 1, 0, nullptr));
  EXPECT_TRUE(schema->SetVisible("when", false, nullptr));
  EXPECT_TRUE(schema->SetReadOnly("when", true, nullptr));
  EXPECT_TRUE(schema->SetAllowAnyValue("when", false, nullptr));
  EXPECT_TRUE(schema->SetDisplayAttribute("when", true, nullptr));
  for (const Variant& value : {Variant(7), Variant(0.5), Variant("seven or eight, not nine"),
                               Variant(DateTimeOf("2024-11-14"))})
    EXPECT_TRUE(schema->AddAllowedValue("what", AllowedValue(value).Get(), nullptr));
  const std::string json = JsonOf(*schema);
  EXPECT_EQ(JsonOf(*ParseSchema(json)), json);
}

TEST(SchemaDocument, IsIndentedAsAsked) {
  const auto schema = NewSchema();
  const auto write = [&](char character, std::uint32_t count) {
    Ptr<IJsonDocument> document;
    Ptr<IErrorCode> error;
    if (!schema->ToJson(document.Receive(), character, count, error.Receive()))
      return MessageOf(error);
    return std::string(Core::Utf8View(*document->GetContent())).substr(0, 60);
  };
  const std::string rest = "\"$schema\": \"./qv.schema.layer.json\",\n";
  const char* const failure =
      "Unsupported indentation! Use at most 1000 spaces, tabs or line breaks per level.";
  const struct {
    char character;
    std::uint32_t count;
    std::string text;
  } cases[] = {
      {0, 0, "{\n    " + rest},  {0, 7, "{\n    " + rest},   {' ', 0, "{\n" + rest},
      {' ', 2, "{\n  " + rest},  {'\t', 1, "{\n\t" + rest},  {'\n', 2, "{\n\n\n" + rest},
      {'\r', 1, "{\n\r" + rest}, {'x', 2, failure},          {'\xFF', 0, failure},
      {' ', 1001, failure},      {' ', UINT32_MAX, failure},
  };
  for (const auto& c : cases) EXPECT_EQ(write(c.character, c.count).find(c.text), 0u) << c.text;
}

TEST(SchemaDocument, ColumnTypesHaveNames) {
  const struct {
    ValueType type;
    const char* written;
  } written[] = {
      {ValueType::Int16, "\"integer\""},   {ValueType::Int128, "\"integer\""},
      {ValueType::UInt64, "\"integer\""},  {ValueType::UInt128, "\"integer\""},
      {ValueType::Byte, "\"integer\""},    {ValueType::Double, "\"double\""},
      {ValueType::Float, "\"double\""},    {ValueType::DateTime, "\"date\""},
      {ValueType::String, "\"string\""},   {ValueType::Bool, "\"boolean\""},
      {ValueType::Array, "\"array\""},     {ValueType::JsonDocument, "\"json\""},
      {ValueType::XmlDocument, "\"xml\""},
  };
  for (const auto& c : written)
    EXPECT_EQ(MemberOf(JsonOf(*SchemaWithDefault(c.type, Core::Null)), "type"), c.written);
  for (const auto type : {ValueType::Invalid, ValueType::Uuid, ValueType::ErrorCode,
                          ValueType::IObject, ValueType::StringList})
    EXPECT_EQ(JsonOf(*SchemaWithDefault(type, Core::Null)),
              "Unsupported schema type! " + std::string(Core::GetValueTypeName(type)));

  const struct {
    const char* name;
    ValueType read;
  } read[] = {
      {"integer", ValueType::Int64},      {"double", ValueType::Double},
      {"date", ValueType::DateTime},      {"string", ValueType::String},
      {"boolean", ValueType::Bool},       {"byterarray", ValueType::Array},
      {"integerarray", ValueType::Array}, {"doublearray", ValueType::Array},
      {"json", ValueType::JsonDocument},  {"jsonobject", ValueType::JsonDocument},
      {"array", ValueType::Invalid},      {"xml", ValueType::Invalid},
      {"bytearray", ValueType::Invalid},  {"Integer", ValueType::Invalid},
      {"bool", ValueType::Invalid},       {"", ValueType::Invalid},
  };
  for (const auto& c : read)
    EXPECT_EQ(ParseSchema(ColumnDocument(c.name))->GetType("c", nullptr), c.read) << c.name;
}

TEST(SchemaDocument, WritesDefaultValuesAsText) {
  const struct {
    ValueType column;
    Variant value;
    const char* written;
  } cases[] = {
      {ValueType::Int64, std::int64_t{-5}, "\"-5\""},
      {ValueType::Int64, 0.5, "\"0.500000\""},
      {ValueType::Int64, Core::Null, "\"\""},
      {ValueType::Bool, true, "\"true\""},
      {ValueType::Bool, 256, "\"true\""},
      {ValueType::Bool, 0, "\"false\""},
      {ValueType::Bool, "text", "\"text\""},
      {ValueType::DateTime, DateTimeOf("2024-11-14"), "\"2024-11-14T12:00:00.000000000Z\""},
  };
  for (const auto& c : cases)
    EXPECT_EQ(MemberOf(JsonOf(*SchemaWithDefault(c.column, c.value)), "defaultValue"), c.written);
}

TEST(SchemaDocument, ReadsDefaultValuesByTheColumnsType) {
  const struct {
    const char *type, *text;
    ValueType stored;
    const char* value;  ///< as display text, or the failure
  } cases[] = {
      {"integer", "42", ValueType::Int64, "42"},
      {"integer", " \\t-9223372036854775808\\n", ValueType::Int64, "-9223372036854775808"},
      {"integer", "9223372036854775808", ValueType::Unknown, "Parsing failed!"},
      {"integer", "4x", ValueType::Unknown, "Parsing failed!"},
      {"integer", "4.0", ValueType::Unknown, "Parsing failed!"},
      {"integer", "", ValueType::Null, ""},
      {"double", "4", ValueType::Double, "4.000000"},
      {"double", " 1e+3 ", ValueType::Double, "1000.000000"},
      {"double", "-.5", ValueType::Double, "-0.500000"},
      {"double", "0,5", ValueType::Unknown, "Parsing failed!"},
      {"double", "1e999", ValueType::Unknown, "Parsing failed!"},
      {"double", " ", ValueType::Unknown, "Parsing failed!"},
      {"boolean", "true", ValueType::Bool, "true"},
      {"boolean", "TRUE", ValueType::Bool, "false"},
      {"boolean", " true", ValueType::Bool, "false"},
      {"string", " a text that is long ", ValueType::String, " a text that is long "},
      {"date", "2024-11-14", ValueType::DateTime, "2024-11-14T12:00:00.000000000Z"},
      {"date", "", ValueType::Null, ""},
      {"date", "2024-00-01", ValueType::Unknown, "Month cannot be 0"},
      {"json", "[1]", ValueType::JsonDocument, "[1]"},
      {"json", "not json", ValueType::JsonDocument, "not json"},
      {"byterarray", "x", ValueType::Null, ""},
      {"xml", "<a/>", ValueType::Null, ""},
      {"unknown", "x", ValueType::Null, ""},
  };
  for (const auto& c : cases) {
    std::string failure;
    const auto schema = ParseSchema(
        ColumnDocument(c.type, std::string(R"(,"defaultValue":")") + c.text + "\""), failure);
    if (!schema) {
      EXPECT_EQ(failure, c.value) << c.type << ": " << c.text;
      EXPECT_EQ(c.stored, ValueType::Unknown) << c.type << ": " << c.text;
      continue;
    }
    const Variant value = DefaultValue(*schema, "c");
    EXPECT_EQ(value.Type(), c.stored) << c.type << ": " << c.text;
    EXPECT_EQ(Core::ToText(value), c.value) << c.type << ": " << c.text;
  }
  EXPECT_EQ(DefaultValue(*ParseSchema(ColumnDocument("integer")), "c").Type(), ValueType::Int32)
      << "without the member, as AddColumn sets it";
  EXPECT_EQ(Core::ToText(DefaultValue(*ParseSchema(ColumnDocument("json")), "c")), "{}");
}

TEST(SchemaDocument, ReadsHeaderAndOptionalMembers) {
  const auto empty = ParseSchema("{" + kHeader + "}");
  EXPECT_EQ(empty->GetVersion(), 3);
  EXPECT_STREQ(empty->GetTitle(), "t");
  EXPECT_STREQ(empty->GetDescription(), "");
  EXPECT_EQ(empty->GetColumnCount(), 0u);

  const auto plain = ParseSchema(ColumnDocument("string"));
  EXPECT_STREQ(plain->GetIdentifierColumn(), "c");
  EXPECT_STREQ(plain->GetDisplayName("c", nullptr), "c");
  EXPECT_STREQ(plain->GetGroup("c", nullptr), "Attribute Properties");
  EXPECT_EQ(plain->GetWidth("c", nullptr), 4);
  EXPECT_EQ(plain->GetDecimals("c", nullptr), 1);
  EXPECT_FALSE(plain->HasUnit("c"));

  const auto full = ParseSchema(ColumnDocument(
      "string",
      R"(,"displayName":"n","description":"d","group":"g","helpUri":"h","unit":"u",)"
      R"("updateExpression":"up","insertExpression":"in","readOnly":true,)"
      R"("allowAnyValue":false,"visible":false,"displayAttribute":true,"nullable":true)"));
  EXPECT_STREQ(full->GetDisplayName("c", nullptr), "n");
  EXPECT_STREQ(full->GetColumnDescription("c", nullptr), "d");
  EXPECT_STREQ(full->GetGroup("c", nullptr), "g");
  EXPECT_STREQ(full->GetHelpUri("c", nullptr), "h");
  EXPECT_STREQ(full->GetUnit("c", nullptr), "u");
  EXPECT_STREQ(full->GetUpdateExpression("c", nullptr), "up");
  EXPECT_STREQ(full->GetInsertExpression("c", nullptr), "in");
  EXPECT_TRUE(full->GetReadOnly("c", nullptr));
  EXPECT_FALSE(full->GetAllowAnyValue("c", nullptr));
  EXPECT_FALSE(full->GetVisible("c", nullptr));
  EXPECT_TRUE(full->GetDisplayAttribute("c", nullptr));
  EXPECT_EQ(Failure([&](IErrorCode** error) { return full->GetNullable("c", error); }), kMissing)
      << "is written but not read";

  const auto odd = ParseSchema(ColumnDocument(
      "string", R"(,"updateExpression":5,"insertExpression":null,"unit":null,"unknown":{})"));
  EXPECT_FALSE(odd->HasUpdateExpression("c")) << "no text";
  EXPECT_FALSE(odd->HasInsertExpression("c"));
  EXPECT_FALSE(odd->HasUnit("c")) << "null is not there";
}

TEST(SchemaDocument, ReadsAllowedValues) {
  const struct {
    const char *type, *text, *comparison;
    ValueType stored;
    const char* value;
    ComparisonOperator read;
    const char* writtenType;
  } cases[] = {
      {"integer", "5", "less", ValueType::Int64, "5", ComparisonOperator::Less, "\"integer\""},
      {"double", "5", "greater", ValueType::Double, "5.000000", ComparisonOperator::Greater,
       "\"double\""},
      {"string", "s", "like", ValueType::String, "s", ComparisonOperator::Like, "\"string\""},
      {"date", "2024", "not-like", ValueType::DateTime, "2024-01-01T12:00:00.000000000Z",
       ComparisonOperator::NotLike, "\"date\""},
      {"boolean", "true", "not-equal", ValueType::Bool, "true", ComparisonOperator::NotEqual,
       "\"bool\""},
      {"json", "[]", "greater-or-equal", ValueType::JsonDocument, "[]",
       ComparisonOperator::GreaterOrEqual, "\"json\""},
      {"bool", "true", "less-or-equal", ValueType::Null, "", ComparisonOperator::LessOrEqual,
       "\"null\""},
      {"doublearray", "x", "none", ValueType::Null, "", ComparisonOperator::None, "\"null\""},
      {"string", "", "Equal", ValueType::String, "", ComparisonOperator::None, "\"string\""},
      {"string", "", "equal", ValueType::String, "", ComparisonOperator::Equal, "\"string\""},
  };
  for (const auto& c : cases) {
    const std::string allowed = std::string(R"({"value":")") + c.text + R"(","type":")" + c.type +
                                R"(","comparison":")" + c.comparison + R"(","category":"a"})";
    const auto schema = ParseSchema(AllowedValueDocument(allowed + "," + allowed));
    const auto values = AllowedValues(*schema, "c");
    ASSERT_EQ(values.size(), 2u) << allowed;
    Variant value;
    values[1]->GetValue(&value);
    EXPECT_EQ(value.Type(), c.stored) << allowed;
    EXPECT_EQ(Core::ToText(value), c.value) << allowed;
    EXPECT_EQ(values[1]->GetComparison(), c.read) << allowed;
    EXPECT_STREQ(values[1]->GetCategory(), "a");
    EXPECT_STREQ(values[1]->GetDisplayName(), "");
    const std::string json = JsonOf(*schema);
    EXPECT_EQ(MemberOf(json.substr(json.find("allowedValues")), "type"), c.writtenType) << allowed;
  }
  EXPECT_TRUE(AllowedValues(*ParseSchema(ColumnDocument("string", R"(,"allowedValues":null)")), "c")
                  .empty());
  EXPECT_EQ(MemberOf(JsonOf(*ParseSchema(AllowedValueDocument(""))), "allowedValues"), "none")
      << "an empty list is not written";
  std::string failure;
  EXPECT_FALSE(ParseSchema(
      AllowedValueDocument(R"({"value":"abc","type":"integer","comparison":"less"})"), failure));
  EXPECT_EQ(failure, "Parsing failed!");
}

TEST(SchemaDocument, AnAllowedValueOfAForeignTypeCannotBeWritten) {
  const auto schema = NewSchema();
  EXPECT_TRUE(schema->AddColumn("c", ValueType::Int32, 1, 1, nullptr));
  EXPECT_TRUE(schema->AddAllowedValue("c", AllowedValue(Variant(kSomeUuid)).Get(), nullptr));
  EXPECT_EQ(JsonOf(*schema), "Unsupported schema type! Uuid");
}

TEST(SchemaDocument, RepeatedColumnsStartAnew) {
  const auto schema = ParseSchema(
      "{" + kHeader +
      R"(,"columns":[{"name":"a","type":"string","width":1,"decimals":1,"unit":"m","group":"g"},)"
      R"({"name":"b","type":"string","width":1,"decimals":1},)"
      R"({"name":"a","type":"double","width":2,"decimals":2}]})");
  EXPECT_EQ(ColumnNames(*schema), (Names{"a", "b"}));
  EXPECT_EQ(schema->GetType("a", nullptr), ValueType::Double);
  EXPECT_STREQ(schema->GetGroup("a", nullptr), "Attribute Properties");
  EXPECT_STREQ(schema->GetUnit("a", nullptr), "m");
}

TEST(SchemaDocument, TextThatIsNotJsonGivesAnEmptySchema) {
  const std::string open(100'000, '[');
  for (const std::string_view text :
       {std::string_view(""), std::string_view("hello"), std::string_view("{\"schema\":"),
        std::string_view("{} {}"), std::string_view(open), std::string_view("[]"),
        std::string_view("5"), std::string_view("null"), std::string_view("{}")}) {
    const auto schema = ParseSchema(text);
    ASSERT_TRUE(schema) << text;
    EXPECT_EQ(schema->GetVersion(), 1) << text;
    EXPECT_STREQ(schema->GetTitle(), "") << text;
    EXPECT_EQ(schema->GetColumnCount(), 0u) << text;
  }
  const auto document = JsonDocument("");
  Ptr<ISchema> schema;
  Ptr<IJsonDocument> withoutContent;
  EXPECT_TRUE(Data_CreateJsonDocument(withoutContent.Receive()));
  EXPECT_TRUE(Data_ParseSchema(withoutContent.Get(), schema.Receive(), nullptr));
  EXPECT_EQ(ParseSchema("\xEF\xBB\xBF{" + kHeader + "}")->GetVersion(), 3) << "byte-order mark";
}

TEST(SchemaDocument, IsReadInAnyEncodingOfItsString) {
  const auto document = JsonDocument("{" + kHeader + "}");
  document->GetContent()->GetWide();  // converts it in place
  Ptr<ISchema> schema;
  EXPECT_TRUE(Data_ParseSchema(document.Get(), schema.Receive(), nullptr));
  EXPECT_EQ(schema->GetVersion(), 3);
}

TEST(SchemaDocument, ReaderChecksItsArguments) {
  Ptr<ISchema> schema;
  Ptr<IErrorCode> error;
  EXPECT_FALSE(Data_ParseSchema(nullptr, schema.Receive(), error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer of struct Data::Interfaces::IJsonDocument must not be null!");
  EXPECT_FALSE(Data_ParseSchema(JsonDocument("{}").Get(), nullptr, error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer to a pointer of struct Data::Interfaces::ISchema must not be null! Address "
            "of return must be specified!");
}

TEST(SchemaDocument, NestingIsLimited) {
  const auto nested = [](std::size_t levels) {
    std::string text = "{" + kHeader + R"(,"more":)";
    text.append(levels - 1, '[').append(levels - 1, ']');
    return text + "}";
  };
  OnSmallStack([&] {
    EXPECT_EQ(ParseSchema(nested(1000))->GetVersion(), 3);
    for (const std::size_t levels : {1001u, 100'000u}) {
      std::string failure;
      EXPECT_FALSE(ParseSchema(nested(levels), failure));
      EXPECT_EQ(failure, "The layer schema document is nested deeper than 1000 levels!");
    }
    std::string deep = R"({"columns":[{"name":)";
    for (int i = 0; i < 990; ++i) deep += R"({"name":)";
    std::string failure;
    EXPECT_FALSE(ParseSchema(deep + "1" + std::string(991, '}') + "]}", failure));
    EXPECT_EQ(failure, "Member \"name\" of the layer schema document must be a string!");
  });
}

TEST(SchemaDocument, EveryWrongOrMissingMemberIsNamed) {
  const auto replace = [](const std::string& member, const std::string& value) {
    std::string text =
        R"({"schema":{"uuid":"00000000-0000-0000-0000-000000000000","title":"t",)"
        R"("description":"","identifierColumn":"i","version":3},)"
        R"("columns":[{"name":"c","type":"string","width":1,"decimals":1,"displayName":"",)"
        R"("defaultValue":"","readOnly":true,"unit":"","group":"","helpUri":"","visible":true,)"
        R"("allowAnyValue":true,"displayAttribute":true,"allowedValues":[{"value":"",)"
        R"("comparison":"equal","category":""}]}]})";
    text.insert(text.find(R"("comparison")"), R"("type":"string",)");
    const auto begin = text.find("\"" + member + "\":");
    std::size_t end = begin, depth = 0;
    for (; depth != 0 || (text[end] != ',' && text[end] != '}'); ++end)
      depth += (text[end] == '{' || text[end] == '[') - (text[end] == '}' || text[end] == ']');
    if (value.empty()) return text.replace(begin, end - begin, R"("unknown":0)");
    return text.replace(begin, end - begin, "\"" + member + "\":" + value);
  };
  const struct {
    const char* kind;
    std::vector<const char*> members, wrong;
    bool isRequired;
  } cases[] = {
      {"a string",
       {"uuid", "title", "name", "type", "value", "comparison"},
       {"0", "true", "{}", "[\"x\"]", "1.5"},
       true},
      {"a string",
       {"identifierColumn", "displayName", "defaultValue", "unit", "group", "helpUri", "category"},
       {"0", "true", "{}", "[\"x\"]"},
       false},
      {"an integer of 32 bits",
       {"version", "width", "decimals"},
       {"\"5\"", "true", "{}", "[5]", "5.5", "2147483648", "18446744073709551615", "1e300"},
       true},
      {"true or false",
       {"readOnly", "visible", "allowAnyValue", "displayAttribute"},
       {"\"true\"", "1", "[]", "{}"},
       false},
      {"an array", {"columns", "allowedValues"}, {"{}", "\"\"", "1", "true"}, false},
  };
  for (const auto& c : cases)
    for (const std::string member : c.members) {
      const std::string start = "Member \"" + member + "\" of the layer schema document ";
      for (const char* wrong : c.wrong) {
        std::string failure;
        EXPECT_FALSE(ParseSchema(replace(member, wrong), failure)) << member << wrong;
        EXPECT_EQ(failure, start + "must be " + c.kind + "!") << wrong;
      }
      for (const char* absent : {"", "null"}) {
        std::string failure;
        ParseSchema(replace(member, absent), failure);
        EXPECT_EQ(failure, c.isRequired ? start + "is missing!" : "") << member << absent;
      }
    }
  const struct {
    const char* text;
    const char* message;
  } misplaced[] = {
      {R"({"schema":[]})", "Member \"schema\" of the layer schema document must be an object!"},
      {R"({"schema":5})", "Member \"schema\" of the layer schema document must be an object!"},
      {R"({"columns":[1]})", "Member \"columns\" of the layer schema document must hold objects!"},
      {R"({"columns":[[]]})", "Member \"columns\" of the layer schema document must hold objects!"},
  };
  for (const auto& c : misplaced) {
    std::string failure;
    EXPECT_FALSE(ParseSchema(c.text, failure));
    EXPECT_EQ(failure, c.message);
  }
  for (const std::string uuid : {"", "x", "{00000000-0000-0000-0000-000000000000",
                                 "00000000-0000-0000-0000-0000000000000", "{}"}) {
    std::string failure;
    EXPECT_FALSE(ParseSchema(replace("uuid", "\"" + uuid + "\""), failure));
    EXPECT_EQ(failure, "Invalid uuid format!" + uuid);
  }
}

TEST(SchemaDocument, ManyColumnsTakeTimeInProportion) {
  // Quadratic steps would take minutes here.
  std::string text = "{" + kHeader + ",\"columns\":[";
  for (int i = 0; i < 10'000; ++i)
    text += (i ? "," : "") + std::string(R"({"name":"column )") + std::to_string(i) +
            R"(","type":"string","width":1,"decimals":1})";
  const auto schema = ParseSchema(text + "]}");
  ASSERT_EQ(schema->GetColumnCount(), 10'000u);
  Ptr<ISchema> clone;
  EXPECT_TRUE(schema->Clone(clone.Receive(), nullptr));
  EXPECT_EQ(ParseSchema(JsonOf(*clone))->GetColumnCount(), 10'000u);

  std::string wide = "{" + kHeader;
  for (int i = 0; i < 50'000; ++i) wide += ",\"m" + std::to_string(i) + "\":{}";
  EXPECT_EQ(ParseSchema(wide + "}")->GetVersion(), 3);
}

}  // namespace Data::tests
