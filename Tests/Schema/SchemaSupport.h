#pragma once

#include "Prelude.h"

namespace Data::tests {

inline constexpr Structures::_UUID kSomeUuid = {
    0x6B29FC40, 0xCA47, 0x1067, {0xB3, 0x1D, 0x00, 0xDD, 0x01, 0x06, 0x62, 0xDA}};

inline const char kMissing[] = "invalid unordered_map<K, T> key";

inline Core::Ptr<Interfaces::ISchema> NewSchema() {
  Core::Ptr<Interfaces::ISchema> schema;
  Core::Ptr<Core::IErrorCode> error;
  EXPECT_TRUE(
      Data_CreateSchema(&kSomeUuid, "Roads", "All roads", schema.Receive(), error.Receive()))
      << MessageOf(error);
  return schema;
}

inline Core::Ptr<Interfaces::IJsonDocument> JsonDocument(std::string_view text) {
  Core::Ptr<Interfaces::IJsonDocument> document;
  EXPECT_TRUE(Data_CreateJsonDocument(document.Receive()));
  document->SetContent(text.data(), text.size());
  return document;
}

/// The schema of a document, or null and its failure.
inline Core::Ptr<Interfaces::ISchema> ParseSchema(std::string_view json, std::string& failure) {
  Core::Ptr<Interfaces::ISchema> schema;
  Core::Ptr<Core::IErrorCode> error;
  const bool success =
      Data_ParseSchema(JsonDocument(json).Get(), schema.Receive(), error.Receive());
  failure = MessageOf(error);
  EXPECT_EQ(success, static_cast<bool>(schema));
  EXPECT_EQ(success, failure.empty());
  return schema;
}

inline Core::Ptr<Interfaces::ISchema> ParseSchema(std::string_view json) {
  std::string failure;
  auto schema = ParseSchema(json, failure);
  EXPECT_EQ(failure, "") << json;
  return schema;
}

/// The document of a schema, without white space unless it is asked for.
inline std::string JsonOf(Interfaces::ISchema& schema, bool compact = true) {
  Core::Ptr<Interfaces::IJsonDocument> document;
  Core::Ptr<Core::IErrorCode> error;
  if (!schema.ToJson(document.Receive(), 0, 0, error.Receive())) return MessageOf(error);
  EXPECT_TRUE(document->IsValid());
  if (!compact) return std::string(Core::Utf8View(*document->GetContent()));
  Core::Ptr<Interfaces::IString> text;
  EXPECT_TRUE(document->ToCompactString(text.Receive(), error.Receive()));
  return std::string(Core::Utf8View(*text));
}

inline std::vector<std::string> ColumnNames(Interfaces::ISchema& schema) {
  Core::Ptr<Interfaces::IObjectList> list;
  EXPECT_TRUE(schema.GetColumnNames(list.Receive(), nullptr));
  std::vector<std::string> names;
  for (std::uint64_t i = 0; i < list->GetCount(); ++i)
    names.emplace_back(Core::Utf8View(*Core::CastToInterface<Interfaces::IString>(list->GetAt(i))));
  return names;
}

inline Core::Variant DefaultValue(Interfaces::ISchema& schema, const char* column) {
  Core::Variant value;
  EXPECT_TRUE(schema.GetDefaultValue(column, &value, nullptr)) << column;
  return value;
}

inline std::vector<Core::Ptr<Interfaces::IAllowedValue>> AllowedValues(Interfaces::ISchema& schema,
                                                                       const char* column) {
  Core::Ptr<Interfaces::IObjectList> list;
  EXPECT_TRUE(schema.GetAllowedValues(column, list.Receive(), nullptr)) << column;
  std::vector<Core::Ptr<Interfaces::IAllowedValue>> values;
  for (std::uint64_t i = 0; list && i < list->GetCount(); ++i)
    values.push_back(Core::CastToInterface<Interfaces::IAllowedValue>(list->GetAt(i)));
  return values;
}

inline Core::Ptr<Interfaces::IAllowedValue> AllowedValue(
    const Core::Variant& value,
    Structures::ComparisonOperator comparison = Structures::ComparisonOperator::Equal) {
  Core::Ptr<Interfaces::IAllowedValue> allowed;
  EXPECT_TRUE(Data_CreateAllowedValue(&value, comparison, "Shown", "Described", "Sorted", "Linked",
                                      allowed.Receive(), nullptr));
  return allowed;
}

}  // namespace Data::tests
