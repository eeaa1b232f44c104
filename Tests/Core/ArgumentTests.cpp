#include "CallersText.h"

namespace Data::tests {

namespace {

/// What a careless cast makes of an object: a pointer that says what it is not.
template <class Interface, class Actual>
Interface* Disguised(const Ptr<Actual>& object) {
  return reinterpret_cast<Interface*>(object.Get());
}

}  // namespace

TEST(Arguments, OfAnotherInterfaceAreNotTaken) {
  const auto list = New(Data_CreateObjectList);
  const auto string = Core::MakeString("a text");
  const auto date = Date("2024-01-01").As<Ptr<IDateTime>>();
  const std::string start = "Memory address [";
  EXPECT_EQ(ThrownBy([&] { string->Compare(Disguised<IString>(list), true); }).find(start), 0u);
  EXPECT_EQ(ThrownBy([&] { date->CompareTo(Disguised<IDateTime>(list)); }).find(start), 0u);
  const _UUID uuid{};
  Ptr<ISchema> schema;
  ASSERT_TRUE(Data_CreateSchema(&uuid, "", "", schema.Receive(), nullptr));
  const auto map = New(Data_CreateVariantDictionary);
  const std::function<bool(IErrorCode**)> guarded[] = {
      [&](auto e) { return schema->AddAllowedValue("a", Disguised<IAllowedValue>(list), e); },
      [&](auto e) { return schema->SetAllowedValues("a", Disguised<IObjectList>(map), e); },
      [&](auto e) {
        return Data_CreateHashingInstanceHmacSha2(0, Disguised<IArray>(list),
                                                  Ptr<IHashing>().Receive(), e);
      },
  };
  for (const auto& call : guarded) EXPECT_EQ(Failure(call).find(start), 0u);
  EXPECT_EQ(Failure([&](auto e) { return schema->AddAllowedValue("a", nullptr, e); }),
            "Pointer of struct Data::Interfaces::IAllowedValue must not be null!");
  EXPECT_EQ(schema->GetColumnCount(), 0u) << "a failure adds no column";
  const auto json = JsonVariant("{}").As<Ptr<IJsonDocument>>();
  EXPECT_FALSE(json->Equals(Disguised<IJsonDocument>(list)));
  const auto xml = New(Data_CreateXmlDocument);
  xml->SetContent("<a/>", 4);
  EXPECT_FALSE(xml->Equals(Disguised<IXmlDocument>(json)));
}

TEST(Arguments, SayHowLongATextIs) {
  EXPECT_EQ(Failure([](auto e) { return Data_ParseCsv("a", 0, Ptr<ITable>().Receive(), e); }),
            "Size cannot be 0. We don't call strlen internally because data might not contain null "
            "terminator!");
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
