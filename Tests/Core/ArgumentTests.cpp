#include "Prelude.h"

namespace Data::tests {

namespace {

/// What a careless cast makes of an object: a pointer that says what it is not.
template <class Interface, class Actual>
Interface* Disguised(const Ptr<Actual>& object) {
  return reinterpret_cast<Interface*>(object.Get());
}

/// An export that creates an object, given its argument.
template <class Interface, class Make>
auto Making(Make make) {
  return [=](auto* argument, IErrorCode** error) {
    Ptr<Interface> out;
    return make(argument, out.Receive(), error);
  };
}

Ptr<ISchema> SomeSchema() {
  const Structures::_UUID uuid{};
  Ptr<ISchema> schema;
  EXPECT_TRUE(Data_CreateSchema(&uuid, "", "", schema.Receive(), nullptr));
  return schema;
}

/// A call, given the argument in question.
template <class Argument>
struct Taking {
  const char* what;
  std::function<bool(Argument*, IErrorCode**)> call;
};

/// The calls fail without the argument and, the message unchanged, leave nothing behind.
template <class Argument>
void ExpectNullFails(std::initializer_list<Taking<Argument>> calls) {
  const std::string message = "Pointer of " + Core::TypeName<Argument>() + " must not be null!";
  for (const auto& c : calls)
    EXPECT_EQ(Failure([&](IErrorCode** error) { return c.call(nullptr, error); }), message)
        << c.what;
}

/// The same for an argument that is an object of another interface.
template <class Interface>
void ExpectWrongFails(std::initializer_list<Taking<Interface>> calls) {
  // A dictionary passes for a list in a careless cast, a list for anything else.
  const auto list = New(Data_CreateObjectList);
  const auto dictionary = New(Data_CreateVariantDictionary);
  auto* const wrong = std::is_same_v<Interface, IObjectList> ? Disguised<Interface>(dictionary)
                                                             : Disguised<Interface>(list);
  for (const auto& c : calls)
    EXPECT_EQ(Failure([&](IErrorCode** error) { return c.call(wrong, error); }).find("Memory addr"),
              0u)
        << c.what;
}

template <class Interface>
void ExpectOnlyItsObjects(std::initializer_list<Taking<Interface>> calls) {
  ExpectNullFails(calls);
  ExpectWrongFails(calls);
}

}  // namespace

TEST(Arguments, ThatAreObjectsAreChecked) {
  const auto base64 = New(Data_CreateEncodingInstanceBase64);
  const auto table = New(Data_CreateTable);
  const auto schema = SomeSchema();
  ExpectOnlyItsObjects<IObjectList>({{"an enumeration", Making<IEnum>(Data_CreateEnum)}});
  ExpectOnlyItsObjects<IString>(
      {{"a secure string", Making<ISecureString>(Data_CreateSecureString)}});
  ExpectOnlyItsObjects<IArray>({
      {"encoding",
       [&](IArray* bytes, IErrorCode** error) {
         Ptr<IArray> out;
         return base64->Encode(bytes, out.Receive(), error);
       }},
      {"decoding",
       [&](IArray* bytes, IErrorCode** error) {
         Ptr<IArray> out;
         return base64->Decode(bytes, out.Receive(), error);
       }},
  });
  ExpectOnlyItsObjects<ITable>({
      {"JSON", Making<IJsonDocument>(Data_TableToJson)},
      {"CSV",
       [](ITable* given, IErrorCode** error) {
         Ptr<IString> out;
         return Data_ConvertTableToCsv(given, ",", out.Receive(), false, error);
       }},
      {"a merge",
       [&](ITable* right, IErrorCode** error) {
         Ptr<ITable> out;
         return table->Merge(right, "a", Structures::MergeMode::All, out.Receive(), error);
       }},
  });
  ExpectOnlyItsObjects<IRow>({{"JSON of a row", Making<IJsonDocument>(Data_TableRowToJson)}});
  ExpectOnlyItsObjects<IJsonDocument>({
      {"a table", Making<ITable>(Data_JsonToTable)},
      {"a schema", Making<ISchema>(Data_ParseSchema)},
  });
  ExpectOnlyItsObjects<IAllowedValue>(
      {{"an allowed value", [&](IAllowedValue* value, IErrorCode** error) {
          return schema->AddAllowedValue("a", value, error);
        }}});
  // Null is allowed.
  ExpectWrongFails<IObjectList>({{"allowed values", [&](IObjectList* values, IErrorCode** error) {
                                    return schema->SetAllowedValues("a", values, error);
                                  }}});
  ExpectWrongFails<IArray>({{"a key", [](IArray* key, IErrorCode** error) {
                               Ptr<IHashing> out;
                               return Data_CreateHashingInstanceHmacSha2(0, key, out.Receive(),
                                                                         error);
                             }}});
  EXPECT_EQ(schema->GetColumnCount(), 0u) << "a failure adds no column";
}

TEST(Arguments, ThatAreTextsOrRecordsAreChecked) {
  const Variant value(1);
  const _UUID uuid{};
  const auto table = New(Data_CreateTable);
  const auto csv = [](const char* content, std::uint64_t size, IErrorCode** error) {
    Ptr<ITable> out;
    return Data_ParseCsv(content, size, out.Receive(), error);
  };
  const auto separated = [](const char* content, const char* separator, IErrorCode** error) {
    Ptr<ITable> out;
    return Data_ParseCsvWithSeparator(content, separator, out.Receive(), 1, error);
  };
  const auto allowed = [&](const _VARIANT* record, int nullText, IErrorCode** error) {
    const char* texts[4] = {"", "", "", ""};
    if (nullText >= 0) texts[nullText] = nullptr;
    Ptr<IAllowedValue> out;
    return Data_CreateAllowedValue(record, ComparisonOperator::None, texts[0], texts[1], texts[2],
                                   texts[3], out.Receive(), error);
  };
  const auto schema = [](const _UUID* id, const char* title, const char* description,
                         IErrorCode** error) {
    Ptr<ISchema> out;
    return Data_CreateSchema(id, title, description, out.Receive(), error);
  };
  ExpectNullFails<const char>({
      {"CSV", [&](const char* text, IErrorCode** error) { return csv(text, 1, error); }},
      {"CSV with problems",
       [](const char* text, IErrorCode** error) {
         Ptr<ITable> out;
         Ptr<IObjectList> problems;
         return Data_ParseCsvWithErrors(text, out.Receive(), problems.Receive(), 1, 0, error);
       }},
      {"CSV with a separator",
       [&](const char* text, IErrorCode** error) { return separated(text, ",", error); }},
      {"a separator",
       [&](const char* text, IErrorCode** error) { return separated("a", text, error); }},
      {"a separator to write",
       [&](const char* text, IErrorCode** error) {
         Ptr<IString> out;
         return Data_ConvertTableToCsv(table.Get(), text, out.Receive(), false, error);
       }},
      {"ISO 8601", Making<IDateTime>(Data_CreateDateTimeFromIso8601)},
      {"a title",
       [&](const char* text, IErrorCode** error) { return schema(&uuid, text, "", error); }},
      {"a description",
       [&](const char* text, IErrorCode** error) { return schema(&uuid, "", text, error); }},
      {"a display name",
       [&](const char*, IErrorCode** error) { return allowed(&value, 0, error); }},
      {"a description", [&](const char*, IErrorCode** error) { return allowed(&value, 1, error); }},
      {"a category", [&](const char*, IErrorCode** error) { return allowed(&value, 2, error); }},
      {"a link", [&](const char*, IErrorCode** error) { return allowed(&value, 3, error); }},
  });
  ExpectNullFails<const _UUID>(
      {{"a UUID", [&](const _UUID* id, IErrorCode** error) { return schema(id, "", "", error); }}});
  ExpectNullFails<const _VARIANT>(
      {{"an allowed value",
        [&](const _VARIANT* record, IErrorCode** error) { return allowed(record, -1, error); }}});
  EXPECT_EQ(Failure([&](IErrorCode** error) { return csv("a", 0, error); }),
            "Size cannot be 0. We don't call strlen internally because data might not contain null "
            "terminator!");
}

TEST(Arguments, OfAnotherInterfaceAreThrownOrUnequalWithoutAGuard) {
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
TEST(Arguments, WithoutTypeInformationAreTrusted) {
  // As other languages and compilers without it build them: nothing precedes
  // the virtual table (17 slots, and two for destruction).
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
