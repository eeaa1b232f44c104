#include "Schema/SchemaWriter.h"

#include <stdexcept>
#include <string>

#include "Documents/JsonDocumentImpl.h"
#include "Documents/JsonWriter.h"
// Behind the settings of the line above.
#include <rapidjson/prettywriter.h>

#include "Schema/SchemaImpl.h"
#include "Schema/SchemaNames.h"

namespace Data {

using Core::ValueType;
using Interfaces::IAllowedValue;

namespace {

using Writer = rapidjson::PrettyWriter<impl::TextBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>,
                                       impl::ThrowingAllocator>;

void SetIndentation(Writer& writer, Indentation indentation) {
  constexpr std::uint32_t kLongest = 1000;
  if (indentation.character == '\0') return;
  if (std::string_view(" \t\r\n").find(indentation.character) == std::string_view::npos ||
      indentation.count > kLongest)
    throw std::runtime_error(
        "Unsupported indentation! Use at most 1000 spaces, tabs or line breaks per level.");
  writer.SetIndent(indentation.character, indentation.count);
}

void WriteKey(Writer& writer, std::string_view key) { writer.Key(key.data(), key.size()); }

void Write(Writer& writer, std::string_view text) { writer.String(text.data(), text.size()); }
void Write(Writer& writer, std::int32_t number) { writer.Int64(number); }
void Write(Writer& writer, bool flag) { writer.Bool(flag); }

template <class Value>
void WriteMember(Writer& writer, std::string_view key, const Value& value) {
  WriteKey(writer, key);
  Write(writer, value);
}

/// A text of an allowed value, which may be of any implementation.
void WriteMember(Writer& writer, std::string_view key, const char* text) {
  WriteMember(writer, key, std::string_view(text ? text : ""));
}

std::string UuidText(const Structures::_UUID& uuid) { return Core::ToText(Core::Variant(uuid)); }

void WriteHeader(Writer& writer, const SchemaHeader& header) {
  writer.StartObject();
  WriteMember(writer, "uuid", std::string_view(UuidText(header.uuid)));
  WriteMember(writer, "title", std::string_view(header.title));
  WriteMember(writer, "description", std::string_view(header.description));
  WriteMember(writer, "identifierColumn", std::string_view(header.identifierColumn));
  WriteMember(writer, "version", header.version);
  writer.EndObject();
}

void Write(Writer& writer, IAllowedValue& allowed) {
  Core::Variant value;
  allowed.GetValue(&value);
  writer.StartObject();
  WriteMember(writer, "value", std::string_view(Core::ToText(value)));
  WriteMember(writer, "type", NameOfAllowedType(value.Type()));
  WriteMember(writer, "comparison", NameOfComparison(allowed.GetComparison()));
  WriteMember(writer, "displayName", allowed.GetDisplayName());
  WriteMember(writer, "description", allowed.GetDescription());
  WriteMember(writer, "category", allowed.GetCategory());
  WriteMember(writer, "helpUri", allowed.GetHelpUri());
  writer.EndObject();
}

// How an attribute's value appears in a document, by its type.

void WriteAttribute(Writer& writer, const Column&, const std::string& text) {
  Write(writer, std::string_view(text));
}
void WriteAttribute(Writer& writer, const Column&, std::int32_t number) { Write(writer, number); }
void WriteAttribute(Writer& writer, const Column&, bool flag) { Write(writer, flag); }
void WriteAttribute(Writer& writer, const Column&, ValueType type) {
  Write(writer, NameOfType(type));
}

/// The default value. In a column of flags every number is one.
void WriteAttribute(Writer& writer, const Column& column, const Core::Variant& value) {
  const bool isFlag = column.Get<attributes::Type>() == ValueType::Bool &&
                      Core::IsPrimitive(value.Type()) &&
                      Core::HasForm(value, Core::StorageForm::Value);
  Write(writer, std::string_view(isFlag ? (Core::ToInt64(value) != 0 ? "true" : "false")
                                        : Core::ToText(value)));
}

void WriteAttribute(Writer& writer, const Column&, const attributes::AllowedValueList& values) {
  writer.StartArray();
  for (const auto& value : values) Write(writer, *value);
  writer.EndArray();
}

template <class Value>
bool IsWorthWriting(const Value&) {
  return true;
}
bool IsWorthWriting(const attributes::AllowedValueList& values) { return !values.empty(); }

/// What `AddColumn` sets must be there; an empty list is left out like an
/// attribute that was never set.
template <class A>
const typename A::Value* FindToWrite(const Column& column) {
  if constexpr (attributes::HasInitial<A> && !std::is_same_v<A, attributes::AllowedValues>) {
    return &column.Get<A>();
  } else {
    const auto* value = column.Find<A>();
    return value && IsWorthWriting(*value) ? value : nullptr;
  }
}

void WriteColumn(Writer& writer, std::string_view name, const Column& column) {
  writer.StartObject();
  WriteMember(writer, "name", name);
  attributes::All::ForEach([&]<class A>(A) {
    if (const auto* value = FindToWrite<A>(column)) {
      WriteKey(writer, A::kKey);
      WriteAttribute(writer, column, *value);
    }
  });
  writer.EndObject();
}

void WriteColumns(Writer& writer, const impl::NameMap<Column>& columns) {
  writer.StartArray();
  for (std::uint64_t i = 0; i < columns.Count(); ++i)
    WriteColumn(writer, columns.NameAt(i), columns.ValueAt(i));
  writer.EndArray();
}

}  // namespace

Core::Ptr<Interfaces::IJsonDocument> WriteSchema(const SchemaImpl& schema,
                                                 Indentation indentation) {
  impl::TextBuffer text;
  Writer writer(text);
  SetIndentation(writer, indentation);
  writer.StartObject();
  WriteMember(writer, "$schema", std::string_view("./qv.schema.layer.json"));
  WriteKey(writer, "schema");
  WriteHeader(writer, schema.Header());
  WriteKey(writer, "columns");
  WriteColumns(writer, schema.Columns());
  writer.EndObject();
  return impl::JsonDocumentImpl::FromJson(text.View());
}

}  // namespace Data
