#include "Prelude.h"

namespace Data::tests {

using Core::MakeTag;
using Core::StorageForm;

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

Variant TextObject(std::string_view utf8) { return Variant(Core::MakeString(utf8)); }

/// One object that keys of two types refer to.
const Ptr<IObjectList>& SharedList() {
  static const auto list = New(Data_CreateObjectList);
  return list;
}
Variant SharedAsObject() { return Variant(Ptr<Core::IObject>(SharedList())); }

}  // namespace

TEST(Dictionary, TellsKeysApartByHashAndComparison) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    const char* what;
    Variant first, second;
    bool same;
  } cases[] = {
      {"integers of any width", std::int32_t{7}, std::int64_t{7}, true},
      {"signed and unsigned of one bit pattern", -1, UINT64_MAX, true},
      {"a narrow negative number is no wide positive one", std::int8_t{-1}, 255, false},
      {"true and 1", true, std::uint8_t{1}, true},
      {"an integer and a double hash differently", 7, 7.0, false},
      {"save for zero, which has one bit pattern", 0, 0.0, true},
      {"float and double", 0.5f, 0.5, true},
      {"a float that no double literal names", 0.1f, 0.1, false},
      {"both zeros", -0.0, 0.0, true},
      {"NaN", nan, nan, true},
      {"all 16 bytes count", ByValue(ValueType::Int128, 1, 2), ByValue(ValueType::Int128, 1, 3),
       false},
      {"the wide types by their bytes", ByValue(ValueType::Uuid, 1, 2),
       ByValue(ValueType::UInt128, 1, 2), true},
      {"a wide number and a narrow one", ByValue(ValueType::Int128, 7), 7, false},
      {"case", "abc", "ABC", false},
      {"inline text and the same text as an object", "abc", TextObject("abc"), true},
      {"and the other way round", TextObject("abc"), "abc", true},
      {"long texts", TextObject("a text of more than 16 bytes"),
       TextObject("a text of more than 16 bytes"), true},
      {"the empty text and an object that was never set", "", Variant(New(Data_CreateString)),
       true},
      {"a text and a number", "7", 7, false},
      {"dates of one time", Date("2024-01-01T00:00:00Z"), Date("2024-01-01T00:00:00Z"), true},
      {"dates of two", Date("2024-01-01T00:00:00Z"), Date("2024-01-01T00:00:01Z"), false},
      {"documents of one text", JsonVariant("[1]"), JsonVariant("[1]"), true},
      {"equal documents of two texts hash differently", JsonVariant("[1]"), JsonVariant("[ 1 ]"),
       false},
      {"a document and its text", JsonVariant("[1]"), "[1]", false},
      {"one object", SharedAsObject(), SharedAsObject(), true},
      {"one object under two types", SharedAsObject(), Variant(SharedList()), false},
      {"two objects", Variant(New(Data_CreateObjectList)), Variant(New(Data_CreateObjectList)),
       false},
      {"a list by identity", Variant(SharedList()), Variant(SharedList()), true},
  };
  for (const auto& c : cases) {
    const auto dictionary = NewDictionary();
    EXPECT_EQ(SetFailure(dictionary, c.first, 1), "") << c.what;
    EXPECT_EQ(SetFailure(dictionary, c.second, 2), "") << c.what;
    EXPECT_EQ(dictionary->GetCount(), c.same ? 1u : 2u) << c.what;
    EXPECT_EQ(IntegerAt(dictionary, c.first), c.same ? 2 : 1) << c.what;
    EXPECT_EQ(IntegerAt(dictionary, c.second), 2) << c.what;
  }
}

TEST(Dictionary, KeysThatEqualNothingAreAddedAndNeverFound) {
  const auto dictionary = NewDictionary();
  for (const Variant& key :
       {Variant(Null), Variant(), ByValue(ValueType::Reserved, 0), ByValue(ValueType::Invalid, 9),
        ByValue(ValueType::IObject, 5), ByValue(ValueType::Pointer, 5)}) {
    for (int addition = 0; addition < 2; ++addition)
      EXPECT_EQ(SetFailure(dictionary, key, addition), "");
    EXPECT_EQ(IntegerAt(dictionary, key), -1);
  }
  EXPECT_EQ(dictionary->GetCount(), 12u);
}

TEST(Dictionary, ReportsKeysWithoutHashOrOrder) {
  const struct {
    const char* what;
    Variant key;
    std::string first, second;  ///< failures of the first and the second Set
  } cases[] = {
      {"arrays have no order", Variant(New(Data_CreateArray)), "",
       "Compare is not implemented for specified value types: Left type is Array, Right type is "
       "Array"},
      {"a null object is stored once", NullReference(ValueType::IObject), "",
       "Null values cannot be compared! Left type is IObject, Right type is IObject"},
      {"a null text too", NullReference(ValueType::String), "",
       "Null values cannot be compared! Left type is String, Right type is String"},
      {"Null in reference form is comparable, unlike by value", NullReference(ValueType::Null), "",
       "Null values cannot be compared! Left type is Null, Right type is Null"},
      {"and Unknown has no method", Address(ValueType::Unknown, 1), "",
       "Compare is not implemented for specified value types: Left type is Unknown, Right type is "
       "Unknown"},
      {"an address", Address(ValueType::Pointer, 5), "Must be value type!", "Must be value type!"},
      {"a number in reference form", NullReference(ValueType::Int32), "Must be value type!",
       "Must be value type!"},
      {"a Uuid in reference form", NullReference(ValueType::Uuid), "Must be value type!",
       "Must be value type!"},
      {"a double in pointer form", Address(ValueType::Double, 1), "Must be value type!",
       "Must be value type!"},
      {"an error code", Variant(SomeError()), "Must be string, json or xml!",
       "Must be string, json or xml!"},
      {"a text in pointer form", Address(ValueType::String, 1), "Must be string, json or xml!",
       "Must be string, json or xml!"},
      {"a date-time by value", ByValue(ValueType::DateTime, 1),
       "Must be reference type! Meaning: Must implement Core::IObject interface",
       "Must be reference type! Meaning: Must implement Core::IObject interface"},
      {"a null date-time", NullReference(ValueType::DateTime),
       "Null pointer exception! Interface is not accessible: struct Data::Interfaces::IDateTime",
       "Null pointer exception! Interface is not accessible: struct Data::Interfaces::IDateTime"},
      {"the first undefined code", ByValue(static_cast<ValueType>(28), 0), kUndefinedRecord,
       kUndefinedRecord},
      {"a record never initialised",
       Record(static_cast<ValueType>(0xCCCC), StorageForm::Reference, 0xCC), kUndefinedRecord,
       kUndefinedRecord},
  };
  for (const auto& c : cases) {
    const auto dictionary = NewDictionary();
    EXPECT_EQ(SetFailure(dictionary, c.key, 1), c.first) << c.what;
    EXPECT_EQ(SetFailure(dictionary, c.key, 2), c.second) << c.what;
    EXPECT_EQ(dictionary->GetCount(), c.first.empty() ? 1u : 0u) << c.what;
    Variant value(5);
    EXPECT_EQ(Failure([&](auto e) { return dictionary->Get(&c.key, &value, e); }), c.second)
        << c.what;
    EXPECT_EQ(Failure([&](auto e) { return dictionary->Contains(&c.key, e); }), c.second) << c.what;
    EXPECT_EQ(value.As<int>(), 5) << c.what;
  }
}

TEST(Dictionary, ReportsMissingArguments) {
  const auto dictionary = NewDictionary();
  Variant key("key"), value(5);
  const _VARIANT undefined{0xFFFF, {0, 0}};
  auto& d = *dictionary;
  EXPECT_EQ(Failure([&](auto e) { return d.Get(nullptr, &value, e); }), kNullRecord);
  EXPECT_EQ(Failure([&](auto e) { return d.Get(&key, nullptr, e); }), kNullRecord);
  EXPECT_EQ(Failure([&](auto e) { return d.Contains(nullptr, e); }), kNullRecord);
  EXPECT_EQ(Failure([&](auto e) { return d.Set(nullptr, &value, e); }), kNullRecord);
  EXPECT_EQ(Failure([&](auto e) { return d.Set(&key, nullptr, e); }), kNullRecord);
  EXPECT_EQ(Failure([&](auto e) { return d.Set(&key, &undefined, e); }), kUndefinedRecord);
  EXPECT_EQ(Failure([&](auto e) { return d.Get(&key, &value, e); }),
            "invalid unordered_map<K, T> key");
  EXPECT_EQ(Failure([&](auto e) { return d.GetKeys(nullptr, e); }),
            "Pointer to a pointer of struct Data::Interfaces::IVariantList must not be null! "
            "Address of return must be specified!");
  IVariantList* held = reinterpret_cast<IVariantList*>(&d);
  EXPECT_EQ(Failure([&](auto e) { return d.GetKeys(&held, e); }),
            "Pointer of struct Data::Interfaces::IVariantList must be null in order to avoid "
            "memory leaks!");
  EXPECT_TRUE(d.IsEmpty());
  EXPECT_EQ(value.As<int>(), 5);
  Ptr<IErrorCode> error;
  EXPECT_FALSE(d.Contains(&key, error.Receive()));
  EXPECT_FALSE(error) << "a missing key is an answer, not a failure";
}

TEST(Dictionary, HoldsAndGivesBackReferences) {
  const auto dictionary = NewDictionary();
  const auto object = New(Data_CreateObjectList);
  const auto references = [&] { return ReferencesTo(object); };
  const Variant held(object), other(1);
  EXPECT_EQ(SetFailure(dictionary, held, held), "");
  EXPECT_EQ(references(), 4u) << "here, in `held`, as key and as value";
  Variant value;
  EXPECT_TRUE(dictionary->Get(&held, &value, nullptr));
  EXPECT_TRUE(dictionary->Contains(&held, nullptr));
  EXPECT_EQ(references(), 5u);
  value = Variant(held);
  EXPECT_TRUE(dictionary->Get(&value, &value, nullptr)) << "a record may be key and destination";
  EXPECT_EQ(references(), 5u);
  EXPECT_EQ(SetFailure(dictionary, held, other), "");
  EXPECT_EQ(references(), 4u) << "the replaced value is given back";
  {
    Ptr<IVariantList> keys;
    EXPECT_TRUE(dictionary->GetKeys(keys.Receive(), nullptr));
    EXPECT_EQ(references(), 5u);
  }
  EXPECT_TRUE(dictionary->Clear());
  EXPECT_TRUE(dictionary->IsEmpty());
  EXPECT_EQ(references(), 3u);
  EXPECT_EQ(IntegerAt(dictionary, held), -1);
}

TEST(Dictionary, KeepsTheKeyFirstStored) {
  const auto dictionary = NewDictionary();
  EXPECT_EQ(SetFailure(dictionary, Variant(std::int32_t{7}), 1), "");
  EXPECT_EQ(SetFailure(dictionary, Variant(std::int64_t{7}), 2), "");
  Ptr<IVariantList> keys;
  ASSERT_TRUE(dictionary->GetKeys(keys.Receive(), nullptr));
  ASSERT_EQ(keys->GetCount(), 1u);
  Variant key;
  ASSERT_TRUE(keys->GetAt(0, &key));
  EXPECT_EQ(key.Type(), ValueType::Int32);
}

/// Sizes at which a scan per addition would take minutes.
TEST(Dictionary, GrowsLinearlyWhateverTheKeys) {
  constexpr int kCount = 100'000;
  const auto dictionary = NewDictionary();
  for (int i = 0; i < kCount; ++i) {
    EXPECT_EQ(SetFailure(dictionary, Variant(Null), i), "");  // all of one hash
    EXPECT_EQ(SetFailure(dictionary, Variant(i), i), "");     // neighbours
    EXPECT_EQ(SetFailure(dictionary, Variant(i / 8.0), i), "");
    std::string text = "onewordtwowordsx";  // the same word in 2^16 cases
    for (unsigned bit = 0; bit < 16; ++bit)
      if (i >> bit & 1) text[bit] = static_cast<char>(text[bit] - 'a' + 'A');
    EXPECT_EQ(SetFailure(dictionary, Variant(text), i), "");
  }
  EXPECT_EQ(dictionary->GetCount(), 3u * kCount - 1 + 65536);
  EXPECT_EQ(IntegerAt(dictionary, Variant(kCount - 1)), kCount - 1);
  EXPECT_EQ(IntegerAt(dictionary, Variant((kCount - 2) / 8.0)), kCount - 2);
  EXPECT_EQ(IntegerAt(dictionary, Variant("ONEWORDTWOWORDSX")), 65535)
      << "the last of all capitals";
  Ptr<IVariantList> keys;
  ASSERT_TRUE(dictionary->GetKeys(keys.Receive(), nullptr));
  EXPECT_EQ(keys->GetCount(), dictionary->GetCount());
}

}  // namespace Data::tests
