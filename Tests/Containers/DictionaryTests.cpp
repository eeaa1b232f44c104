#include "Prelude.h"

#include "CallersText.h"
#include "Records.h"

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

TEST(Dictionary, TellsKeysApartByHashAndComparison) {
  const auto check = [](const Variant& first, const Variant& second, bool same, const auto& what) {
    const auto dictionary = NewDictionary();
    EXPECT_EQ(SetFailure(dictionary, first, 1), "") << what;
    EXPECT_EQ(SetFailure(dictionary, second, 2), "") << what;
    EXPECT_EQ(dictionary->GetCount(), same ? 1u : 2u) << what;
    EXPECT_EQ(IntegerAt(dictionary, first), same ? 2 : 1) << what;
    EXPECT_EQ(IntegerAt(dictionary, second), 2) << what;
  };
  for (const Case& c : Cases("DictionaryKeys.txt", "equality"))
    check(RecordOf(c[0]), RecordOf(c[1]), c[2] == "same", c.where);
  const auto list = New(Data_CreateObjectList);
  const Variant asObject(Ptr<IObject>(list.Get())), asList(list);
  check(asObject, asObject, true, "one object");
  check(asList, asList, true, "one list");
  check(asObject, asList, false, "one object under two types");
  const Variant null(Core::MakePtr<CallersText>(nullptr));
  check(null, "", true, "a text object that answers null is empty");
}

TEST(Dictionary, KeysThatEqualNothingAreAddedAndNeverFound) {
  const auto dictionary = NewDictionary();
  for (const char* key : {"Null", "Unknown", "Reserved", "Invalid 9", "IObject 5", "Pointer 5"}) {
    for (int addition = 0; addition < 2; ++addition)
      EXPECT_EQ(SetFailure(dictionary, RecordOf(key), addition), "");
    EXPECT_EQ(IntegerAt(dictionary, RecordOf(key)), -1);
  }
  EXPECT_EQ(dictionary->GetCount(), 12u);
}

TEST(Dictionary, ReportsKeysWithoutHashOrOrder) {
  for (const Case& c : Cases("DictionaryKeys.txt", "failures")) {
    const auto dictionary = NewDictionary();
    const Variant key = RecordOf(c[0]);
    EXPECT_EQ(SetFailure(dictionary, key, 1), c[1]) << c.where;
    EXPECT_EQ(SetFailure(dictionary, key, 2), c[2]) << c.where;
    EXPECT_EQ(dictionary->GetCount(), c[1].empty() ? 1u : 0u) << c.where;
    Variant value(5);
    EXPECT_EQ(Failure([&](auto e) { return dictionary->Get(&key, &value, e); }), c[2]) << c.where;
    EXPECT_EQ(Failure([&](auto e) { return dictionary->Contains(&key, e); }), c[2]) << c.where;
    EXPECT_EQ(value.As<int>(), 5) << c.where;
  }
}

TEST(Dictionary, ReportsMissingArguments) {
  const auto d = NewDictionary();
  Variant key("key"), value(5);
  const _VARIANT undefined{0xFFFF, {0, 0}};
  EXPECT_EQ(Failure([&](auto e) { return d->Get(nullptr, &value, e); }), kNullRecord);
  EXPECT_EQ(Failure([&](auto e) { return d->Get(&key, nullptr, e); }), kNullRecord);
  EXPECT_EQ(Failure([&](auto e) { return d->Contains(nullptr, e); }), kNullRecord);
  EXPECT_EQ(Failure([&](auto e) { return d->Set(nullptr, &value, e); }), kNullRecord);
  EXPECT_EQ(Failure([&](auto e) { return d->Set(&key, nullptr, e); }), kNullRecord);
  EXPECT_EQ(Failure([&](auto e) { return d->Set(&key, &undefined, e); }), kUndefinedRecord);
  EXPECT_EQ(Failure([&](auto e) { return d->Get(&key, &value, e); }),
            "invalid unordered_map<K, T> key");
  EXPECT_TRUE(d->IsEmpty());
  EXPECT_EQ(value.As<int>(), 5);
  Ptr<IErrorCode> error;
  EXPECT_FALSE(d->Contains(&key, error.Receive()));
  EXPECT_FALSE(error) << "a missing key is an answer, not a failure";
}

TEST(Dictionary, HoldsAndGivesBackReferences) {
  const auto dictionary = NewDictionary();
  const auto object = New(Data_CreateObjectList);
  const Variant held(object), other(1);
  EXPECT_EQ(SetFailure(dictionary, held, held), "");
  EXPECT_EQ(ReferencesTo(object), 4u) << "here, in `held`, as key and as value";
  Variant value = held;
  EXPECT_TRUE(dictionary->Get(&value, &value, nullptr)) << "a record may be key and destination";
  EXPECT_EQ(ReferencesTo(object), 5u);
  EXPECT_EQ(SetFailure(dictionary, held, other), "");
  EXPECT_EQ(ReferencesTo(object), 4u) << "the replaced value is given back";
  {
    Ptr<IVariantList> keys;
    EXPECT_TRUE(dictionary->GetKeys(keys.Receive(), nullptr));
    EXPECT_EQ(ReferencesTo(object), 5u);
    EXPECT_EQ(SetFailure(dictionary, RecordOf("Int32 7"), 1), "");
    EXPECT_EQ(SetFailure(dictionary, RecordOf("Int64 7"), 2), "");
    keys.Reset();
    EXPECT_TRUE(dictionary->GetKeys(keys.Receive(), nullptr));
    EXPECT_TRUE(keys->GetAt(1, &value));
    EXPECT_EQ(value.Type(), ValueType::Int32) << "the key first stored stays";
  }
  EXPECT_TRUE(dictionary->Clear());
  EXPECT_TRUE(dictionary->IsEmpty());
  EXPECT_EQ(ReferencesTo(object), 2u);
  EXPECT_EQ(IntegerAt(dictionary, held), -1);
}

TEST(Dictionary, DoesNotFindAKeyWhoseTextChanged) {
  const auto dictionary = NewDictionary();
  const auto text = Core::MakeString("before");
  EXPECT_EQ(SetFailure(dictionary, Variant(text), 1), "");
  text->SetUtf8("after", 5);
  EXPECT_EQ(IntegerAt(dictionary, Variant("before")), -1);
  EXPECT_EQ(IntegerAt(dictionary, Variant("after")), -1);
  text->SetUtf8("BEFORE", 6);
  EXPECT_EQ(IntegerAt(dictionary, Variant("before")), 1) << "keys compare without regard to case";
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
