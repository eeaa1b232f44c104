#include "Prelude.h"

namespace Data::tests {

namespace {

/// What a careless cast makes of an object: a pointer that says what it is not.
template <class Interface, class Actual>
Interface* Disguised(const Ptr<Actual>& object) {
  return reinterpret_cast<Interface*>(object.Get());
}

/// A call that makes an object, given its arguments but the last two.
template <class Interface, class Make, class... Arguments>
auto Making(Make make, Arguments... arguments) {
  return [=](IErrorCode** error) {
    Ptr<Interface> out;
    return make(arguments..., out.Receive(), error);
  };
}

Ptr<ISchema> SomeSchema() {
  const Structures::_UUID uuid{};
  Ptr<ISchema> schema;
  EXPECT_TRUE(Data_CreateSchema(&uuid, "", "", schema.Receive(), nullptr));
  return schema;
}

}  // namespace

TEST(WrongInterface, IsAFailureOfEveryGuardedArgument) {
  const auto list = New(Data_CreateObjectList);
  const auto base64 = New(Data_CreateEncodingInstanceBase64);
  const auto schema = SomeSchema();
  const auto dictionary = New(Data_CreateVariantDictionary);
  IArray* const bytes = Disguised<IArray>(list);
  IJsonDocument* const document = Disguised<IJsonDocument>(list);
  const struct {
    const char* what;
    std::function<bool(IErrorCode**)> call;
  } cases[] = {
      {"an enumeration", Making<IEnum>(Data_CreateEnum, Disguised<IObjectList>(dictionary))},
      {"a secure string", Making<ISecureString>(Data_CreateSecureString, Disguised<IString>(list))},
      {"a key", Making<IHashing>(Data_CreateHashingInstanceHmacSha2, 0u, bytes)},
      {"encoding", Making<IArray>([&](auto... all) { return base64->Encode(bytes, all...); })},
      {"decoding", Making<IArray>([&](auto... all) { return base64->Decode(bytes, all...); })},
      {"delimited text", Making<IString>([&](IString** out, IErrorCode** error) {
         return Data_ConvertTableToCsv(Disguised<ITable>(list), ",", out, false, error);
       })},
      {"JSON", Making<IJsonDocument>(Data_TableToJson, Disguised<ITable>(list))},
      {"JSON of a row", Making<IJsonDocument>(Data_TableRowToJson, Disguised<IRow>(list))},
      {"a table", Making<ITable>(Data_JsonToTable, document)},
      {"a schema", Making<ISchema>(Data_ParseSchema, document)},
      {"an allowed value",
       [&](IErrorCode** error) {
         return schema->AddAllowedValue("a", Disguised<IAllowedValue>(list), error);
       }},
      {"a list of allowed values",
       [&](IErrorCode** error) {
         return schema->SetAllowedValues("a", Disguised<IObjectList>(dictionary), error);
       }},
  };
  for (const auto& c : cases) EXPECT_EQ(Failure(c.call).find("Memory address ["), 0u) << c.what;
  EXPECT_EQ(schema->GetColumnCount(), 0) << "a failure adds no column";
}

TEST(WrongInterface, IsThrownOrUnequalWithoutAGuard) {
  const auto list = New(Data_CreateObjectList);
  const auto string = Core::MakeString("a text");
  const auto date = Date("2024-01-01").As<Ptr<IDateTime>>();
  const std::string start = "Memory address [";
  EXPECT_EQ(ThrownBy([&] { string->Compare(Disguised<IString>(list), true); }).find(start), 0u);
  EXPECT_EQ(ThrownBy([&] { date->CompareTo(Disguised<IDateTime>(list)); }).find(start), 0u);
  const auto json = JsonVariant("{}").As<Ptr<IJsonDocument>>();
  EXPECT_FALSE(json->Equals(Disguised<IJsonDocument>(list)));
  const auto xml = New(Data_CreateXmlDocument);
  xml->SetContent("<a/>", 4);
  EXPECT_FALSE(xml->Equals(Disguised<IXmlDocument>(json)));
}

#if !defined(__SANITIZE_ADDRESS__)  // which rejects such an object before the library sees it
TEST(WrongInterface, ObjectsWithoutTypeInformationAreTrusted) {
  // As compilers without it, and other languages, build them: nothing stands
  // before the slots (17, and two for destruction).
  const auto string = Core::MakeString("a text");
  void** table = nullptr;
  std::memcpy(&table, static_cast<const void*>(string.Get()), sizeof table);
  void* bare[1 + 19] = {nullptr};
  std::copy_n(table, 19, bare + 1);
  void** const bareTable = bare + 1;
  std::memcpy(static_cast<void*>(string.Get()), &bareTable, sizeof bareTable);

  Ptr<ISecureString> secure;
  EXPECT_TRUE(Data_CreateSecureString(string.Get(), secure.Receive(), nullptr));
  EXPECT_EQ(Core::MakeString("a text")->Compare(string.Get(), true), 0);
  const Core::Variant object =
      Reference(Structures::ValueType::IObject, Ptr<Core::IObject>(string));
  EXPECT_EQ(ThrownBy([&] { Core::CastToInterface<IArray>(Ptr<Core::IObject>(string)); }),
            "Cannot cast to desired interface: Interface: struct Core::IObject Desired Interface: "
            "struct Data::Interfaces::IArray");
  EXPECT_EQ(Core::RuntimeTypeName(*string), "struct unknown");
}
#endif

}  // namespace Data::tests
