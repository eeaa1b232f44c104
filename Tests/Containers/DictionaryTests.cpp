#include "CallersText.h"

namespace Data::tests {

namespace {

Ptr<IVariantDictionary> NewDictionary() { return New(Data_CreateVariantDictionary); }

/// The failure of setting a key, "" if there is none.
std::string SetFailure(const Ptr<IVariantDictionary>& dictionary, const _VARIANT& key,
                       const Variant& value) {
  return Failure([&](auto e) { return dictionary->Set(&key, &value, e); });
}

/// The integer stored for a key, -1 without one.
int IntegerAt(const Ptr<IVariantDictionary>& dictionary, const _VARIANT& key) {
  Variant value;
  const bool found = dictionary->Get(&key, &value, nullptr);
  EXPECT_EQ(dictionary->Contains(&key, nullptr), found);
  return found ? value.As<int>() : -1;
}

}  // namespace

TEST(Dictionary, TellsObjectsApartByTypeAndAddress) {
  const auto dictionary = NewDictionary();
  const auto list = New(Data_CreateObjectList);
  const Variant asObject(Ptr<IObject>(list.Get())), asList(list);
  for (const int value : {1, 2}) {
    EXPECT_EQ(SetFailure(dictionary, asObject, value), "");
    EXPECT_EQ(SetFailure(dictionary, asList, value + 2), "");
  }
  EXPECT_EQ(dictionary->GetCount(), 2u);
  EXPECT_EQ(IntegerAt(dictionary, asObject), 2);
  EXPECT_EQ(IntegerAt(dictionary, asList), 4);
  EXPECT_EQ(SetFailure(dictionary, Variant(Core::MakePtr<CallersText>(nullptr)), 5), "");
  Variant both("");
  EXPECT_TRUE(dictionary->Get(&both, &both, nullptr));
  EXPECT_EQ(both.As<int>(), 5) << "a text object that answers null is empty";
}

TEST(Dictionary, HasAKeyOnceThatItsOwnComparisonAdds) {
  for (const bool isCleared : {false, true}) {
    const auto dictionary = NewDictionary();
    const auto text = Core::MakePtr<CallersText>("k");
    EXPECT_EQ(SetFailure(dictionary, Variant(Ptr<IString>(text.Get())), 0), "");
    bool isDone = false;
    text->onRead = [&] {
      if (std::exchange(isDone, true)) return;
      text->SetUtf8("x", 1);
      if (isCleared) dictionary->Clear();
      EXPECT_EQ(SetFailure(dictionary, Variant("k"), 1), "");
    };
    EXPECT_EQ(SetFailure(dictionary, Variant("k"), 2), "");
    EXPECT_EQ(IntegerAt(dictionary, Variant("k")), 2);
    EXPECT_EQ(dictionary->GetCount(), isCleared ? 1u : 2u);
    isDone = false;
    text->onRead = [&] {
      if (std::exchange(isDone, true)) return;
      for (int i = 0; i < 10; ++i) SetFailure(dictionary, Variant(i), i);
    };
    EXPECT_EQ(IntegerAt(dictionary, Variant("k")), 2) << "even in a table that grows";
  }
}

/// Every comparison adds a key of the same hash.
TEST(Dictionary, EndsASearchThatAddsKeys) {
  const auto dictionary = NewDictionary();
  bool isAdding = false;
  const std::function<void()> add = [&] {
    if (dictionary->GetCount() == 1000 || std::exchange(isAdding, true)) return;
    const auto text = Core::MakePtr<CallersText>("k");
    EXPECT_EQ(SetFailure(dictionary, Variant(text), 0), "");
    text->SetUtf8("x", 1);
    text->onRead = add;
    isAdding = false;
  };
  for (int i = 0; i < 8; ++i) add();
  EXPECT_EQ(IntegerAt(dictionary, Variant("k")), -1);
  EXPECT_LT(dictionary->GetCount(), 100u);
}

/// Sizes at which a scan per addition would take minutes.
TEST(Dictionary, GrowsLinearlyWhateverTheKeys) {
  constexpr int kCount = 100'000;
  const auto dictionary = NewDictionary();
  for (int i = 0; i < kCount; ++i) {
    std::string text = "onewordtwowordsx";  // the same word in 2^16 cases
    for (unsigned bit = 0; bit < 16; ++bit)
      if (i >> bit & 1) text[bit] = static_cast<char>(text[bit] - 'a' + 'A');
    // All of one hash, neighbours, fractions, texts.
    for (const Variant& key : {Variant(Null), Variant(i), Variant(i / 8.0), Variant(text)})
      EXPECT_EQ(SetFailure(dictionary, key, i), "");
  }
  EXPECT_EQ(dictionary->GetCount(), 3u * kCount - 1 + 65536);
  EXPECT_EQ(IntegerAt(dictionary, Variant(kCount - 1)), kCount - 1);
  EXPECT_EQ(IntegerAt(dictionary, Variant((kCount - 2) / 8.0)), kCount - 2);
  EXPECT_EQ(IntegerAt(dictionary, Variant("ONEWORDTWOWORDSX")), 65535)
      << "the last of all capitals";
}

}  // namespace Data::tests
