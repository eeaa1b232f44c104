#include "SchemaDocument.h"

#include <LayerData/Table.h>

#include "Bytes.h"
#include "Input.h"

namespace program {

namespace {

using layerdata::Error;
using layerdata::Json;
using layerdata::Row;
using layerdata::Schema;
using layerdata::Table;
using layerdata::detail::Ask;
using layerdata::detail::Call;
using layerdata::detail::Receive;

/// @throws Error that names the line of a text that is no JSON
Json ParseJson(const std::string& text) {
  Table::ParseJson(text);
  return Json::Parse(text);
}

AllowedValue AllowedValueOf(ld_allowed_value* allowed) {
  ld_variant record{};
  Call(ld_allowed_value_get_value, allowed, &record);
  AllowedValue result{layerdata::Value(record),
                      Ask<ld_comparison_operator>(ld_allowed_value_get_comparison, allowed)};
  ld_variant_clear(&record);
  return result;
}

std::vector<AllowedValue> AllowedValuesOf(const Schema& schema, const std::string& name) {
  std::vector<AllowedValue> values;
  if (Ask<bool>(ld_schema_get_allow_any_value, schema.Get(), name.c_str())) return values;
  const auto list =
      Receive<ld_object_list>(ld_schema_get_allowed_values, schema.Get(), name.c_str());
  const auto count = Ask<std::uint64_t>(ld_object_list_get_count, list.Get());
  for (std::uint64_t i = 0; i < count; ++i) {
    const auto object = Receive<ld_object>(ld_object_list_get_at, list.Get(), i);
    values.push_back(AllowedValueOf(reinterpret_cast<ld_allowed_value*>(object.Get())));
  }
  return values;
}

/// The columns of the document as a table: reading a schema does not tell which are nullable.
Table ColumnsOf(const Json& document) {
  return Table::FromJson(Table::FromJson(document)[0]["columns"].As<Json>());
}

bool IsNullable(const Table& columns, const std::string& name) {
  if (!columns.HasColumn("nullable")) return false;
  for (const Row row : columns)
    if (row["name"].ToText() == name)
      return row["nullable"].Type() == LD_VALUE_TYPE_BOOL && row["nullable"].As<bool>();
  return false;
}

ColumnRule RuleOf(const Schema& schema, const Table& columns, const std::string& name) {
  ColumnRule rule;
  rule.name = name;
  rule.type = schema.TypeOf(name);
  rule.width = schema.WidthOf(name);
  rule.isNullable = IsNullable(columns, name);
  rule.allowed = AllowedValuesOf(schema, name);
  if (rule.type == LD_VALUE_TYPE_INVALID)
    throw Error("column '" + name +
                "': the type is none of integer, double, string, date, boolean, json");
  return rule;
}

std::vector<ColumnRule> RulesOf(const std::string& text) {
  const Json document = ParseJson(text);
  const auto first = text.find_first_not_of("\xEF\xBB\xBF \t\r\n");
  if (text[first] != '{') throw Error("a schema is a JSON object");
  if (!Table::FromJson(document).HasColumn("columns")) throw Error("a schema has \"columns\"");
  const Schema schema = Schema::Parse(text);
  Call(ld_schema_check_consistency, schema.Get());
  const std::vector<std::string> names = schema.ColumnNames();
  if (names.empty()) return {};
  const Table columns = ColumnsOf(document);
  std::vector<ColumnRule> rules;
  for (const std::string& name : names) rules.push_back(RuleOf(schema, columns, name));
  return rules;
}

}  // namespace

std::vector<ColumnRule> ReadRules(const std::string& path) {
  const std::string text = ReadDocument(path);
  try {
    return RulesOf(text);
  } catch (const Error& error) {
    throw BrokenSchema(DisplayName(path) + ": " + error.what());
  }
}

}  // namespace program
