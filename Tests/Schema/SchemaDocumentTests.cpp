#include <sstream>

#include "Schema/SchemaSupport.h"
#include "SmallStack.h"

namespace Data::tests {

namespace {

constexpr char kFile[] = "Schemas.txt";

/// A document with a column and an allowed value, and with one more member in the object `where`.
std::string WithMember(std::string_view where, const std::string& member) {
  std::string text =
      R"({<root>"schema":{<header>"uuid":"00000000-0000-0000-0000-000000000000","title":"t",)"
      R"("description":"","version":3},"columns":[{<column>"name":"c","type":"string","width":4,)"
      R"("decimals":1,"allowedValues":[{<allowed>"value":"v","type":"string",)"
      R"("comparison":"equal"}]}]})";
  for (const std::string place : {"root", "header", "column", "allowed"})
    text.replace(text.find("<" + place), place.size() + 2, place == where ? member + "," : "");
  return text;
}
const std::string kPlain = WithMember("", "");

std::vector<std::string> Words(std::string_view text) {
  std::istringstream stream{std::string(text)};
  return {std::istream_iterator<std::string>(stream), {}};
}

/// Each name of a case with each value, as a member.
template <class Visitor>
void ForEachMember(const Case& c, Visitor visit) {
  for (const auto& name : Words(c[1]))
    for (const auto& value : Words(c[2])) visit(name, "\"" + name + "\":" + value);
}

}  // namespace

TEST(SchemaDocument, IsWrittenAsItWasRead) {
  for (const Case& c : Cases(kFile, "documents")) EXPECT_EQ(Rewritten(c[0]), c[0]) << c.where;
}

TEST(SchemaDocument, IsRewritten) {
  for (const Case& c : Cases(kFile, "rewritten")) EXPECT_EQ(Rewritten(c[0]), c[1]) << c.where;
}

TEST(SchemaDocument, OtherTextsAndForms) {
  const std::string empty = Rewritten(R"({"columns":[]})");
  for (const Case& c : Cases(kFile, "empty")) EXPECT_EQ(Rewritten(c[0]), empty) << c.where;
  EXPECT_EQ(Rewritten(std::string(100'000, '[')), empty);
  const auto document = New(Data_CreateJsonDocument);
  const auto read = [&] { return JsonOf(*Made<ISchema>(Data_ParseSchema, document.Get())); };
  EXPECT_EQ(read(), empty) << "a document without content";
  document->SetContent(kPlain.data(), kPlain.size());
  document->GetContent()->GetWide();  // converts it in place
  EXPECT_EQ(read(), Rewritten(kPlain)) << "a content in another form";
}

TEST(SchemaDocument, ValuesAreReadByTheirType) {
  for (const Case& c : Cases(kFile, "values"))
    for (const std::string where : {"column", "allowed"}) {
      const std::string key = where == "column" ? "defaultValue" : "value";
      const std::string member = R"("type":")" + std::string(c[0]) + R"(",")" + key + R"(":")";
      std::string failure;
      const auto schema =
          ParseSchema(WithMember(where, member + std::string(c[1]) + "\""), failure);
      if (!schema) {
        EXPECT_EQ(failure, c[2]) << c.where;
        continue;
      }
      Variant value = DefaultValue(*schema, "c");
      if (where == "allowed") AllowedValues(*schema, "c").at(0)->GetValue(&value);
      EXPECT_EQ(Core::GetValueTypeName(value.Type()), c[2]) << c.where;
      EXPECT_EQ(Core::ToText(value), c[3]) << c.where;
    }
}

TEST(SchemaDocument, ValuesThatNoDocumentHolds) {
  const std::pair<Variant, const char*> defaults[] = {
      {256, "true"},    {0.5, "false"}, {Address(ValueType::Int32, 0), "0"},
      {"text", "text"}, {Null, ""},     {Date("2024"), "2024-01-01T12:00:00.000000000Z"}};
  const auto schema = SchemaWithColumn(ValueType::Bool);
  for (const auto& [value, written] : defaults) {
    const auto member = R"("defaultValue":")" + std::string(written) + "\"";
    EXPECT_TRUE(schema->SetDefaultValue("x", &value, nullptr));
    EXPECT_NE(JsonOf(*schema).find(member), std::string::npos) << JsonOf(*schema) << member;
  }
  EXPECT_TRUE(schema->AddAllowedValue("x", AllowedValue(Variant(kSomeUuid)).Get(), nullptr));
  EXPECT_EQ(JsonOf(*schema), "Unsupported schema type! Uuid");
}

TEST(SchemaDocument, EveryWrongMemberIsNamed) {
  for (const Case& c : Cases(kFile, "wrong members"))
    ForEachMember(c, [&](const std::string& name, const std::string& member) {
      EXPECT_EQ(Rewritten(WithMember(c[0], member)),
                "Member \"" + name + "\" of the layer schema document " + std::string(c[3]))
          << c.where << member;
    });
  for (const Case& c : Cases(kFile, "ignored members"))
    ForEachMember(c, [&](const std::string&, const std::string& member) {
      EXPECT_EQ(Rewritten(WithMember(c[0], member)), Rewritten(kPlain)) << member;
    });
}

TEST(SchemaDocument, IsIndentedAsAsked) {
  const auto schema = NewSchema();
  for (const Case& c : Cases(kFile, "indentations")) {
    const auto count = static_cast<std::uint32_t>(std::stoul(std::string(c[1])));
    Ptr<IJsonDocument> document;
    Ptr<IErrorCode> error;
    const bool isWritten = schema->ToJson(document.Receive(), c[0][0], count, error.Receive());
    const std::string text(isWritten ? Core::Utf8View(*document->GetContent()) : "");
    EXPECT_EQ((isWritten ? text : MessageOf(error)).substr(0, c[2].size()), c[2]) << c.where;
  }
}

TEST(SchemaDocument, NestingIsLimited) {
  const auto nested = [](std::size_t levels) {
    return WithMember("root",
                      "\"more\":" + std::string(levels - 1, '[') + std::string(levels - 1, ']'));
  };
  OnSmallStack([&] {
    EXPECT_EQ(Rewritten(nested(1000)), Rewritten(kPlain));
    for (const std::size_t levels : {1001u, 100'000u})
      EXPECT_EQ(Rewritten(nested(levels)),
                "The layer schema document is nested deeper than 1000 levels!");
    std::string deep = R"("name":)";
    for (int i = 0; i < 990; ++i) deep += R"({"name":)";
    EXPECT_EQ(Rewritten(WithMember("column", deep + "1" + std::string(990, '}'))),
              "Member \"name\" of the layer schema document must be a string!");
  });
}

TEST(SchemaDocument, ManyMembersTakeTimeInProportion) {
  // Quadratic steps would take minutes here.
  std::string columns = "\"columns\":[{", members = "\"more\":{}";
  for (int i = 0; i < 10'000; ++i)
    columns += (i ? "},{" : "") + std::string(R"("name":"column )") + std::to_string(i) +
               R"(","type":"string","width":1,"decimals":1)";
  std::string failure;
  const auto schema = ParseSchema(WithMember("root", columns + "}]"), failure);
  EXPECT_EQ(Rewritten(JsonOf(*Made<ISchema>(&ISchema::Clone, schema))), JsonOf(*schema));
  EXPECT_EQ(ColumnNames(*schema).at(9'999), "column 9999");
  for (int i = 0; i < 50'000; ++i) members += ",\"m" + std::to_string(i) + "\":{}";
  EXPECT_EQ(Rewritten(WithMember("root", members)), Rewritten(kPlain));
}

TEST(SchemaDocument, TheJsonSchemaIsConstant) {
  const auto document = Made<IJsonDocument>(&ISchema::GetJsonSchema, NewSchema());
  EXPECT_TRUE(document->IsValid());
  const std::string_view text = Core::Utf8View(*document->GetContent());
  const auto sha256 = Made<IHashing>(Data_CreateHashingInstanceSha2, 0u);
  const auto digest = Made<IArray>(&IHashing::Hash, sha256, text.data(), text.size());
  EXPECT_EQ(std::string_view(static_cast<char*>(digest->GetData()), 32),
            "\x87\x33\xd1\xd4\x2c\x2b\x8f\x68\xaa\x49\x79\xba\x8d\x38\x0b\x2e"
            "\x19\x9a\x78\x6f\x8e\x05\xac\x0e\x88\x53\x00\xbe\x71\x2e\x84\xc4"sv);
}

}  // namespace Data::tests
