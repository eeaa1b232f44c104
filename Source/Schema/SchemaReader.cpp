#include "Schema/SchemaReader.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "Containers/AllowedValueImpl.h"
#include "Documents/DocumentText.h"
#include "Documents/JsonReader.h"
#include "Documents/JsonText.h"
#include "Platform/Uuids.h"
#include "Schema/SchemaMembers.h"
#include "Schema/SchemaNames.h"
#include "Schema/SchemaValidation.h"
#include "Schema/SchemaValues.h"

namespace Data {

using Core::Ptr;
using Core::ValueType;
using impl::JsonTree;
using impl::JsonValue;

namespace {

// -- Text to tree --

/// Builds a tree and measures its depth.
class NestingMeter : public rapidjson::BaseReaderHandler<> {
 public:
  explicit NestingMeter(JsonTree& tree) : tree_(tree) {}

  std::size_t MaxDepth() const { return maxDepth_; }

  bool Null() { return tree_.Null(); }
  bool Bool(bool value) { return tree_.Bool(value); }
  bool Int64(std::int64_t value) { return tree_.Int64(value); }
  bool Uint64(std::uint64_t value) { return tree_.Uint64(value); }
  bool Double(double value) { return tree_.Double(value); }
  bool String(const char* text, std::size_t length, bool copy) {
    return tree_.String(text, length, copy);
  }
  bool Key(const char* name, std::size_t length, bool copy) {
    return tree_.Key(name, length, copy);
  }
  bool StartObject() {
    Enter();
    return tree_.StartObject();
  }
  bool EndObject(std::size_t count) {
    --depth_;
    return tree_.EndObject(count);
  }
  bool StartArray() {
    Enter();
    return tree_.StartArray();
  }
  bool EndArray(std::size_t count) {
    --depth_;
    return tree_.EndArray(count);
  }

 private:
  void Enter() { maxDepth_ = std::max(maxDepth_, ++depth_); }

  JsonTree& tree_;
  std::size_t depth_ = 0;
  std::size_t maxDepth_ = 0;
};

/// Reads the text of a document into a tree, whose strings are copies.
/// @return false if the text is not JSON
/// @throws std::runtime_error if it is nested too deeply
bool ReadTree(Interfaces::IJsonDocument& document, JsonTree& tree) {
  constexpr std::size_t kDepthLimit = 1000;
  const Ptr<Interfaces::IString> content(document.GetContent());
  if (!content) return false;
  const impl::DocumentText text(*content);
  bool isJson = false;
  std::size_t maxDepth = 0;
  const auto read = [&](JsonTree& handler) {
    NestingMeter meter(handler);
    isJson = impl::ParseJson(impl::JsonTextOf(text.View()), meter);
    maxDepth = meter.MaxDepth();
    return isJson;
  };
  tree.Populate(read);
  if (isJson && maxDepth > kDepthLimit)
    throw std::runtime_error("The layer schema document is nested deeper than 1000 levels!");
  return isJson;
}

// -- Header --

/// Braces around an identifier are optional.
Structures::_UUID ReadUuid(std::string_view text) {
  std::string digits(text);
  if (text.size() >= 2 && text.starts_with('{') && text.ends_with('}'))
    digits = text.substr(1, text.size() - 2);
  Structures::_UUID uuid;
  if (digits.size() != Platform::kUuidTextLength || !Platform::UuidFromText(digits.c_str(), uuid))
    throw std::runtime_error("Invalid uuid format!" + std::string(text));
  return uuid;
}

SchemaHeader ReadHeader(const JsonValue& header) {
  SchemaHeader result;
  result.uuid = ReadUuid(GetText(header, "uuid"));
  result.title = GetText(header, "title");
  result.description = GetText(header, "description");
  result.identifierColumn = GetOptionalText(header, "identifierColumn");
  result.version = AsInteger(GetMember(header, "version"), "version");
  return result;
}

// -- Columns --

AllowedValueTexts ReadAllowedTexts(const JsonValue& allowed) {
  const auto text = [&](std::string_view key) {
    return std::string(GetOptionalText(allowed, key));
  };
  return {text("displayName"), text("description"), text("category"), text("helpUri")};
}

Ptr<Interfaces::IAllowedValue> ReadAllowedValue(const JsonValue& allowed) {
  const ValueType type = TypeOfName(GetText(allowed, "type"));
  Core::Variant value = ReadValue(type, GetText(allowed, "value"));
  return Core::MakePtr<AllowedValueImpl>(std::move(value),
                                         ComparisonOfName(GetText(allowed, "comparison")),
                                         ReadAllowedTexts(allowed));
}

// The value of an attribute from its member, by the attribute's type.

void Read(const JsonValue& member, std::string_view key, const Column&, std::string& value) {
  value = AsText(member, key);
}
void Read(const JsonValue& member, std::string_view key, const Column&, bool& value) {
  value = AsFlag(member, key);
}
void Read(const JsonValue& member, std::string_view key, const Column& column,
          Core::Variant& value) {
  value = ReadValue(column.Get<attributes::Type>(), AsText(member, key));
}
void Read(const JsonValue& member, std::string_view key, const Column&,
          attributes::AllowedValueList& values) {
  const auto elements = AsArray(member, key).GetArray();
  values.reserve(elements.Size());
  for (const JsonValue& element : elements)
    values.push_back(ReadAllowedValue(AsElement(element, key)));
}

template <class A>
constexpr bool kIsOptional = A::kReading == Reading::Optional || A::kReading == Reading::IfText;

/// The member of an optional attribute, or null.
template <class A>
const JsonValue* FindOptional(const JsonValue& object) {
  const JsonValue* member = FindMember(object, A::kKey);
  if constexpr (A::kReading == Reading::IfText)
    if (member && !member->IsString()) return nullptr;
  return member;
}

NewColumn ReadNewColumn(const JsonValue& column) {
  using attributes::Decimals, attributes::Type, attributes::Width;
  // A name ends at its first zero byte, as everywhere in the interface.
  const std::string_view name = GetText(column, "name").data();
  return {name, TypeOfName(GetText(column, Type::kKey)),
          AsInteger(GetMember(column, Width::kKey), Width::kKey),
          AsInteger(GetMember(column, Decimals::kKey), Decimals::kKey)};
}

void ReadColumn(const JsonValue& object, SchemaImpl& schema) {
  const NewColumn added = ReadNewColumn(object);
  Column column(added);
  attributes::All::ForEach([&]<class A>(A) {
    if constexpr (kIsOptional<A>)
      if (const JsonValue* member = FindOptional<A>(object))
        Read(*member, A::kKey, column, column.Edit<A>());
  });
  schema.Put(added.name, std::move(column));
}

}  // namespace

Ptr<SchemaImpl> ReadSchema(Interfaces::IJsonDocument& document) {
  JsonTree tree;
  if (!ReadTree(document, tree) || !tree.IsObject()) return Core::MakePtr<SchemaImpl>();
  const std::string violations = ViolationsOf(tree);
  const JsonValue* header = FindMember(tree, "schema");
  auto schema =
      Core::MakePtr<SchemaImpl>(header ? ReadHeader(AsObject(*header, "schema")) : SchemaHeader());
  schema->AppendLastError(violations);
  if (const JsonValue* columns = FindMember(tree, "columns"))
    for (const JsonValue& column : AsArray(*columns, "columns").GetArray())
      ReadColumn(AsElement(column, "columns"), *schema);
  return schema;
}

}  // namespace Data
