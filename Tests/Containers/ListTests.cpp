#include "Prelude.h"

namespace Data::tests {

TEST(Lists, UnguardedFactoriesRejectOnlyANullOutPointer) {
  EXPECT_FALSE(Data_CreateObjectList(nullptr));
  EXPECT_FALSE(Data_CreateVariantList(nullptr));
  const auto first = New(Data_CreateObjectList);
  IObjectList* out = first.Get();
  EXPECT_TRUE(Data_CreateObjectList(&out));
  EXPECT_NE(out, first.Get()) << "the earlier pointer is overwritten, not released";
  EXPECT_EQ(out->Release(), 0u);
}

TEST(Lists, GuardedFactoryChecksTheOutPointer) {
  Ptr<IErrorCode> error;
  EXPECT_FALSE(Data_CreateVariantPairList(nullptr, error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer to a pointer of struct Data::Interfaces::IVariantPairList must not be null! "
            "Address of return must be specified!");
  const auto list = New(Data_CreateVariantPairList);
  IVariantPairList* out = list.Get();
  EXPECT_FALSE(Data_CreateVariantPairList(&out, error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer of struct Data::Interfaces::IVariantPairList must be null in order to avoid "
            "memory leaks!");
  EXPECT_EQ(out, list.Get());
}

TEST(ObjectList, HoldsOneReferencePerEntry) {
  const auto list = New(Data_CreateObjectList);
  const auto array = New(Data_CreateArray);
  EXPECT_TRUE(list->IsEmpty());
  list->Add(array.Get());
  list->Add(array.Get());
  EXPECT_EQ(ReferencesTo(array), 3u);
  EXPECT_EQ(list->GetAt(1), array.Get());
  EXPECT_EQ(ReferencesTo(array), 3u) << "GetAt adds none";
  EXPECT_EQ(list->GetCount(), 2u);
  list->Clear();
  EXPECT_TRUE(list->IsEmpty());
  EXPECT_EQ(ReferencesTo(array), 1u);
}

TEST(ObjectList, TellsANullEntryFromAMissingOne) {
  const auto list = New(Data_CreateObjectList);
  list->Add(nullptr);
  EXPECT_EQ(list->GetCount(), 1u);
  EXPECT_EQ(ThrownBy([&] { list->GetAt(0); }),
            "Null pointer exception! Interface is not accessible: struct Core::IObject");
  EXPECT_EQ(list->GetAt(1), nullptr);
  EXPECT_EQ(list->GetAt(UINT64_MAX), nullptr);
}

TEST(ObjectList, DestructionReleasesTheEntries) {
  const auto array = New(Data_CreateArray);
  {
    const auto list = New(Data_CreateObjectList);
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
       {static_cast<const _VARIANT*>(&object), static_cast<const _VARIANT*>(&number),
        static_cast<const _VARIANT*>(nullptr), &undefined})
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

  item = Variant(5);
  EXPECT_FALSE(list->GetAt(4, &item));
  EXPECT_EQ(item.As<int>(), 5) << "untouched";
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
  Ptr<IErrorCode> error;
  EXPECT_TRUE(list->Add(&key, &first, error.Receive()));
  EXPECT_TRUE(list->Add(&key, &second, error.Receive()));
  EXPECT_EQ(list->GetCount(), 2u);
  Variant gotKey, gotValue;
  ASSERT_TRUE(list->GetAt(0, &gotKey, &gotValue, error.Receive()));
  EXPECT_EQ(gotKey.As<std::string_view>(), "key");
  EXPECT_EQ(gotValue.As<Ptr<IArray>>(), array);
  ASSERT_TRUE(list->GetAt(1, &gotKey, &gotValue, error.Receive()));
  EXPECT_EQ(gotValue.As<int>(), 2);
  EXPECT_EQ(ReferencesTo(array), 3u);
  EXPECT_TRUE(list->Clear());
  EXPECT_TRUE(list->IsEmpty());
  EXPECT_EQ(ReferencesTo(array), 2u);
}

TEST(VariantPairList, ReportsFailuresAndChangesNothing) {
  const auto list = New(Data_CreateVariantPairList);
  const Variant record(1);
  const _VARIANT undefined{28, {0, 0}};
  const struct {
    const char* what;
    const _VARIANT *key, *value;
    const char* error;
  } additions[] = {
      {"null key", nullptr, &record, kNullRecord},
      {"null value", &record, nullptr, kNullRecord},
      {"undefined key", &undefined, &record, kUndefinedRecord},
      {"undefined value", &record, &undefined, kUndefinedRecord},
  };
  for (const auto& c : additions) {
    EXPECT_EQ(Failure([&](auto e) { return list->Add(c.key, c.value, e); }), c.error) << c.what;
  }
  EXPECT_TRUE(list->IsEmpty());

  ASSERT_TRUE(list->Add(&record, &record, nullptr));
  Variant key(5), value(6);
  const struct {
    const char* what;
    std::uint64_t index;
    _VARIANT *key, *value;
    const char* error;
  } reads[] = {
      {"at the count", 1, &key, &value, "Index out of bounds!"},
      {"far out", UINT64_MAX, &key, &value, "Index out of bounds!"},
      {"null key", 0, nullptr, &value, kNullRecord},
      {"null value, far out", 9, &key, nullptr, kNullRecord},
  };
  for (const auto& c : reads) {
    EXPECT_EQ(Failure([&](auto e) { return list->GetAt(c.index, c.key, c.value, e); }), c.error)
        << c.what;
    EXPECT_EQ(key.As<int>() + value.As<int>(), 11) << c.what;
  }
}

}  // namespace Data::tests
