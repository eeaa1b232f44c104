#include "Prelude.h"

namespace Data::tests {

using namespace Core;

namespace {

std::string Mismatch(const char* left, const char* right) {
  return StringFormat(
      "Values cannot be compared due type mismatch! Left type is %s, Right type is %s", left,
      right);
}
std::string NullValues(const char* left, const char* right) {
  return StringFormat("Null values cannot be compared! Left type is %s, Right type is %s", left,
                      right);
}
std::string NotImplemented(const char* left, const char* right) {
  return StringFormat(
      "Compare is not implemented for specified value types: Left type is %s, Right type is %s",
      left, right);
}

struct Comparison {
  const char* what;
  Variant left, right;
  std::string forward, backward;  ///< what left against right gives, and right against left
};

void Check(std::initializer_list<Comparison> comparisons) {
  for (const auto& c : comparisons) {
    EXPECT_EQ(Outcome([&] { return Compare(c.left, c.right); }), c.forward) << c.what;
    EXPECT_EQ(Outcome([&] { return Compare(c.right, c.left); }), c.backward) << c.what;
    const bool isMismatch = c.forward.find("type mismatch") != std::string::npos;
    EXPECT_EQ(AreComparable(c.left, c.right), !isMismatch) << c.what;
    EXPECT_EQ(AreComparable(c.right, c.left), !isMismatch) << c.what;
  }
}

Variant WideText(std::u16string_view text) {
  const auto object = New(Data_CreateString);
  object->SetWide(text.data(), text.size());
  return Variant(object);
}
Variant TextObject(std::string_view utf8) { return Variant(MakeString(utf8)); }

}  // namespace

TEST(VariantComparison, OfNumbersGoesByTheRightType) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const char* const mustBeValue = "Must be value type!";
  const char* const noDouble = "Cannot cast double to Int128! Not implemented";
  const char* const noFloat = "Cannot cast float to Int128! Not implemented";
  Check({
      {"as doubles, then as integers", 5, 5.7, "-1", "0"},
      {"truncated toward zero", -5, -5.7, "1", "0"},
      {"beyond a double's 53 bits", (std::int64_t{1} << 53) + 1, 0x1p53, "0", "-1"},
      {"narrow and wide", std::int16_t{-2}, std::int64_t{-2}, "0", "0"},
      {"unsigned numbers as signed ones", UINT64_MAX, 1, "-1", "1"},
      {"extended by their own sign", std::int8_t{-1}, std::uint8_t{255}, "-1", "1"},
      {"a Bool is its number", true, 1, "0", "0"},
      {"floats as doubles", 0.1f, 0.1, "1", "-1"},
      {"no order", nan, 1.0, "0", "0"},
      {"not even with itself", nan, nan, "0", "0"},
      {"the high word first", ByValue(ValueType::Int128, 9, 1), ByValue(ValueType::Int128, 1, 2),
       "-1", "1"},
      {"the high word is signed", ByValue(ValueType::Int128, 0, UINT64_MAX),
       ByValue(ValueType::Int128, 0, 0), "-1", "1"},
      {"the low one is not", ByValue(ValueType::UInt128, UINT64_MAX, 0),
       ByValue(ValueType::UInt128, 1, 0), "1", "-1"},
      {"Uuid as a number", ByValue(ValueType::Uuid, 0, 1), ByValue(ValueType::Int128, 5, 0), "1",
       "-1"},
      {"a wide and a narrow one: 128 bits against 64", ByValue(ValueType::Int128, 7, 1), 7, "0",
       "-1"},
      {"a double has no 128 bits", 1.0, ByValue(ValueType::Int128, 1, 0), noDouble, "0"},
      {"nor has a float", 1.0f, ByValue(ValueType::UInt128, 1, 0), noFloat, "0"},
      {"Uuid has no double", ByValue(ValueType::Uuid, 1, 0), 1.0, "Invalid value!", noDouble},
      {"a number in a form of its own", Record(ValueType::Int32, static_cast<StorageForm>(3), 1), 1,
       mustBeValue, mustBeValue},
      {"an address that says it is a number", Address(ValueType::Int32, 1), 1, mustBeValue,
       mustBeValue},
      {"a null one", NullReference(ValueType::Int32), 1, NullValues("Int32", "Int32"),
       NullValues("Int32", "Int32")},
  });
}

TEST(VariantComparison, OfTextsIgnoresCase) {
  Check({
      {"short ones", "abc", "ABC", "0", "0"},
      {"order", "Abc", "abD", "-1", "1"},
      {"a prefix", "ab", "abc", "-1", "1"},
      {"empty", "", "a", "-1", "1"},
      {"only A to Z fold", "[", "{", "-1", "1"},
      {"letters fold downward", "_", "A", "-1", "1"},
      {"bytes are unsigned", "z", "\xC3\xA9", "-1", "1"},
      {"and keep their case beyond ASCII", "\xC3\x89", "\xC3\xA9", "-1", "1"},
      {"short against an object", "ABC", TextObject("abc"), "0", "0"},
      {"and with order", "a", TextObject("b"), "-1", "1"},
      {"an object with a zero byte", "abc", TextObject({"abc\0d", 5}), "-1", "1"},
      {"two objects", TextObject("A text of more than 16 bytes"),
       TextObject("a text of more than 16 bytes!"), "-1", "1"},
      {"an object that was never set orders by length, as its sign", New(Data_CreateString), "abc",
       "-1", "1"},
      {"two of those", New(Data_CreateString), New(Data_CreateString), "0", "0"},
      {"and an empty one", New(Data_CreateString), "", "0", "0"},
      {"the left encoding chooses: U+FF21 against U+1F600 by units", WideText(u"\uFF21"),
       "\xF0\x9F\x98\x80", "1", "1"},
      {"null", NullReference(ValueType::String), "", NullValues("String", "String"),
       NullValues("String", "String")},
      {"an address", Address(ValueType::String, 5), "",
       "Variant is neither null nor value type string nor reference type string!",
       "Variant is neither null nor value type string nor reference type string!"},
      {"another object", Reference(ValueType::String, New(Data_CreateArray)), "",
       "Object does not implement Interfaces::IString interface!",
       "Object does not implement Interfaces::IString interface!"},
  });
}

/// A text kept in the record compares as a string object of it would.
TEST(VariantComparison, OfShortTextsAgreesWithStringObjects) {
  const std::string_view texts[] = {
      "",  "a",        "A",        "b", "ab", "aB", "abc",  "@",  "[",        "`",
      "{", "\xC3\xA9", "\xFF\xFE", "z", "Z",  "0z", "0Z\t", "\n", "zzzzzzzz", "16 Bytes of it!!"};
  const auto Sign = [](int result) { return result < 0 ? -1 : result > 0; };
  for (const auto left : texts) {
    for (const auto right : texts) {
      const int expected = Sign(MakeString(left)->Compare(MakeString(right).Get(), false));
      EXPECT_EQ(Compare(Variant(left), Variant(right)), expected) << left << " " << right;
      EXPECT_EQ(Compare(Variant(left), TextObject(right)), expected) << left << " " << right;
      EXPECT_EQ(Compare(TextObject(left), Variant(right)), expected) << left << " " << right;
    }
  }
}

TEST(VariantComparison, OfObjects) {
  const auto array = New(Data_CreateArray);
  const auto list = New(Data_CreateObjectList), other = New(Data_CreateObjectList);
  const bool isBelow =
      reinterpret_cast<std::uintptr_t>(list.Get()) < reinterpret_cast<std::uintptr_t>(other.Get());
  const char *const less = isBelow ? "-1" : "1", *const greater = isBelow ? "1" : "-1";
  const auto first = SomeError();
  Ptr<IErrorCode> second;
  ASSERT_FALSE(Data_CreateVariantPairList(nullptr, second.Receive()));
  Check({
      {"arrays have no order", Variant(array), Variant(array), NotImplemented("Array", "Array"),
       NotImplemented("Array", "Array")},
      {"identity", Variant(list), Variant(list), "0", "0"},
      {"lists by address", Variant(list), Variant(other), less, greater},
      {"objects by address", Variant(Ptr<IObject>(list)), Variant(Ptr<IObject>(other)), less,
       greater},
      {"string lists by address", Variant::StringList(list), Variant::StringList(other), less,
       greater},
      {"lists of two types", Variant(list), Variant::StringList(list),
       Mismatch("ObjectList", "StringList"), Mismatch("StringList", "ObjectList")},
      {"errors by text: ...VariantDictionary, ...VariantPairList", Variant(first), Variant(second),
       "-1", "1"},
      {"one error", Variant(first), Variant(first), "0", "0"},
      {"a null object", Variant(Ptr<IObject>(list)), NullReference(ValueType::IObject),
       NullValues("IObject", "IObject"), NullValues("IObject", "IObject")},
      {"a null array", NullReference(ValueType::Array), Variant(array),
       NullValues("Array", "Array"), NullValues("Array", "Array")},
  });
}

TEST(VariantComparison, OfDatesAndDocuments) {
  const Variant date = Date("2024-01-01T00:00:00Z"), document = JsonVariant("[1]");
  Check({
      {"by time", date, Date("2024-01-01T00:00:00.001Z"), "-1", "1"},
      {"equal times", date, Date("2024-01-01T00:00:00Z"), "0", "0"},
      {"before 1601", Date("1600-01-01T00:00:00Z"), date, "-1", "1"},
      {"one date", date, date, "0", "0"},
      {"a null date", date, NullReference(ValueType::DateTime), NullValues("DateTime", "DateTime"),
       NullValues("DateTime", "DateTime")},
      {"a date and its text", date, "2024-01-01T00:00:00Z", Mismatch("DateTime", "String"),
       Mismatch("String", "DateTime")},
      {"another object", Reference(ValueType::DateTime, New(Data_CreateArray)), date,
       "Object does not implement Interfaces::IDateTime interface!",
       "Object does not implement Interfaces::IDateTime interface!"},
      {"equal values", JsonVariant("{\"a\":1,\"b\":2}"), JsonVariant("{ \"b\": 2, \"a\": 1.0 }"),
       "0", "0"},
      {"else the longer text is greater", JsonVariant("[9]"), JsonVariant("[1,2]"), "-1", "1"},
      {"of one length by bytes, with case", JsonVariant("[\"a\"]"), JsonVariant("[\"B\"]"), "1",
       "-1"},
      {"invalid ones of one text", JsonVariant("["), JsonVariant("["), "0", "0"},
      {"without content", Variant(New(Data_CreateJsonDocument)), document, "-1", "1"},
      {"two without", Variant(New(Data_CreateJsonDocument)), Variant(New(Data_CreateJsonDocument)),
       "0", "0"},
      {"one document", document, document, "0", "0"},
      {"a document and its text", document, "[1]", Mismatch("JsonDocument", "String"),
       Mismatch("String", "JsonDocument")},
      {"a document that says it is XML", Reference(ValueType::XmlDocument, New(Data_CreateArray)),
       Reference(ValueType::XmlDocument, New(Data_CreateArray)),
       "Object does not implement Interfaces::IXmlDocument interface!",
       "Object does not implement Interfaces::IXmlDocument interface!"},
  });
}

TEST(VariantComparison, OfAddresses) {
  const char* const mustBePointer = "Must be pointer type!";
  Check({
      {"as unsigned numbers", Address(ValueType::Pointer, 1),
       Address(ValueType::Pointer, UINT64_MAX), "-1", "1"},
      {"any type in pointer form", Address(ValueType::IObject, 5), Address(ValueType::Pointer, 5),
       "0", "0"},
      {"null", Address(ValueType::Pointer, 0), Address(ValueType::Pointer, 5),
       NullValues("Pointer", "Pointer"), NullValues("Pointer", "Pointer")},
      {"kept by value", ByValue(ValueType::Pointer, 5), Address(ValueType::Pointer, 5),
       Mismatch("Pointer", "Pointer"), Mismatch("Pointer", "Pointer")},
      {"in reference form", Reference(ValueType::Pointer, New(Data_CreateArray)),
       Reference(ValueType::Pointer, New(Data_CreateArray)), mustBePointer, mustBePointer},
      {"a text where a date-time is needed", Address(ValueType::String, 5),
       Address(ValueType::DateTime, 5), "String cannot be converted to the primitive type!",
       "Variant is neither null nor value type string nor reference type string!"},
      {"a type that orders nothing", Address(ValueType::Unknown, 5), Address(ValueType::Pointer, 5),
       "0", NotImplemented("Pointer", "Unknown")},
      {"Null in pointer form", Address(ValueType::Null, 5), Address(ValueType::Pointer, 5),
       NullValues("Null", "Pointer"), NullValues("Pointer", "Null")},
  });
}

TEST(VariantComparison, OfWhatCannotBeCompared) {
  const Variant undefined = ByValue(static_cast<ValueType>(28));
  const Variant undefinedReference =
      Record(static_cast<ValueType>(200), StorageForm::Reference, 0xBAD);
  Check({
      {"Null", Null, Null, Mismatch("Null", "Null"), Mismatch("Null", "Null")},
      {"Unknown", Variant(), Variant(), Mismatch("Unknown", "Unknown"),
       Mismatch("Unknown", "Unknown")},
      {"a text and a number", "5", 5, Mismatch("String", "Int32"), Mismatch("Int32", "String")},
      {"Null in reference form", Reference(ValueType::Null, New(Data_CreateArray)),
       NullReference(ValueType::Null), NullValues("Null", "Null"), NullValues("Null", "Null")},
      {"Reserved in reference form", Reference(ValueType::Reserved, New(Data_CreateArray)),
       Reference(ValueType::Reserved, New(Data_CreateArray)),
       NotImplemented("Reserved", "Reserved"), NotImplemented("Reserved", "Reserved")},
      {"undefined types have no name", undefined, 5, Mismatch("", "Int32"), Mismatch("Int32", "")},
      {"nor are their references followed", undefinedReference, undefinedReference,
       NotImplemented("", ""), NotImplemented("", "")},
  });
}

/// Both codes primitive, or equal codes of a type with an order of its own.
TEST(VariantComparison, ComparabilityOfValuesByType) {
  const auto hasOwnOrder = [](std::uint32_t code) {
    return (code >= 18 && code <= 22) || (code >= 24 && code <= 26);
  };
  const auto isPrimitive = [](std::uint32_t code) {
    return (code >= 3 && code <= 15) || code == 23;
  };
  for (std::uint32_t left = 0; left < 30; ++left) {
    for (std::uint32_t right = 0; right < 30; ++right) {
      const bool comparable =
          (isPrimitive(left) && isPrimitive(right)) || (left == right && hasOwnOrder(left));
      const auto leftType = static_cast<ValueType>(left), rightType = static_cast<ValueType>(right);
      EXPECT_EQ(AreComparable(ByValue(leftType), ByValue(rightType)), comparable)
          << left << " " << right;
      EXPECT_EQ(AreComparable(NullReference(leftType), NullReference(rightType)),
                comparable || left == right)
          << left << " " << right;
      EXPECT_TRUE(AreComparable(Address(leftType, 1), Address(rightType, 1)));
      EXPECT_EQ(AreComparable(NullReference(leftType), ByValue(rightType)), comparable)
          << left << " " << right;
    }
  }
}

}  // namespace Data::tests
