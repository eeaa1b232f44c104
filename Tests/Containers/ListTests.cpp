#include "Prelude.h"

namespace Data::tests {

TEST(ObjectList, HoldsOneReferencePerEntry) {
  const auto array = New(Data_CreateArray);
  {
    const auto list = New(Data_CreateObjectList);
    EXPECT_TRUE(list->IsEmpty());
    for (IObject* object : {static_cast<IObject*>(array.Get()), static_cast<IObject*>(nullptr)})
      list->Add(object);
    EXPECT_EQ(list->GetAt(0), array.Get());
    EXPECT_EQ(ReferencesTo(array), 2u) << "GetAt adds none";
    EXPECT_EQ(ThrownBy([&] { list->GetAt(1); }),
              "Null pointer exception! Interface is not accessible: struct Core::IObject");
    EXPECT_EQ(list->GetAt(2), nullptr);
    EXPECT_EQ(list->GetAt(UINT64_MAX), nullptr);
    EXPECT_EQ(list->GetCount(), 2u);
    list->Clear();
    EXPECT_TRUE(list->IsEmpty());
    EXPECT_EQ(ReferencesTo(array), 1u);
    list->Add(array.Get());
  }
  EXPECT_EQ(ReferencesTo(array), 1u);
}

TEST(VariantList, CopiesItemsInAndOut) {
  const auto list = New(Data_CreateVariantList);
  const auto array = New(Data_CreateArray);
  const Variant object(array), number(7);
  const _VARIANT undefined{200, {0xDEAD, 0}};
  for (const _VARIANT* item :
       std::initializer_list<const _VARIANT*>{&object, &number, nullptr, &undefined})
    list->Add(item);
  EXPECT_EQ(list->GetCount(), 4u);
  EXPECT_EQ(ReferencesTo(array), 3u) << "here, in `object` and in the list";

  Variant item;
  ASSERT_TRUE(list->GetAt(0, &item));
  EXPECT_EQ(item.As<Ptr<IArray>>(), array);
  EXPECT_EQ(ReferencesTo(array), 4u);
  ASSERT_TRUE(list->GetAt(1, &item));
  EXPECT_EQ(item.As<int>(), 7);
  EXPECT_EQ(ReferencesTo(array), 3u) << "the destination gave up what it held";
  ASSERT_TRUE(list->GetAt(2, &item));
  EXPECT_EQ(item.type, 0u) << "null is kept as Unknown";
  ASSERT_TRUE(list->GetAt(3, &item));
  EXPECT_EQ(item.type, 200u) << "an undefined record is plain bytes";
  EXPECT_EQ(item.value[0], 0xDEADu);

  EXPECT_FALSE(list->GetAt(4, &item));
  EXPECT_EQ(item.type, 200u) << "untouched";
  EXPECT_FALSE(list->GetAt(4, nullptr));
  EXPECT_EQ(ThrownBy([&] { list->GetAt(0, nullptr); }), "Cannot be nullptr!");
  list->Clear();
  EXPECT_TRUE(list->IsEmpty());
  EXPECT_EQ(ReferencesTo(array), 2u);
}

TEST(VariantPairList, KeepsPairsInOrderDuplicatesIncluded) {
  const auto list = New(Data_CreateVariantPairList);
  const auto array = New(Data_CreateArray);
  const Variant key("key"), first(array), second(2);
  EXPECT_TRUE(list->IsEmpty());
  EXPECT_TRUE(list->Add(&key, &first, nullptr));
  EXPECT_TRUE(list->Add(&key, &second, nullptr));
  EXPECT_EQ(list->GetCount(), 2u);
  Variant gotKey, gotValue;
  ASSERT_TRUE(list->GetAt(0, &gotKey, &gotValue, nullptr));
  EXPECT_EQ(gotKey.As<std::string_view>(), "key");
  EXPECT_EQ(gotValue.As<Ptr<IArray>>(), array);
  ASSERT_TRUE(list->GetAt(1, &gotKey, &gotValue, nullptr));
  EXPECT_EQ(gotValue.As<int>(), 2);
  EXPECT_EQ(ReferencesTo(array), 3u);
  EXPECT_TRUE(list->Clear());
  EXPECT_TRUE(list->IsEmpty());
  EXPECT_EQ(ReferencesTo(array), 2u);
}

TEST(VariantPairList, FailuresChangeNothing) {
  const auto list = New(Data_CreateVariantPairList);
  Variant key(5), value(6);
  const _VARIANT undefined{28, {0, 0}};
  const auto add = [&](const _VARIANT* k, const _VARIANT* v) {
    return Failure([&](auto e) { return list->Add(k, v, e); });
  };
  const auto read = [&](std::uint64_t index, _VARIANT* k, _VARIANT* v) {
    return Failure([&](auto e) { return list->GetAt(index, k, v, e); });
  };
  EXPECT_EQ(add(nullptr, &value), kNullRecord);
  EXPECT_EQ(add(&key, nullptr), kNullRecord);
  EXPECT_EQ(add(&undefined, &value), kUndefinedRecord);
  EXPECT_EQ(add(&key, &undefined), kUndefinedRecord);
  EXPECT_EQ(list->GetCount(), 0u);
  EXPECT_EQ(read(0, &key, &value), "Index out of bounds!");
  EXPECT_EQ(read(0, nullptr, &value), kNullRecord);
  EXPECT_EQ(read(0, &key, nullptr), kNullRecord);
  EXPECT_EQ(key.As<int>() + value.As<int>(), 11);
}

}  // namespace Data::tests
