#include "CallersText.h"

namespace Data::tests {

namespace {

/// What a careless cast makes of an object: a pointer that says what it is not.
template <class Interface, class Actual>
Interface* Disguised(const Ptr<Actual>& object) {
  return reinterpret_cast<Interface*>(object.Get());
}

/// An argument of a guarded call.
struct Argument {
  const char* what;
  std::string type;
  bool isObject, mayBeNull;
  /// The call with null, or else with an object of another interface.
  std::function<bool(bool isNull, IErrorCode** error)> call;
};

enum class Nullable : bool { No, Yes };

template <class T, Nullable nullable = Nullable::No, class Call>
Argument Takes(const char* what, Call call) {
  constexpr bool isObject = std::is_base_of_v<IObject, T>;
  return {what, Core::TypeName<T>(), isObject, nullable == Nullable::Yes,
          [=](bool isNull, IErrorCode** error) {
            if (isNull) return call(static_cast<T*>(nullptr), error);
            // A dictionary passes for a list in a careless cast, a list for anything else.
            if constexpr (std::is_same_v<T, IObjectList>)
              return call(Disguised<T>(New(Data_CreateVariantDictionary)), error);
            else
              return call(Disguised<T>(New(Data_CreateObjectList)), error);
          }};
}
/// The argument of an export that creates an object.
template <class T, class Interface>
Argument Takes(const char* what, bool (*create)(T*, Interface**, IErrorCode**)) {
  return Takes<T>(what, [=](T* argument, IErrorCode** error) {
    return create(argument, Ptr<Interface>().Receive(), error);
  });
}

}  // namespace

TEST(Arguments, AreNeitherNullNorOfAnotherInterface) {
  const auto base64 = New(Data_CreateEncodingInstanceBase64);
  const auto table = New(Data_CreateTable);
  const Variant value(1);
  const _UUID uuid{};
  Ptr<ISchema> schema;
  ASSERT_TRUE(Data_CreateSchema(&uuid, "", "", schema.Receive(), nullptr));
  const auto allowed = [&](const _VARIANT* record, const char* name, const char* description,
                           const char* category, const char* link, IErrorCode** error) {
    return Data_CreateAllowedValue(record, ComparisonOperator::None, name, description, category,
                                   link, Ptr<IAllowedValue>().Receive(), error);
  };
  const auto describe = [](const _UUID* id, const char* title, const char* text,
                           IErrorCode** error) {
    return Data_CreateSchema(id, title, text, Ptr<ISchema>().Receive(), error);
  };
  const auto separate = [](const char* text, const char* separator, IErrorCode** error) {
    return Data_ParseCsvWithSeparator(text, separator, Ptr<ITable>().Receive(), 1, error);
  };
  const auto write = [](ITable* from, const char* separator, IErrorCode** error) {
    return Data_ConvertTableToCsv(from, separator, Ptr<IString>().Receive(), false, error);
  };
  using Text = const char;
  using Errors = IErrorCode**;
  const Argument arguments[] = {
      Takes("enumeration", Data_CreateEnum),
      Takes("secure string", Data_CreateSecureString),
      Takes("JSON", Data_TableToJson),
      Takes("JSON of a row", Data_TableRowToJson),
      Takes("table of JSON", Data_JsonToTable),
      Takes("schema", Data_ParseSchema),
      Takes("ISO 8601", Data_CreateDateTimeFromIso8601),
      Takes<IArray>("encoding",
                    [&](IArray* bytes, Errors error) {
                      return base64->Encode(bytes, Ptr<IArray>().Receive(), error);
                    }),
      Takes<IArray>("decoding",
                    [&](IArray* bytes, Errors error) {
                      return base64->Decode(bytes, Ptr<IArray>().Receive(), error);
                    }),
      Takes<IArray, Nullable::Yes>("key",
                                   [](IArray* key, Errors error) {
                                     return Data_CreateHashingInstanceHmacSha2(
                                         0, key, Ptr<IHashing>().Receive(), error);
                                   }),
      Takes<IAllowedValue>("allowed",
                           [&](IAllowedValue* one, Errors error) {
                             return schema->AddAllowedValue("a", one, error);
                           }),
      Takes<IObjectList, Nullable::Yes>("allowed values",
                                        [&](IObjectList* list, Errors error) {
                                          return schema->SetAllowedValues("a", list, error);
                                        }),
      Takes<ITable>("merge",
                    [&](ITable* right, Errors error) {
                      return table->Merge(right, "a", {}, Ptr<ITable>().Receive(), error);
                    }),
      Takes<Text>("CSV",
                  [](Text* text, Errors error) {
                    return Data_ParseCsv(text, 1, Ptr<ITable>().Receive(), error);
                  }),
      Takes<Text>("CSV with problems",
                  [](Text* text, Errors error) {
                    return Data_ParseCsvWithErrors(text, Ptr<ITable>().Receive(),
                                                   Ptr<IObjectList>().Receive(), 1, 0, error);
                  }),
      Takes<Text>("text", [&](Text* text, Errors error) { return separate(text, ",", error); }),
      Takes<Text>("separator",
                  [&](Text* text, Errors error) { return separate("a", text, error); }),
      Takes<ITable>("CSV of", [&](ITable* from, Errors error) { return write(from, ",", error); }),
      Takes<Text>("between",
                  [&](Text* text, Errors error) { return write(table.Get(), text, error); }),
      Takes<const _UUID>(
          "UUID", [&](const _UUID* id, Errors error) { return describe(id, "", "", error); }),
      Takes<Text>("title", [&](Text* t, Errors error) { return describe(&uuid, t, "", error); }),
      Takes<Text>("about", [&](Text* t, Errors error) { return describe(&uuid, "", t, error); }),
      Takes<const _VARIANT>("value",
                            [&](const _VARIANT* record, Errors error) {
                              return allowed(record, "", "", "", "", error);
                            }),
      Takes<Text>("name", [&](Text* t, Errors e) { return allowed(&value, t, "", "", "", e); }),
      Takes<Text>("about", [&](Text* t, Errors e) { return allowed(&value, "", t, "", "", e); }),
      Takes<Text>("category", [&](Text* t, Errors e) { return allowed(&value, "", "", t, "", e); }),
      Takes<Text>("link", [&](Text* t, Errors e) { return allowed(&value, "", "", "", t, e); }),
  };
  for (const Argument& c : arguments) {
    const auto fails = [&](bool isNull) {
      return Failure([&](IErrorCode** error) { return c.call(isNull, error); });
    };
    if (!c.mayBeNull) {
      EXPECT_EQ(fails(true), "Pointer of " + c.type + " must not be null!") << c.what;
    }
    if (c.isObject) {
      EXPECT_EQ(fails(false).find("Memory address ["), 0u) << c.what;
    }
  }
  EXPECT_EQ(schema->GetColumnCount(), 0u) << "a failure adds no column";
  EXPECT_EQ(
      Failure([](Errors error) { return Data_ParseCsv("a", 0, Ptr<ITable>().Receive(), error); }),
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

TEST(Arguments, MayThrowAnything) {
  const struct {
    std::function<void()> onRead;
    std::uint32_t code;
    const char* message;
  } cases[] = {
      {[] { throw 5; }, 1, "Uncaught exception"},
      {[] { throw std::logic_error("a reason"); }, 2, "a reason"},
      {[] { throw std::bad_alloc(); }, 2, "std::bad_alloc"},
  };
  for (const auto& c : cases) {
    const auto text = Core::MakePtr<CallersText>("a");
    text->onRead = c.onRead;
    Ptr<ISecureString> out;
    Ptr<IErrorCode> error;
    EXPECT_FALSE(Data_CreateSecureString(text.Get(), out.Receive(), error.Receive())) << c.message;
    ASSERT_TRUE(error) << c.message;
    EXPECT_EQ(error->GetCode(), c.code) << c.message;
    EXPECT_EQ(MessageOf(error), c.message);
    EXPECT_FALSE(out) << c.message;
  }
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
