#pragma once

#include "Prelude.h"

namespace Data::tests {

inline constexpr _UUID kSomeUuid = {
    0x6B29FC40, 0xCA47, 0x1067, {0xB3, 0x1D, 0x00, 0xDD, 0x01, 0x06, 0x62, 0xDA}};

inline const char kMissing[] = "invalid unordered_map<K, T> key";

inline Ptr<ISchema> NewSchema() {
  return Made<ISchema>(Data_CreateSchema, &kSomeUuid, "Roads", "All roads");
}

/// A schema with a column "x".
inline Ptr<ISchema> SchemaWithColumn(ValueType type = ValueType::Int64) {
  auto schema = NewSchema();
  EXPECT_TRUE(schema->AddColumn("x", type, 5, 2, nullptr));
  return schema;
}

/// The schema of a document, or null and its failure.
inline Ptr<ISchema> ParseSchema(std::string_view json, std::string& failure) {
  Ptr<ISchema> schema;
  Ptr<IErrorCode> error;
  const auto document = JsonVariant(json).As<Ptr<IJsonDocument>>();
  const bool isRead = Data_ParseSchema(document.Get(), schema.Receive(), error.Receive());
  failure = MessageOf(error);
  EXPECT_EQ(isRead, static_cast<bool>(schema));
  EXPECT_EQ(isRead, failure.empty());
  return schema;
}

/// The document of a schema without white space, or the failure.
inline std::string JsonOf(ISchema& schema) {
  Ptr<IJsonDocument> document;
  Ptr<IErrorCode> error;
  if (!schema.ToJson(document.Receive(), 0, 0, error.Receive())) return MessageOf(error);
  return Made<IString>(&IJsonDocument::ToCompactString, document)->GetUtf8();
}

/// A document as it is written again after it was read, or the failure.
inline std::string Rewritten(std::string_view json) {
  std::string failure;
  const auto schema = ParseSchema(json, failure);
  return schema ? JsonOf(*schema) : failure;
}

inline std::vector<std::string> ColumnNames(ISchema& schema) {
  const auto list = Made<IObjectList>(&ISchema::GetColumnNames, &schema);
  std::vector<std::string> names;
  for (std::uint64_t i = 0; i < list->GetCount(); ++i)
    names.emplace_back(Core::Utf8View(*Core::CastToInterface<IString>(list->GetAt(i))));
  return names;
}

inline Variant DefaultValue(ISchema& schema, const char* column) {
  Variant value;
  EXPECT_TRUE(schema.GetDefaultValue(column, &value, nullptr)) << column;
  return value;
}

inline std::vector<Ptr<IAllowedValue>> AllowedValues(ISchema& schema, const char* column) {
  const auto list = Made<IObjectList>(&ISchema::GetAllowedValues, &schema, column);
  std::vector<Ptr<IAllowedValue>> values;
  for (std::uint64_t i = 0; list && i < list->GetCount(); ++i)
    values.push_back(Core::CastToInterface<IAllowedValue>(list->GetAt(i)));
  return values;
}

inline Ptr<IAllowedValue> AllowedValue(const Variant& value) {
  return Made<IAllowedValue>(Data_CreateAllowedValue, &value, ComparisonOperator::LessOrEqual,
                             "Shown", "Described", "Sorted", "Linked");
}

}  // namespace Data::tests
