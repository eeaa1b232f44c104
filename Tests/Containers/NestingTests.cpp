#include "Prelude.h"
#include "SmallStack.h"

/// Freeing containers that hold each other takes no stack, however deep they are nested.
namespace Data::tests {

namespace {

using Wrap = std::function<Variant(const Variant& inner)>;

Variant InObjectList(const Variant& inner) {
  const auto list = New(Data_CreateObjectList);
  list->Add(inner.As<Ptr<IObject>>().Get());
  return Variant(list);
}
Variant InVariantList(const Variant& inner) {
  const auto list = New(Data_CreateVariantList);
  list->Add(&inner);
  return Variant(list);
}
Variant InKeyOfPair(const Variant& inner) {
  const auto pairs = New(Data_CreateVariantPairList);
  EXPECT_TRUE(pairs->Add(&inner, &inner, nullptr));
  return Variant(pairs);
}
Variant InValueOfPair(const Variant& inner) {
  const auto pairs = New(Data_CreateVariantPairList);
  const Variant key(1);
  EXPECT_TRUE(pairs->Add(&key, &inner, nullptr));
  return Variant(pairs);
}
Variant InDictionaryKey(const Variant& inner) {
  const auto dictionary = New(Data_CreateVariantDictionary);
  EXPECT_TRUE(dictionary->Set(&inner, &inner, nullptr));
  return Variant(dictionary);
}
Variant InDictionaryValue(const Variant& inner) {
  const auto dictionary = New(Data_CreateVariantDictionary);
  const Variant key("key");
  EXPECT_TRUE(dictionary->Set(&key, &inner, nullptr));
  return Variant(dictionary);
}
Variant InConfiguration(const Variant& inner) {
  const auto configuration = New(Data_CreateConfiguration);
  configuration->Set("name", &inner);
  return Variant(configuration);
}
Variant InProperty(const Variant& inner) {
  const auto properties = New(Data_CreateProperties);
  EXPECT_TRUE(properties->Register("name", inner.Type(), false, nullptr, nullptr));
  EXPECT_TRUE(properties->Set("name", &inner, nullptr));
  return Variant(properties);
}
Variant InDefaultOfProperty(const Variant& inner) {
  const auto properties = New(Data_CreateProperties);
  EXPECT_TRUE(properties->Register("name", inner.Type(), false, &inner, nullptr));
  return Variant(properties);
}
Variant InConstrainedValue(const Variant& inner) {
  Ptr<IConstrainedValue> constrained;
  EXPECT_TRUE(Data_CreateConstrainedValue(&inner, &inner, &inner, constrained.Receive(), nullptr));
  return Variant(constrained);
}
Variant InAllowedValue(const Variant& inner) {
  Ptr<IAllowedValue> allowed;
  EXPECT_TRUE(Data_CreateAllowedValue(&inner, ComparisonOperator::None, "", "", "", "",
                                      allowed.Receive(), nullptr));
  return Variant(allowed);
}

}  // namespace

TEST(Nesting, FreeingTakesNoStack) {
  const struct {
    const char* what;
    Wrap wrap;
  } cases[] = {
      {"object list", InObjectList},
      {"variant list", InVariantList},
      {"key of a pair", InKeyOfPair},
      {"value of a pair", InValueOfPair},
      {"key of a dictionary", InDictionaryKey},
      {"value of a dictionary", InDictionaryValue},
      {"configuration", InConfiguration},
      {"property", InProperty},
      {"default of a property", InDefaultOfProperty},
      {"constrained value", InConstrainedValue},
      {"allowed value", InAllowedValue},
  };
  constexpr std::size_t kLevels = 200'000;
  const auto text = Core::MakeString("the innermost object");
  const auto freeNest = [&](const char* what, const auto& wrapAt) {
    Variant nest{Ptr<IObject>(text.Get())};
    for (std::size_t level = 0; level < kLevels; ++level) nest = wrapAt(level)(nest);
    OnSmallStack([&] { nest = Null; });
    EXPECT_EQ(ReferencesTo(text), 1u) << what;
  };
  for (const auto& c : cases) freeNest(c.what, [&](std::size_t) { return c.wrap; });
  freeNest("all of them in turn",
           [&](std::size_t level) { return cases[level % std::size(cases)].wrap; });
}

TEST(Nesting, WhatOthersHoldStays) {
  const auto text = Core::MakeString("the innermost object");
  Variant nest{Ptr<IObject>(text.Get())}, half;
  for (int level = 0; level < 1000; ++level) {
    nest = level % 2 == 0 ? InObjectList(nest) : InDictionaryValue(nest);
    if (level == 500) half = nest;
  }
  Variant other = InVariantList(nest);
  std::thread thread([&] { other = Null; });
  nest = Null;
  thread.join();
  EXPECT_EQ(ReferencesTo(half.As<Ptr<IObject>>()), 2u);
  EXPECT_EQ(ReferencesTo(text), 2u);
  half = Null;
  EXPECT_EQ(ReferencesTo(text), 1u);
}

}  // namespace Data::tests
