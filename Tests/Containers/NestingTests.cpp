#include "Prelude.h"
#include "SmallStack.h"

/// Freeing containers that hold each other takes no stack, however deep they are nested.
namespace Data::tests {

namespace {

/// Makes a container that holds a value.
using Wrap = std::function<Variant(const Variant& inner)>;

/// @param put  puts the value into a new container of the factory
template <class Factory, class Put>
Wrap In(Factory factory, Put put) {
  return [=](const Variant& inner) {
    const auto container = New(factory);
    put(*container, inner);
    return Variant(container);
  };
}

Ptr<ITable> TableOf(const Variant& cell) {
  const auto table = New(Data_CreateTable);
  table->AddColumn("name");
  table->AddRow(&cell, 1);
  return table;
}

const Variant kKey("key");
const struct {
  const char* what;
  Wrap wrap;
} kContainers[] = {
    {"object list", In(Data_CreateObjectList,
                       [](auto& list, auto& v) { list.Add(v.template As<Ptr<IObject>>().Get()); })},
    {"variant list", In(Data_CreateVariantList, [](auto& list, auto& v) { list.Add(&v); })},
    {"keys",
     In(Data_CreateVariantPairList, [](auto& list, auto& v) { list.Add(&v, &v, nullptr); })},
    {"values",
     In(Data_CreateVariantPairList, [](auto& list, auto& v) { list.Add(&kKey, &v, nullptr); })},
    {"key", In(Data_CreateVariantDictionary, [](auto& map, auto& v) { map.Set(&v, &v, nullptr); })},
    {"value",
     In(Data_CreateVariantDictionary, [](auto& map, auto& v) { map.Set(&kKey, &v, nullptr); })},
    {"configuration", In(Data_CreateConfiguration, [](auto& c, auto& v) { c.Set("name", &v); })},
    {"property", In(Data_CreateProperties,
                    [](auto& bag, auto& v) {
                      bag.Register("name", v.Type(), false, &v, nullptr);
                      bag.Set("name", &v, nullptr);
                    })},
    {"constrained value",
     [](const Variant& v) {
       return Variant(Made<IConstrainedValue>(Data_CreateConstrainedValue, &v, &v, &v));
     }},
    {"allowed value",
     [](const Variant& v) {
       return Variant(Made<IAllowedValue>(Data_CreateAllowedValue, &v, ComparisonOperator::None, "",
                                          "", "", ""));
     }},
    {"table", [](const Variant& v) { return Variant(TableOf(v)); }},
    {"row", [](const Variant& v) { return Variant(Ptr<IRow>(TableOf(v)->GetRow(0))); }},
    {"value",
     [](const Variant& v) {
       return Variant(Made<IValue>(&IRow::GetValue, TableOf(v)->GetRow(0), 0));
     }},
};

}  // namespace

TEST(Nesting, FreeingTakesNoStack) {
  constexpr std::size_t kLevels = 200'000;
  const auto text = Core::MakeString("the innermost object");
  const auto freeNest = [&](const char* what, const auto& wrapAt) {
    Variant nest{Ptr<IObject>(text.Get())};
    for (std::size_t level = 0; level < kLevels; ++level) nest = wrapAt(level)(nest);
    OnSmallStack([&] { nest = Null; });
    EXPECT_EQ(ReferencesTo(text), 1u) << what;
  };
  for (const auto& c : kContainers) freeNest(c.what, [&](std::size_t) { return c.wrap; });
  freeNest("all of them in turn",
           [&](std::size_t level) { return kContainers[level % std::size(kContainers)].wrap; });
}

TEST(Nesting, WhatOthersHoldStays) {
  const auto text = Core::MakeString("the innermost object");
  Variant nest{Ptr<IObject>(text.Get())}, half;
  for (std::size_t level = 0; level < 1000; ++level) {
    nest = kContainers[level % std::size(kContainers)].wrap(nest);
    if (level == 500) half = nest;
  }
  Variant other = kContainers[0].wrap(nest);
  std::thread thread([&] { other = Null; });
  nest = Null;
  thread.join();
  EXPECT_EQ(ReferencesTo(half.As<Ptr<IObject>>()), 2u) << "here and in `half`";
  EXPECT_EQ(ReferencesTo(text), 2u);
  half = Null;
  EXPECT_EQ(ReferencesTo(text), 1u);
}

}  // namespace Data::tests
