#pragma once

#include "Sweep/Operation.h"

/// What the operations of the sweep work on.
namespace Data::tests {

inline constexpr char kName[] = "a name of more than sixteen bytes";
inline constexpr char kText[] =
    "Stra\xC3\x9F"
    "e, 12 \xE2\x82\xAC, more than sixteen bytes";
inline constexpr char kCsv[] =
    "id;name;date\n1;\"a \"\"quoted\"\" text\";2024-11-14\n2;a text without;\n3\n";
inline constexpr char kBadCsv[] = "a,b\n1,2\n1,2,3,4\n3,4\n1,2,3\n";
inline constexpr char kJson[] =
    R"([{"id":1,"a name of more than sixteen bytes":"a text with \u20ac and \" and more"},
        {"id":2.5,"list":[1,[true,null]],"object":{"b":{"c":"d"}}}])";
inline constexpr char kXml[] =
    "<r a='1' b='&amp;'><!-- c --><x>a longer text &#8364; than that</x><y/></r>";
inline constexpr char kOtherJson[] = R"([[[["a text of more than sixteen bytes \u20ac"]]]])";
inline constexpr char kOtherXml[] = "<r><x><y z='a text of more than sixteen bytes'/></x></r>";
inline constexpr char kOddSchema[] =
    R"({"columns":[{"name":"n","type":"string","width":1,"decimals":1,"an unknown member of some length":{}}]})";
inline constexpr Structures::_UUID kUuid = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
inline const std::string kLargeCsv = [] {
  std::string text = "number,date,text\n";
  while (text.size() < 300'000) text += "1,2024-11-14T10:20:30Z," + std::string(500, 'x') + "\n";
  return text;
}();

inline const Variant kValue(kText), kDate = Date("2024-11-14T10:20:30.5Z");

template <auto factory, const auto& text>
auto Document() {
  const auto document = New(factory);
  document->SetContent(text, std::size(text) - 1);
  return document;
}
inline const auto Json = Document<Data_CreateJsonDocument, kJson>;
inline const auto Xml = Document<Data_CreateXmlDocument, kXml>;

inline Ptr<IString> Utf8() { return MakeString(kText); }
inline Ptr<IString> Wide() {
  const auto text = New(Data_CreateString);
  text->SetWide(std::u16string(40, u'\u20AC').c_str(), 40);
  return text;
}
template <std::uint32_t codePage>
Ptr<IString> Text() {
  const auto text = New(Data_CreateString);
  text->SetMultiByte(std::string(300, '\xE4').c_str(), 300, codePage);
  return text;
}
inline Ptr<IArray> Bytes() {
  const auto array = New(Data_CreateArray);
  array->SetData("QUJDREVGR0hJSktMTU5PUFFSU1RVVldYWVo=", 1, 36);
  return array;
}
inline Ptr<IObjectList> Texts() {
  const auto list = New(Data_CreateObjectList);
  for (const char* text : {kName, kText}) list->Add(MakeString(text).Get());
  return list;
}
/// Has so many entries that the next one makes the map grow.
inline Ptr<IVariantDictionary> Dictionary() {
  const auto dictionary = New(Data_CreateVariantDictionary);
  const Variant name(kName), id("id");
  EXPECT_TRUE(dictionary->Set(&name, &kValue, nullptr) && dictionary->Set(&id, &name, nullptr));
  for (Variant key(2); key.value[0] < 16; ++key.value[0])
    EXPECT_TRUE(dictionary->Set(&key, &id, nullptr));
  return dictionary;
}
inline Ptr<IConfiguration> Configuration() {
  const auto configuration = New(Data_CreateConfiguration);
  configuration->Set(kName, &kValue);
  return configuration;
}
inline Ptr<IProperties> Properties() {
  const auto properties = New(Data_CreateProperties);
  EXPECT_TRUE(properties->Register(kName, ValueType::String, true, nullptr, nullptr));
  return properties;
}
inline Ptr<IEnum> Enum() { return Made<IEnum>(Data_CreateEnum, Texts().Get()); }
inline Ptr<IConstrainedValue> Constrained() {
  const Variant bound("m");
  return Made<IConstrainedValue>(Data_CreateConstrainedValue, &bound, &bound, &bound);
}
inline Ptr<IAllowedValue> Allowed() {
  return Made<IAllowedValue>(Data_CreateAllowedValue, &kDate, ComparisonOperator::None, kName,
                             kText, "", "");
}
inline Ptr<IObjectList> AllowedValues() {
  const auto list = New(Data_CreateObjectList);
  for (int i = 0; i < 2; ++i) list->Add(Allowed().Get());
  return list;
}
inline Ptr<ISecureString> Secret() {
  return Made<ISecureString>(Data_CreateSecureString, Utf8().Get());
}
inline Ptr<IHashing> Hmac() {
  return Made<IHashing>(Data_CreateHashingInstanceHmacSha2, 2, Bytes().Get());
}
inline Ptr<IDateTime> Moment() { return kDate.As<Ptr<IDateTime>>(); }
inline Ptr<ITable> Table() {
  const auto table = New(Data_CreateTable);
  for (const char* name : {"id", "name", kName}) table->AddColumn(name);
  const Variant rows[][3] = {{0, kText, kDate},
                             {Text<1252>(), Wide(), Json()},
                             {2, kText, Xml()},
                             {Core::Null, Core::Null}};
  for (const auto& cells : rows) table->AddRow(cells, cells[1].IsNull() ? 1 : 3);
  table->GetHeader()->SetName(kName);
  return table;
}
inline Ptr<ITable> Indexed() {
  const auto table = Table();
  EXPECT_TRUE(table->BuildIndex(1, table->GetColumn(0), nullptr));
  // Hashing this key again takes memory.
  Core::GetObject<IString>(*table->GetCellAt(1, 0))->GetWide();
  return table;
}
inline Ptr<IValue> Value() { return Made<IValue>(&IRow::GetValue, Table()->GetRow(0), 2); }
inline Ptr<ISchema> EmptySchema() { return Made<ISchema>(Data_CreateSchema, &kUuid, kName, kText); }
inline Ptr<ISchema> Schema() {
  const auto schema = EmptySchema();
  for (const char* column : {"width", kName})
    EXPECT_TRUE(schema->AddColumnFull(column, kName, kName, ValueType::DateTime, 40, 2, kText,
                                      kName, nullptr));
  EXPECT_TRUE(schema->SetDefaultValue(kName, &kDate, nullptr));
  EXPECT_TRUE(schema->SetAllowedValues(kName, AllowedValues().Get(), nullptr));
  return schema;
}
/// With a column that has a unit only.
inline Ptr<ISchema> UnitSchema() {
  auto schema = EmptySchema();
  EXPECT_TRUE(schema->SetUnit("new", kText, nullptr));
  return schema;
}
inline Ptr<IJsonDocument> SchemaDocument() {
  Ptr<IJsonDocument> document;
  EXPECT_TRUE(Schema()->ToJson(document.Receive(), ' ', 2, nullptr));
  return document;
}

}  // namespace Data::tests
