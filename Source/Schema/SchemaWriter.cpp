#include "Schema/SchemaWriter.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "Documents/JsonDocumentImpl.h"
#include "Documents/JsonWriter.h"
// After the header above, which sets rapidjson's options.
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
  constexpr std::uint32_t kMaxCount = 1000;
  if (indentation.character == '\0') return;
  if (std::string_view(" \t\r\n").find(indentation.character) == std::string_view::npos ||
      indentation.count > kMaxCount)
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

/// A text of an allowed value, which may be the caller's own object and return null.
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

/// The text and the type come from one copy of the value: the object may return another one next
/// time.
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

// The value of an attribute, written by its type.

void WriteAttribute(Writer& writer, const Column&, const std::string& text) {
  Write(writer, std::string_view(text));
}
void WriteAttribute(Writer& writer, const Column&, std::int32_t number) { Write(writer, number); }
void WriteAttribute(Writer& writer, const Column&, bool flag) { Write(writer, flag); }
void WriteAttribute(Writer& writer, const Column&, ValueType type) {
  Write(writer, NameOfType(type));
}

/// The text of a default value. In a Bool column a number is true or false.
std::string DefaultText(ValueType columnType, const Core::Variant& value) {
  const bool isFlag = columnType == ValueType::Bool && Core::IsPrimitive(value.Type()) &&
                      Core::HasForm(value, Core::StorageForm::Value);
  if (isFlag) return Core::ToInt64(value) != 0 ? "true" : "false";
  return Core::ToText(value);
}

// The caller's object may change the column while its text is read: a copy holds the object, and
// positions are checked again. What is added meanwhile is left out: each object might add another.

void WriteAttribute(Writer& writer, const Column& column, const Core::Variant& value) {
  const Structures::_VARIANT& record = value;
  const Core::Variant held(record);
  Write(writer, std::string_view(DefaultText(column.Get<attributes::Type>(), held)));
}

void WriteAttribute(Writer& writer, const Column&, const attributes::AllowedValueList& values) {
  writer.StartArray();
  const std::size_t count = values.size();
  for (std::size_t i = 0; i < std::min(count, values.size()); ++i) {
    const Core::Ptr<IAllowedValue> held(values[i].Get());
    Write(writer, *held);
  }
  writer.EndArray();
}

/// The value of an attribute if it is to be written, else null.
/// @throws std::out_of_range if a required attribute is missing
template <class A>
const typename A::Value* FindToWrite(const Column& column) {
  if constexpr (A::kWriting == Writing::Required) {
    return &column.Get<A>();
  } else {
    const auto* value = column.Find<A>();
    if constexpr (A::kWriting == Writing::IfNotEmpty)
      if (value && value->empty()) return nullptr;
    return value;
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
  const std::uint64_t count = columns.Count();
  for (std::uint64_t i = 0; i < count; ++i)
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
