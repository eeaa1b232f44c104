#include "Script.h"

namespace Data::tests {
namespace {

std::string Text(const char* text) { return text ? std::string(text) + " " : "null "; }
std::string Text(std::integral auto value) { return std::to_string(value) + " "; }
std::string Text(ValueType type) { return std::string(Core::GetValueTypeName(type)) + " "; }
std::string Text(IObject* object) { return Describe(object); }
std::string Text(const Structures::_VARIANT& record) {
  const ValueType type = Core::TypeOf(record);
  if (type == ValueType::Unknown) return "";
  return Text(type) + Outcome([&] { return Core::ToText(record); }) + " ";
}
template <class... Values>
std::string All(const Values&... values) {
  return (Text(values) + ...);
}
template <class Entry>
std::string Each(std::integral auto count, Entry entry) {
  std::string text;
  for (decltype(count) i = 0; i < count; ++i) text += entry(i) + ", ";
  return text;
}
/// The records that an operation returns.
template <class Give>
std::string Given(Give give) {
  Variant first, second;
  if constexpr (std::is_invocable_v<Give, Structures::_VARIANT*>) {
    give(&first);
  } else {
    give(&first, &second);
  }
  return All(first, second);
}

/// The bytes as they are stored: reading them in an encoding would convert the string.
std::string Of(IString& text) {
  return Text(text.GetSize()).append(static_cast<const char*>(text.GetData()), text.GetSize());
}
std::string Of(IDateTime& date) { return Text(Variant(Ptr<IDateTime>(&date))); }
std::string Of(IErrorCode& error) { return All(error.GetCode(), error.GetMessage()); }
std::string Of(IArray& array) {
  const auto* bytes = static_cast<const char*>(std::as_const(array).GetData());
  return All(array.GetStride(), array.GetCount()).append(bytes, bytes ? array.GetSize() : 0);
}
std::string Of(IObjectList& list) {
  return Each(list.GetCount(),
              [&](auto i) { return Outcome([&] { return Text(list.GetAt(i)); }); });
}
std::string Of(IVariantList& list) {
  return Each(list.GetCount(),
              [&](auto i) { return Given([&](auto* value) { list.GetAt(i, value); }); });
}
std::string Of(IVariantPairList& list) {
  return Each(list.GetCount(), [&](auto i) {
    return Given([&](auto* key, auto* value) { list.GetAt(i, key, value, nullptr); });
  });
}
std::string Of(IVariantDictionary& dictionary) {
  Ptr<IVariantList> keys;
  EXPECT_TRUE(dictionary.GetKeys(keys.Receive(), nullptr));
  return Each(keys->GetCount(), [&](auto i) {
    return Given([&](auto* key, auto* value) {
      EXPECT_TRUE(keys->GetAt(i, key));
      dictionary.Get(key, value, nullptr);
    });
  });
}
std::string Of(IConfiguration& configuration) {
  return Each(configuration.GetNameCount(), [&](auto i) {
    const char* name = configuration.GetNameAt(i);
    return Text(name) + Given([&](auto* value) { configuration.Get(name, value); });
  });
}
std::string Of(IProperties& properties) {
  return Each(properties.GetCount(), [&](auto i) {
    const char* name = properties.GetNameAt(i);
    return Text(name) + Given([&](auto* value) { properties.Get(name, value, nullptr); });
  });
}
std::string Of(IConstrainedValue& constrained) {
  return Given([&](auto* min, auto* max) { constrained.GetConstraints(min, max); }) +
         Given([&](auto* value) { constrained.GetValue(value); });
}
/// Includes what its index finds.
std::string Of(ITable& table) {
  const auto columns = static_cast<std::int32_t>(table.GetColumnCount());
  IColumn* const indexed = table.GetIndexColumn();
  const auto row = [&](std::int64_t i) {
    IRow& row = *table.GetRow(i);
    const bool isFound = indexed && table.FindRow(row.GetCellAt(indexed->GetIndex())) == &row;
    return All("\n", row.GetIndex(), row.IsModified(), isFound) +
           Each(columns, [&](auto cell) { return Text(*row.GetCellAt(cell)); });
  };
  const auto column = [&](std::int32_t i) {
    IColumn& column = *table.GetColumn(i);
    const bool isFound = table.GetColumnByName(column.GetName()) == &column;
    return All(column.GetName(), column.GetType(), column.HasSeenNull(), isFound);
  };
  return All(table.GetHeader()->GetName(), table.GetHeader()->GetIndexName()) +
         Each(columns, column) + Each(table.GetRowCount(), row);
}
std::string Of(ISchema& schema) {
  Ptr<IJsonDocument> document;
  Ptr<IErrorCode> error;
  schema.ToJson(document.Receive(), 0, 0, error.Receive());
  return All(document.Get(), error.Get(), schema.HasAllowedValues("new"));
}
template <class Document>
requires requires(Document& document) { document.IsValid(); }
std::string Of(Document& document) { return All(document.IsValid(), document.GetContent()); }

template <class... Interfaces>
std::string AsOneOf(IObject* object) {
  std::string text = "an object ";
  const auto describe = [&](auto* found) {
    if (found) text = Of(*found);
    return found != nullptr;
  };
  static_cast<void>((describe(Core::InterfaceOf<Interfaces>(object)) || ...));
  return text;
}

}  // namespace

std::string Describe(IObject* object) {
  if (!object) return "null ";
  return AsOneOf<IString, IArray, IDateTime, IErrorCode, IObjectList, IVariantList,
                 IVariantPairList, IVariantDictionary, IConfiguration, IProperties,
                 IConstrainedValue, ITable, ISchema, IJsonDocument, IXmlDocument>(object);
}

std::string Describe(const Structures::_VARIANT& record) { return Text(record); }

}  // namespace Data::tests
