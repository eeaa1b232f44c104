// The JSON schema that the library hands out: every member of it, and what
// rapidjson's validator makes of documents by it.
#include <rapidjson/document.h>
#include <rapidjson/pointer.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "Schema/SchemaSupport.h"

namespace Data::tests {

namespace {

std::string JsonSchemaText() {
  Core::Ptr<Interfaces::IJsonDocument> document;
  EXPECT_TRUE(NewSchema()->GetJsonSchema(document.Receive(), nullptr));
  EXPECT_TRUE(document->IsValid());
  return std::string(Core::Utf8View(*document->GetContent()));
}

rapidjson::Document JsonSchema() {
  rapidjson::Document schema;
  schema.Parse(JsonSchemaText().c_str());
  EXPECT_FALSE(schema.HasParseError());
  return schema;
}

/// The value at a pointer, without white space.
std::string At(const rapidjson::Document& document, const std::string& pointer) {
  const auto* value = rapidjson::Pointer(pointer.c_str()).Get(document);
  if (!value) return "nothing";
  rapidjson::StringBuffer buffer;
  rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
  value->Accept(writer);
  return buffer.GetString();
}

/// The names of an object's members, in order.
std::string MembersAt(const rapidjson::Document& document, const std::string& pointer) {
  std::string names;
  for (const auto& member : rapidjson::Pointer(pointer.c_str()).Get(document)->GetObject())
    names += (names.empty() ? "" : " ") + std::string(member.name.GetString());
  return names;
}

}  // namespace

TEST(JsonSchema, HasItsLengthToTheByte) { EXPECT_EQ(JsonSchemaText().size(), 8182u); }

TEST(JsonSchema, HasItsStructure) {
  const auto schema = JsonSchema();
  const struct {
    const char *pointer, *value;
  } values[] = {
      {"/$schema", R"("http://json-schema.org/draft-07/schema#")"},
      {"/$id", R"("qv.layer.schema.json")"},
      {"/title", R"("Layer attributes and validation rules document schema")"},
      {"/oneOf",
       R"([{"additionalItems":false,"properties":{"schema":{"$ref":"#/definitions/Schema"},)"
       R"("columns":{"oneOf":[{"$ref":"#/definitions/ColumnList"}]}},"required":["schema"]}])"},
      {"/definitions/Schema/description", R"("Column schema information")"},
      {"/definitions/Schema/additionalProperties", "false"},
      {"/definitions/ColumnList",
       R"({"description":"List of columns in the schema","type":"array","items":{)"
       R"("$ref":"#/definitions/Column","required":["name","type","width","decimals"]}})"},
      {"/definitions/Column/description",
       R"("Column information such as name, description and storage type")"},
      {"/definitions/Column/additionalProperties", "false"},
      {"/definitions/Column/properties/allowedValues",
       R"({"type":"array","$ref":"#/definitions/AllowedValueList",)"
       R"("description":"Allowed values array. If null then any value is allowed."})"},
      {"/definitions/AllowedValueList",
       R"({"description":"Allowed values array.","type":["array","null"],"items":{)"
       R"("$ref":"#/definitions/AllowedValue","required":["value","type","comparison"]}})"},
      {"/definitions/AllowedValue/description", R"("Allowed value or values for a given column.")"},
      {"/definitions/AllowedValue/additionalProperties", "false"},
  };
  for (const auto& c : values) EXPECT_EQ(At(schema, c.pointer), c.value) << c.pointer;
  const struct {
    const char *pointer, *members;
  } members[] = {
      {"", "$schema $id title oneOf definitions"},
      {"/definitions", "Schema ColumnList Column AllowedValueList AllowedValue"},
      {"/definitions/Schema", "description additionalProperties properties"},
      {"/definitions/Schema/properties", "uuid title description version identifierColumn"},
      {"/definitions/Column", "description additionalProperties properties"},
      {"/definitions/Column/properties",
       "name displayName description type width decimals readOnly allowAnyValue allowedValues "
       "defaultValue updateExpression insertExpression unit helpUri group visible "
       "displayAttribute nullable"},
      {"/definitions/AllowedValue", "description additionalProperties properties"},
      {"/definitions/AllowedValue/properties",
       "value type comparison displayName description category helpUri"},
  };
  for (const auto& c : members) EXPECT_EQ(MembersAt(schema, c.pointer), c.members) << c.pointer;
}

TEST(JsonSchema, HasEveryPropertyWithTypeDefaultAndDescription) {
  const char* const expression =
      "Update expression that will be evaluated when geometry or other attributes are changed. "
      "Update value supports expressions in form of \\\"{}\\\". Check out the docs for supported "
      "functions and operators.";
  const auto withExample = [&](const char* example) {
    std::string text = expression;
    return text.replace(text.find("{}"), 2, example);
  };
  const struct {
    const char *definition, *property, *type, *enumeration, *byDefault;
    std::string description;
  } cases[] = {
      {"Schema", "uuid", "string", "", R"("{00000000-0000-0000-0000-000000000000}")",
       "Schema unique identifier"},
      {"Schema", "title", "string", "", R"("My schema")", "Schema title"},
      {"Schema", "description", "string", "", R"("")", "Detailed description about the schema"},
      {"Schema", "version", "integer", "", "1", "Version number of the schema"},
      {"Schema", "identifierColumn", "string", "", R"("fid")",
       "ID column that uniquely identifies the entity"},
      {"Column", "name", "string", "", R"("unnamed")", "Column name"},
      {"Column", "displayName", "string", "", R"("Unnamed Column")", "Display name of the column."},
      {"Column", "description", "string", "", R"("")", "Column description"},
      {"Column", "type", "string",
       R"("enum":["integer","double","string","date","json","boolean"],)", R"("string")",
       "Data type"},
      {"Column", "width", "integer", "", "9", "Number of maximum characters."},
      {"Column", "decimals", "integer", "", "0", "Number of decimals. If type is double."},
      {"Column", "readOnly", "boolean", "", "false",
       "Is column read only? Prevents users from modifying the value in supported apps."},
      {"Column", "allowAnyValue", "boolean", "", "true",
       "Allow any value to be entered. Allowed values list then serve as common suggestions."},
      {"Column", "defaultValue", "string", "", R"("")",
       "Default value that will be used for new feature."},
      {"Column", "updateExpression", "string", "", R"("Area() * 2")", withExample("Area() * 2")},
      {"Column", "insertExpression", "string", "", R"("1 + 1")", withExample("1 + 1")},
      {"Column", "unit", "string", "", R"("")", "Unit of measurement"},
      {"Column", "helpUri", "string", "", R"("")",
       "Url address to show additional information on attribute feature."},
      {"Column", "group", "string", "", R"("Unspecified")",
       "Key to group similar attributes together."},
      {"Column", "visible", "boolean", "", "true", "Show attribute under attribute properties"},
      {"Column", "displayAttribute", "boolean", "", "false",
       "Set as display attribute. If multiple then names are concatenated"},
      {"Column", "nullable", "boolean", "", "false",
       "Can this value be null? If yes then set to true"},
      {"AllowedValue", "value", "string", "", R"("")", "Allowed value represented as string."},
      {"AllowedValue", "type", "string", R"("enum":["integer","double","string"],)", R"("string")",
       "Value type"},
      {"AllowedValue", "comparison", "string",
       R"("enum":["none","equal","greater","less","greater-or-equal","less-or-equal","like",)"
       R"("not-like","not-equal"],)",
       R"("equal")", "Comparison operator."},
      {"AllowedValue", "displayName", "string", "", R"("")",
       "Value that will be shown to the user"},
      {"AllowedValue", "description", "string", "", R"("")", "Value description"},
      {"AllowedValue", "category", "string", "", R"("none")", "Value category or group"},
      {"AllowedValue", "helpUri", "string", "", R"("")",
       "Url address to show additional information on attribute feature."},
  };
  const auto schema = JsonSchema();
  for (const auto& c : cases)
    EXPECT_EQ(At(schema, std::string("/definitions/") + c.definition + "/properties/" + c.property),
              std::string(R"({"type":")") + c.type + "\"," + c.enumeration + R"("default":)" +
                  c.byDefault + R"(,"description":")" + c.description + "\"}");
}

TEST(JsonSchema, TellsGoodDocumentsFromBadOnes) {
  const struct {
    const char *what, *document;
    bool isValid;
  } cases[] = {
      {"the least", R"({"schema":{}})", true},
      {"no header", R"({"columns":[]})", false},
      {"more at the root", R"({"$schema":"x","schema":{},"any":[1]})", true},
      {"more in the header", R"({"schema":{"any":1}})", false},
      {"a version that is no integer", R"({"schema":{"version":"1"}})", false},
      {"columns that are no list", R"({"schema":{},"columns":{}})", false},
      {"a column without its members", R"({"schema":{},"columns":[{}]})", true},
      {"more in a column", R"({"schema":{},"columns":[{"any":1}]})", false},
      {"a type of columns", R"({"schema":{},"columns":[{"type":"json"}]})", true},
      {"an array type", R"({"schema":{},"columns":[{"type":"byterarray"}]})", false},
      {"no allowed values", R"({"schema":{},"columns":[{"allowedValues":null}]})", true},
      {"an allowed value", R"({"schema":{},"columns":[{"allowedValues":[{"type":"double"}]}]})",
       true},
      {"a date as allowed value",
       R"({"schema":{},"columns":[{"allowedValues":[{"type":"date"}]}]})", false},
      {"a comparison of another name",
       R"({"schema":{},"columns":[{"allowedValues":[{"comparison":"equals"}]}]})", false},
      {"more in an allowed value", R"({"schema":{},"columns":[{"allowedValues":[{"any":1}]}]})",
       false},
  };
  const auto tree = JsonSchema();
  const rapidjson::SchemaDocument schema(tree);
  for (const auto& c : cases) {
    rapidjson::Document document;
    document.Parse(c.document);
    rapidjson::SchemaValidator validator(schema);
    EXPECT_EQ(document.Accept(validator), c.isValid) << c.what;
  }
}

TEST(JsonSchema, OutPointerIsChecked) {
  EXPECT_EQ(
      Failure([](Core::IErrorCode** error) { return NewSchema()->GetJsonSchema(nullptr, error); }),
      "Pointer to a pointer of struct Data::Interfaces::IJsonDocument must not be null! "
      "Address of return must be specified!");
}

}  // namespace Data::tests
