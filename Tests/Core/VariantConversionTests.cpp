#include "CallersText.h"
#include "Records.h"

namespace Data::tests {

using namespace Core;

namespace {

std::string Shown(const WideInteger& wide) {
  return std::to_string(wide.high) + ":" + std::to_string(wide.low);
}
std::string Shown(const Ptr<IString>& text) {
  return text ? std::string(Utf8View(*text)) : "(none)";
}

}  // namespace

TEST(ValueTypes, AreKnownByCode) {
  for (const Case& c : Cases("Variants.txt", "types")) {
    const auto type = static_cast<ValueType>(std::stoul(std::string(c[0])));
    EXPECT_STREQ(GetValueTypeName(type).data(), std::string(c[1]).c_str()) << c.where;
    EXPECT_EQ(IsPrimitive(type), c[2] == "1") << c.where;
    EXPECT_EQ(IsConcrete(type), c[3] == "1") << c.where;
  }
}

TEST(VariantConversion, OfValues) {
  for (const Case& c : Cases("Variants.txt", "conversions")) {
    const Variant value = RecordOf(c[0]);
    EXPECT_EQ(Outcome([&] { return ToInt64(value); }), c[1]) << c.where;
    EXPECT_EQ(Outcome([&] { return ToDouble(value); }), c[2]) << c.where;
    EXPECT_EQ(Outcome([&] { return Shown(ToWideInteger(value)); }), c[3]) << c.where;
    EXPECT_EQ(Outcome([&] { return ToText(value); }), c[4]) << c.where;
  }
}

TEST(VariantConversion, OfObjectsAndTexts) {
  for (const Case& c : Cases("Variants.txt", "objects and texts")) {
    const Variant value = RecordOf(c[0]);
    EXPECT_EQ(Outcome([&] { return GetObject<IObject>(value) ? "some" : "(none)"; }), c[1])
        << c.where;
    EXPECT_EQ(Outcome([&] { return Shown(ToStringObject(value)); }), c[2]) << c.where;
    EXPECT_EQ(Outcome([&] { return std::string(GetStringView(value)); }), c[3]) << c.where;
    EXPECT_EQ(Outcome([&] { return ToText(value); }), c[4]) << c.where;
  }
}

TEST(VariantComparison, GoesByTheRightType) {
  for (const Case& c : Cases("Variants.txt", "comparisons")) {
    const Variant left = RecordOf(c[0]), right = RecordOf(c[1]);
    EXPECT_EQ(Outcome([&] { return Compare(left, right); }), c[2]) << c.where;
    EXPECT_EQ(Outcome([&] { return Compare(right, left); }), c[3]) << c.where;
    const bool isComparable = c[2].find("type mismatch") == std::string_view::npos;
    EXPECT_EQ(AreComparable(left, right), isComparable) << c.where;
    EXPECT_EQ(AreComparable(right, left), isComparable) << c.where;
  }
}

/// A text stored in the record compares as a string object of it would.
TEST(VariantComparison, OfShortTextsAgreesWithStringObjects) {
  const std::string_view texts[] = {
      "",  "a",        "A",        "b", "ab", "aB", "abc",  "@",  "[",        "`",
      "{", "\xC3\xA9", "\xFF\xFE", "z", "Z",  "0z", "0Z\t", "\n", "zzzzzzzz", "16 Bytes of it!!"};
  for (const auto left : texts) {
    for (const auto right : texts) {
      const Variant shortLeft(left), shortRight(right);
      const Variant longLeft(MakeString(left)), longRight(MakeString(right));
      const int expected = Compare(longLeft, longRight);
      EXPECT_EQ(Compare(shortLeft, shortRight), expected) << left << " " << right;
      EXPECT_EQ(Compare(shortLeft, longRight), expected) << left << " " << right;
      EXPECT_EQ(Compare(longLeft, shortRight), expected) << left << " " << right;
    }
  }
}

TEST(VariantComparison, OfObjectsGoesByAddress) {
  auto less = New(Data_CreateObjectList), greater = New(Data_CreateObjectList);
  if (std::less<>()(greater.Get(), less.Get())) std::swap(less, greater);
  EXPECT_EQ(Compare(Variant(less), Variant(less)), 0);
  EXPECT_EQ(Compare(Variant(less), Variant(greater)), -1);
  EXPECT_EQ(Compare(Variant(Ptr<IObject>(greater)), Variant(Ptr<IObject>(less))), 1);
  EXPECT_EQ(Compare(Variant::StringList(greater), Variant::StringList(less)), 1);
}

TEST(VariantConversion, TypedGettersNameTheTypeTheyWant) {
  const Variant number(5);
  EXPECT_EQ(ThrownBy([&] { GetJsonDocument(number); }),
            "Must be json type! Meaning: Must implement Data::IJsonDocument interface");
  EXPECT_EQ(ThrownBy([&] { GetXmlDocument(number); }),
            "Must be xml type! Meaning: Must implement Data::IXmlDocument interface");
  EXPECT_EQ(ThrownBy([&] { GetDateTime(number); }),
            "Must be datetime type! Meaning: Must implement Data::IDateTime interface");
  EXPECT_EQ(ThrownBy([&] { GetErrorCode(number); }),
            "Must be ErrorCode type! Meaning: Must implement Core::IErrorCode interface");
  EXPECT_EQ(GetErrorCode(Variant(Null)), nullptr);
}

TEST(VariantConversion, SharesTextsThatAreObjects) {
  const auto object = MakeString("a text of more than 16 bytes");
  EXPECT_EQ(ToStringObject(Variant(object)), object);
  EXPECT_EQ(GetStringView(Variant(object)).data(), object->GetUtf8());
  EXPECT_EQ(ReferencesTo(object), 1u);
  EXPECT_TRUE(HasForm(Variant("exactly 16 bytes"), StorageForm::Value));
  EXPECT_TRUE(HasForm(Variant("exactly 17 bytes."), StorageForm::Reference));
}

TEST(VariantConversion, DisplayTextOfContainersAndErrors) {
  const auto array = New(Data_CreateArray);
  array->SetData("abcdef", 2, 3);
  const auto address = static_cast<int>(reinterpret_cast<std::uintptr_t>(array.Get()));
  EXPECT_EQ(ToText(Variant(array)), StringFormat("[Array] (Stride: %d, Count: 2)", address));
  const auto list = New(Data_CreateObjectList);
  list->Add(MakeString("one").Get());
  list->Add(MakeString("say \"two\"").Get());
  EXPECT_EQ(ToText(Variant::StringList(list)), "[ \"one\" \"say \"two\"\" ");
  EXPECT_EQ(ToText(Variant(list)), "struct Data::impl::MultiByteStringImpl ") << "the first alone";
  list->Clear();
  list->Add(nullptr);
  EXPECT_EQ(Outcome([&] { return ToText(Variant(list)); }),
            "Null pointer exception! Interface is not accessible: struct Core::IObject");
  EXPECT_EQ(ToText(Variant(SomeError())), MessageOf(SomeError()));
  EXPECT_EQ(ReferencesTo(SomeError()), 1u);
}

TEST(VariantConversion, NullTextsOfCallersObjectsAreEmpty) {
  const Variant text(Ptr<IString>(MakePtr<CallersText>(nullptr)));
  const Variant error(Ptr<IErrorCode>(MakePtr<CallersError>()));
  EXPECT_EQ(ToText(text), "");
  EXPECT_EQ(GetStringView(text), "");
  EXPECT_EQ(ToText(error), "");
  EXPECT_EQ(Compare(Variant(""), text), 0);
  EXPECT_EQ(Compare(Variant("a"), text), 1);
  EXPECT_EQ(Compare(Variant(MakeString("a")), text), 1);
  EXPECT_EQ(Compare(error, error), 0);
  EXPECT_EQ(Compare(Variant(SomeError()), error), 1);
  EXPECT_EQ(Compare(error, Variant(SomeError())), -1);
}

TEST(VariantConversion, HoldsATextThatIsDroppedWhileItIsRead) {
  auto text = MakePtr<CallersText>("a text of its own");
  Variant value{Ptr<IString>(text)};
  text->onRead = [&value] { value = Null; };
  text.Reset();
  EXPECT_EQ(ToText(value), "a text of its own");
  EXPECT_TRUE(value.IsNull());
}

}  // namespace Data::tests
