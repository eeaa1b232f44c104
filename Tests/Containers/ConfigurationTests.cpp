#include "Prelude.h"

#include <set>

namespace Data::tests {

namespace {

std::multiset<std::string> Names(IConfiguration& configuration) {
  std::multiset<std::string> names;
  for (std::uint64_t i = 0; i < configuration.GetNameCount(); ++i)
    names.insert(configuration.GetNameAt(i));
  return names;
}

}  // namespace

TEST(Configuration, IsEmptyWhenNew) {
  const auto configuration = New(Data_CreateConfiguration);
  Variant value(5);
  for (const char* name : {"x", "", static_cast<const char*>(nullptr)}) {
    EXPECT_FALSE(configuration->Contains(name));
    EXPECT_FALSE(configuration->Get(name, &value));
  }
  EXPECT_EQ(configuration->GetNameAt(0), nullptr);
  EXPECT_EQ(value.As<int>(), 5);
}

TEST(Configuration, MapsExactNamesToValues) {
  const auto configuration = New(Data_CreateConfiguration);
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

TEST(Configuration, ARejectedValueLeavesANewNameUnlisted) {
  const auto configuration = New(Data_CreateConfiguration);
  const _VARIANT undefined{200, {1, 2}};
  const Variant one(1);
  Variant value;
  configuration->Set("known", &one);
  EXPECT_EQ(ThrownBy([&] { configuration->Get("known", nullptr); }), "Cannot be nullptr!");
  EXPECT_EQ(ThrownBy([&] { configuration->Get(nullptr, &value); }), kNullText);
  EXPECT_EQ(ThrownBy([&] { configuration->Contains(nullptr); }), kNullText);
  EXPECT_EQ(ThrownBy([&] { configuration->Set(nullptr, &one); }), kNullText);
  EXPECT_EQ(ThrownBy([&] { configuration->Set("known", nullptr); }), "Cannot be nullptr!");
  EXPECT_EQ(ThrownBy([&] { configuration->Set("first", nullptr); }), "Cannot be nullptr!");
  EXPECT_EQ(ThrownBy([&] { configuration->Set("second", &undefined); }), kUndefinedRecord);
  EXPECT_TRUE(configuration->Get("known", &value));
  EXPECT_EQ(value.As<int>(), 1) << "an existing value stays";
  EXPECT_TRUE(configuration->Get("first", &value));
  EXPECT_EQ(value.type, 0u);
  EXPECT_TRUE(configuration->Contains("second"));
  EXPECT_EQ(Names(*configuration), (std::multiset<std::string>{"known"}));
  configuration->Set("first", &one);
  EXPECT_EQ(configuration->GetNameCount(), 1u) << "no addition: the name is there already";
  configuration->Set("third", &one);
  EXPECT_EQ(Names(*configuration),
            (std::multiset<std::string>{"known", "first", "second", "third"}));
}

}  // namespace Data::tests
