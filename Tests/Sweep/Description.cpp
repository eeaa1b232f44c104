#include "Sweep/Description.h"

namespace Data::tests {
namespace {

std::string Text(const char* text) { return text ? "\"" + std::string(text) + "\" " : "null "; }
std::string Text(bool value) { return value ? "yes " : "no "; }
std::string Text(std::integral auto value) { return std::to_string(value) + " "; }

template <class... Values>
std::string All(const Values&... values) {
  return (Text(values) + ...);
}

std::string Of(IString& text) { return Text(text.GetUtf8()); }
std::string Of(IArray& array) {
  const auto* bytes = static_cast<const char*>(array.GetData());
  return All(array.GetStride(), array.GetCount()) + std::string(bytes, bytes ? array.GetSize() : 0);
}
std::string Of(IDateTime& date) { return Core::ToText(Variant(Ptr<IDateTime>(&date))); }
std::string Of(IErrorCode& error) { return All(error.GetCode(), error.GetMessage()); }
std::string Of(IValue& value) { return Describe(*value.GetRecord()); }
std::string Of(IObjectList& list) {
  std::string text;
  for (std::uint64_t i = 0; i < list.GetCount(); ++i) text += Describe(list.GetAt(i)) + ", ";
  return text;
}
std::string Of(IVariantList& list) {
  std::string text;
  for (std::uint64_t i = 0; i < list.GetCount(); ++i) {
    Variant value;
    list.GetAt(i, &value);
    text += Describe(value) + ", ";
  }
  return text;
}
std::string Of(IVariantPairList& list) {
  std::string text;
  for (std::uint64_t i = 0; i < list.GetCount(); ++i) {
    Variant key, value;
    list.GetAt(i, &key, &value, nullptr);
    text += Describe(key) + ": " + Describe(value) + ", ";
  }
  return text;
}
std::string Of(IVariantDictionary& dictionary) {
  Ptr<IVariantList> keys;
  EXPECT_TRUE(dictionary.GetKeys(keys.Receive(), nullptr));
  std::string text;
  for (std::uint64_t i = 0; i < keys->GetCount(); ++i) {
    Variant key, value;
    keys->GetAt(i, &key);
    EXPECT_TRUE(dictionary.Get(&key, &value, nullptr));
    text += Describe(key) + ": " + Describe(value) + ", ";
  }
  return text;
}
std::string Of(IConfiguration& configuration) {
  std::string text;
  for (std::uint64_t i = 0; i < configuration.GetNameCount(); ++i) {
    const char* name = configuration.GetNameAt(i);
    Variant value;
    EXPECT_TRUE(configuration.Get(name, &value));
    text += Text(name) + Describe(value) + ", ";
  }
  return text;
}
std::string Of(IProperties& properties) {
  std::string text;
  for (std::uint64_t i = 0; i < properties.GetCount(); ++i) {
    const char* name = properties.GetNameAt(i);
    Variant value, ofDefault;
    EXPECT_TRUE(properties.Get(name, &value, nullptr));
    EXPECT_TRUE(properties.GetDefault(name, &ofDefault, nullptr));
    text += Text(name) + Text(properties.IsRequired(name, nullptr)) + Describe(value) +
            Describe(ofDefault) + ", ";
  }
  return text;
}
std::string Of(IEnum& options) {
  Ptr<IObjectList> list;
  EXPECT_TRUE(options.GetOptions(list.Receive(), nullptr));
  return All(options.GetIndex(), options.GetSelected()) + Of(*list);
}
std::string Of(IConstrainedValue& constrained) {
  Variant min, max, value;
  constrained.GetConstraints(&min, &max);
  constrained.GetValue(&value);
  return Describe(min) + Describe(value) + Describe(max);
}
std::string Of(IAllowedValue& allowed) {
  Variant value;
  allowed.GetValue(&value);
  return Describe(value) + All(static_cast<int>(allowed.GetComparison()), allowed.GetDisplayName(),
                               allowed.GetDescription(), allowed.GetCategory(),
                               allowed.GetHelpUri());
}
std::string Of(ISecureString& secret) {
  Ptr<IString> text;
  EXPECT_TRUE(secret.GetText(text.Receive(), nullptr));
  return All(secret.GetLength()) + Of(*text);
}
std::string Of(IColumn& column) {
  return All(column.GetName(), static_cast<int>(column.GetType()), column.GetIndex(),
             column.GetWidth(), column.GetDecimals(), column.IsHidden(), column.HasSeenNull(),
             column.IsReadOnly());
}
std::string Of(IRow& row) {
  std::string text = All(row.GetIndex(), row.IsModified());
  for (std::int32_t i = 0; i < row.GetCellCount(); ++i) text += Describe(*row.GetCellAt(i)) + "|";
  return text;
}
std::string Of(ITable& table) {
  std::string text = All(table.GetHeader()->GetName(), table.GetHeader()->GetIndexName());
  IColumn* const indexed = table.GetIndexColumn();
  for (std::int32_t i = 0; i < table.GetColumnCount(); ++i) {
    IColumn* const column = table.GetColumn(i);
    text += Of(*column) + All(table.GetColumnByName(column->GetName()) == column);
  }
  for (std::int64_t i = 0; i < table.GetRowCount(); ++i) {
    IRow* const row = table.GetRow(i);
    text += "\n" + Of(*row);
    if (indexed) text += Text(table.FindRow(row->GetCellAt(indexed->GetIndex())) == row);
  }
  return text;
}
std::string Of(ITableHeader& header) { return All(header.GetName(), header.GetColumnCount()); }
std::string Of(ISchema& schema) {
  Ptr<IJsonDocument> document;
  Ptr<IErrorCode> error;
  const bool isWritten = schema.ToJson(document.Receive(), 0, 0, error.Receive());
  return isWritten ? Describe(document.Get()) : MessageOf(error);
}
template <class Document>
requires requires(Document& document) { document.IsValid(); }
std::string Of(Document& document) {
  return All(document.IsValid()) + Describe(document.GetContent());
}

template <class... Interfaces>
std::string AsOneOf(IObject* object) {
  std::string text = "?";
  const auto describe = [&]<class Interface>(Interface* found) {
    if (found) text = Of(*found);
    return found != nullptr;
  };
  static_cast<void>((describe(Core::InterfaceOf<Interfaces>(object)) || ...));
  return text;
}

}  // namespace

std::string Describe(IObject* object) {
  return object ? AsOneOf<IString, IArray, IDateTime, IErrorCode, IValue, IObjectList, IVariantList,
                          IVariantPairList, IVariantDictionary, IConfiguration, IProperties, IEnum,
                          IConstrainedValue, IAllowedValue, ISecureString, IColumn, IRow, ITable,
                          ITableHeader, ISchema, IJsonDocument, IXmlDocument, IHtmlDocument,
                          IRtfDocument>(object)
                : "null";
}

std::string Describe(const Structures::_VARIANT& record) {
  const ValueType type = Core::TypeOf(record);
  if (type == ValueType::Unknown) return "";
  return std::string(Core::GetValueTypeName(type)) + " " + Core::ToText(record);
}

}  // namespace Data::tests
