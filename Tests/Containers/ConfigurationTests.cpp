#include "Prelude.h"

#include <set>

namespace Data::tests {

namespace {

Ptr<IConfiguration> NewConfiguration() { return New(Data_CreateConfiguration); }

std::multiset<std::string> Names(IConfiguration& configuration) {
  std::multiset<std::string> names;
  for (std::uint64_t i = 0; i < configuration.GetNameCount(); ++i)
    names.insert(configuration.GetNameAt(i));
  return names;
}

}  // namespace

TEST(Configuration, FactoryChecksTheOutPointer) {
  const auto configuration = NewConfiguration();
  IConfiguration* out = configuration.Get();
  EXPECT_EQ(Failure([](auto e) { return Data_CreateConfiguration(nullptr, e); }),
            "Pointer to a pointer of struct Data::Interfaces::IConfiguration must not be null! "
            "Address of return must be specified!");
  EXPECT_EQ(Failure([&](auto e) { return Data_CreateConfiguration(&out, e); }),
            "Pointer of struct Data::Interfaces::IConfiguration must be null in order to avoid "
            "memory leaks!");
  EXPECT_EQ(out, configuration.Get());
}

TEST(Configuration, IsAnObjectOfItsOwnKind) {
  const auto configuration = NewConfiguration();
  EXPECT_EQ(ReferencesTo(configuration), 1u);
  EXPECT_TRUE(configuration->TryLock());
  EXPECT_FALSE(configuration->TryLock());
  configuration->Unlock();
  configuration->Lock();
  configuration->Unlock();
  EXPECT_EQ(Variant(configuration).As<std::string>(), "struct Data::impl::ConfigurationImpl");
}

TEST(Configuration, IsEmptyWhenNew) {
  const auto configuration = NewConfiguration();
  Variant value(5);
  for (const char* name : {"x", "", static_cast<const char*>(nullptr)}) {
    EXPECT_FALSE(configuration->Contains(name));
    EXPECT_FALSE(configuration->Get(name, &value));
  }
  EXPECT_EQ(configuration->GetNameCount(), 0u);
  EXPECT_EQ(configuration->GetNameAt(0), nullptr);
  EXPECT_EQ(value.As<int>(), 5);
}

TEST(Configuration, MapsExactNamesToValues) {
  const auto configuration = NewConfiguration();
  const auto object = New(Data_CreateArray);
  const Variant first(1), second(object);
  for (const char* name : {"a", "A", "b", "", "a b"}) configuration->Set(name, &first);
  configuration->Set("a", &second);
  EXPECT_EQ(Names(*configuration), (std::multiset<std::string>{"", "A", "a", "a b", "b"}));
  EXPECT_EQ(ReferencesTo(object), 3u);
  Variant value;
  EXPECT_TRUE(configuration->Get("a", &value));
  EXPECT_EQ(value.As<Ptr<Interfaces::IArray>>(), object);
  EXPECT_TRUE(configuration->Get("A", &value));
  EXPECT_EQ(value.As<int>(), 1);
  EXPECT_FALSE(configuration->Get("ab", &value));
  configuration->Set("a", &first);
  EXPECT_EQ(ReferencesTo(object), 2u) << "the replaced value is given back";
  EXPECT_EQ(configuration->GetNameCount(), 5u);
}

TEST(Configuration, ThrowsWhatItRejects) {
  const auto configuration = NewConfiguration();
  const Variant one(1);
  configuration->Set("known", &one);
  Variant value(5);
  EXPECT_EQ(ThrownBy([&] { configuration->Get("known", nullptr); }), "Cannot be nullptr!");
  EXPECT_EQ(ThrownBy([&] { configuration->Get("unknown", nullptr); }), "");
  EXPECT_EQ(ThrownBy([&] { configuration->Get(nullptr, &value); }),
            "Pointer of char must not be null!");
  EXPECT_EQ(ThrownBy([&] { configuration->Contains(nullptr); }),
            "Pointer of char must not be null!");
  EXPECT_EQ(ThrownBy([&] { configuration->Set(nullptr, &one); }),
            "Pointer of char must not be null!");
  EXPECT_EQ(value.As<int>(), 5);
}

TEST(Configuration, ARejectedValueLeavesANewNameUnlisted) {
  const auto configuration = NewConfiguration();
  const _VARIANT undefined{200, {1, 2}};
  const Variant one(1);
  configuration->Set("known", &one);
  const struct {
    const char* name;
    const _VARIANT* value;
    const char* thrown;
  } cases[] = {
      {"first", nullptr, "Cannot be nullptr!"},
      {"second", &undefined, kUndefinedRecord},
  };
  Variant value;
  for (const auto& c : cases) {
    EXPECT_EQ(ThrownBy([&] { configuration->Set("known", c.value); }), c.thrown);
    EXPECT_TRUE(configuration->Get("known", &value));
    EXPECT_EQ(value.As<int>(), 1) << "an existing value stays";
    EXPECT_EQ(ThrownBy([&] { configuration->Set(c.name, c.value); }), c.thrown);
    EXPECT_TRUE(configuration->Contains(c.name));
    EXPECT_TRUE(configuration->Get(c.name, &value));
    EXPECT_EQ(value.type, 0u);
    EXPECT_EQ(Names(*configuration), (std::multiset<std::string>{"known"}));
  }
  configuration->Set("first", &one);
  EXPECT_EQ(configuration->GetNameCount(), 1u) << "no addition: the name is there already";
  configuration->Set("third", &one);
  EXPECT_EQ(Names(*configuration),
            (std::multiset<std::string>{"known", "first", "second", "third"}));
}

TEST(Configuration, AddsManyNamesInLinearTime) {
  const auto configuration = NewConfiguration();
  const Variant one(1);
  constexpr std::uint64_t kCount = 100'000;
  for (std::uint64_t i = 0; i < kCount; ++i) {
    configuration->Set(std::to_string(i).c_str(), &one);
    ASSERT_EQ(configuration->GetNameCount(), i + 1);
    ASSERT_TRUE(configuration->GetNameAt(i));
  }
  EXPECT_EQ(Names(*configuration).count("99999"), 1u);
}

}  // namespace Data::tests
