#include "Prelude.h"

namespace Data::tests {

using namespace Core;

namespace {

constexpr std::uint32_t kCodes = 28;
constexpr const char* kMustBeValue = "Must be value type!";
constexpr const char* kNoPrimitive = "String cannot be converted to the primitive type!";
constexpr const char* kInvalid = "Invalid value!";
constexpr const char* kNoDouble = "Cannot cast double to Int128! Not implemented";
constexpr const char* kNoFloat = "Cannot cast float to Int128! Not implemented";
constexpr const char* kMustBeReference =
    "Must be reference type! Must implement Core::IObject interface!";
constexpr const char* kMustMeanReference =
    "Must be reference type! Meaning: Must implement Core::IObject interface";
constexpr const char* kNoText =
    "Variant is neither null nor value type string nor reference type string!";
constexpr const char* kEmptyXml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
constexpr std::uint64_t kTopBit = 1ull << 63;

constexpr std::uint64_t Word(std::int64_t number) { return static_cast<std::uint64_t>(number); }
constexpr std::uint64_t Word(double number) { return std::bit_cast<std::uint64_t>(number); }
constexpr std::uint64_t Word(float number) { return std::bit_cast<std::uint32_t>(number); }

/// "high:low", or what is thrown.
std::string WideOutcome(const _VARIANT& variant) {
  return Outcome([&] {
    const WideInteger wide = ToWideInteger(variant);
    return std::to_string(wide.high) + ":" + std::to_string(wide.low);
  });
}

std::string TextOutcome(const Ptr<IString>& text) {
  return text ? std::string(Utf8View(*text)) : "(none)";
}

}  // namespace

TEST(ValueTypes, AreNamedByCode) {
  const char* names[kCodes] = {"Unknown",    "Invalid",      "Null",        "Int16",  "Int32",
                               "Int64",      "Int128",       "UInt16",      "UInt32", "UInt64",
                               "UInt128",    "Byte",         "SByte",       "Double", "Float",
                               "Bool",       "Pointer",      "IObject",     "Array",  "String",
                               "DateTime",   "JsonDocument", "XmlDocument", "Uuid",   "ErrorCode",
                               "ObjectList", "StringList",   "Reserved"};
  for (std::uint32_t code = 0; code < kCodes; ++code) {
    const auto type = static_cast<ValueType>(code);
    EXPECT_EQ(GetValueTypeName(type), names[code]);
    EXPECT_EQ(IsPrimitive(type), (code >= 3 && code <= 15) || code == 23) << names[code];
    EXPECT_EQ(IsConcrete(type), code >= 3 && code <= 26) << names[code];
  }
  for (const std::uint32_t code : {28u, 255u, 0xFFFFu})
    EXPECT_STREQ(GetValueTypeName(static_cast<ValueType>(code)).data(), "") << code;
}

TEST(VariantConversion, OfValues) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    const char* what;
    Variant value;
    std::string integer, real, wide, text;
  } cases[] = {
      {"zeroed", ByValue(ValueType::Unknown), "0", kInvalid, "0:0", ""},
      {"Invalid", ByValue(ValueType::Invalid, 5), "5", kInvalid, "0:5", ""},
      {"Null", ByValue(ValueType::Null, 5), "5", kInvalid, "0:5", ""},
      {"Int16", ByValue(ValueType::Int16, Word(std::int64_t{-2})), "-2", "-2",
       "0:18446744073709551614", "-2"},
      {"Int16 left unextended", ByValue(ValueType::Int16, 0xFFFE), "65534", "-2", "0:65534", "-2"},
      {"Int32", ByValue(ValueType::Int32, Word(std::int64_t{-7})), "-7", "-7",
       "0:18446744073709551609", "-7"},
      {"Int32 left unextended", ByValue(ValueType::Int32, 0xFFFFFFF9), "4294967289", "-7",
       "0:4294967289", "-7"},
      {"Int64", ByValue(ValueType::Int64, kTopBit), "-9223372036854775808", "-9223372036854775808",
       "0:9223372036854775808", "-9223372036854775808"},
      {"Int128, its low word read as signed", ByValue(ValueType::Int128, kTopBit, 1),
       "-9223372036854775808", "9223372036854775808", "1:9223372036854775808",
       "Int128_ToStringNotImplemented"},
      {"Int128, negative", ByValue(ValueType::Int128, 5, UINT64_MAX), "5", "-18446744073709551616",
       "-1:5", "Int128_ToStringNotImplemented"},
      {"UInt16", ByValue(ValueType::UInt16, 65535), "65535", "65535", "0:65535", "65535"},
      {"UInt32", ByValue(ValueType::UInt32, 4294967295), "4294967295", "4294967295", "0:4294967295",
       "4294967295"},
      {"UInt64", ByValue(ValueType::UInt64, UINT64_MAX), "-1", "18446744073709551616",
       "0:18446744073709551615", "18446744073709551615"},
      {"UInt128", ByValue(ValueType::UInt128, kTopBit, 1), "-9223372036854775808",
       "27670116110564327424", "1:9223372036854775808", "UInt128_ToStringNotImplemented"},
      {"Byte", ByValue(ValueType::Byte, 255), "255", "255", "0:255", "255"},
      {"SByte", ByValue(ValueType::SByte, 0xFF), "255", "-1", "0:255", "-1"},
      {"Double", ByValue(ValueType::Double, Word(5.7)), "5", "5.7", kNoDouble, "5.700000"},
      {"Double, toward zero", ByValue(ValueType::Double, Word(-5.7)), "-5", "-5.7", kNoDouble,
       "-5.700000"},
      {"Double beyond 64 bits", ByValue(ValueType::Double, Word(-0x1p80)), "-9223372036854775808",
       "-1.2089258196146292e+24", kNoDouble, "-1208925819614629174706176.000000"},
      {"Double just beyond", ByValue(ValueType::Double, Word(0x1p63)), "-9223372036854775808",
       "9223372036854775808", kNoDouble, "9223372036854775808.000000"},
      {"NaN", ByValue(ValueType::Double, Word(nan)), "-9223372036854775808", "nan", kNoDouble,
       "nan"},
      {"infinity", ByValue(ValueType::Double, Word(-HUGE_VAL)), "-9223372036854775808", "-inf",
       kNoDouble, "-inf"},
      {"Float", ByValue(ValueType::Float, Word(0.1f)), "0", "0.10000000149011612", kNoFloat,
       "0.100000"},
      {"Bool", ByValue(ValueType::Bool, 1), "1", "1", "0:1", "true"},
      {"false", ByValue(ValueType::Bool, 0), "0", "0", "0:0", "false"},
      {"any byte but zero is true", ByValue(ValueType::Bool, 0x80), "128", "-128", "0:128", "true"},
      {"one byte counts", ByValue(ValueType::Bool, 0x100), "256", "0", "0:256", "false"},
      {"Pointer", ByValue(ValueType::Pointer, 9), "9", kInvalid, "0:9", ""},
      {"IObject", ByValue(ValueType::IObject, 9), "9", kInvalid, "0:9", kMustBeReference},
      {"Array", ByValue(ValueType::Array, 9), "9", kInvalid, "0:9", kMustBeReference},
      {"String", Variant("7"), kNoPrimitive, kNoPrimitive, "0:55", "7"},
      {"DateTime", ByValue(ValueType::DateTime, 9), "9", kInvalid, "0:9", kMustMeanReference},
      {"JsonDocument", ByValue(ValueType::JsonDocument, 9), "9", kInvalid, "0:9",
       kMustMeanReference},
      {"XmlDocument", ByValue(ValueType::XmlDocument, 9), "9", kInvalid, "0:9", kMustMeanReference},
      {"ErrorCode", ByValue(ValueType::ErrorCode, 9), "9", kInvalid, "0:9", kMustMeanReference},
      {"ObjectList", ByValue(ValueType::ObjectList, 9), "9", kInvalid, "0:9", kMustBeReference},
      {"StringList", ByValue(ValueType::StringList, 9), "9", kInvalid, "0:9", kMustBeReference},
      {"Reserved", ByValue(ValueType::Reserved, 9), "9", kInvalid, "0:9", ""},
      {"undefined", ByValue(static_cast<ValueType>(28), 9), "9", kInvalid, "0:9", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Outcome([&] { return ToInt64(c.value); }), c.integer) << c.what;
    const std::string real = Outcome([&] { return ToDouble(c.value); });
    const bool isNumber = c.real.find('!') == std::string::npos;
    if (isNumber && std::isfinite(std::stod(c.real)))
      EXPECT_EQ(std::stod(real), std::stod(c.real)) << c.what;
    else
      EXPECT_EQ(real, c.real) << c.what;
    EXPECT_EQ(WideOutcome(c.value), c.wide) << c.what;
    EXPECT_EQ(Outcome([&] { return ToText(c.value); }), c.text) << c.what;
  }
}

TEST(VariantConversion, OfRecordsThatPointNowhere) {
  const auto text = [](const Variant& variant) -> std::string {
    const ValueType type = variant.Type();
    switch (type) {
      case ValueType::Double:
      case ValueType::Float:
        return "0.000000";
      case ValueType::Int128:
      case ValueType::UInt128:
        return std::string(GetValueTypeName(type)) + "_ToStringNotImplemented";
      case ValueType::Bool:
      case ValueType::Uuid:
        return kMustBeValue;
      case ValueType::IObject:
        return "null";
      case ValueType::JsonDocument:
        return "{}";
      case ValueType::XmlDocument:
        return kEmptyXml;
      case ValueType::String:
        return HasForm(variant, StorageForm::Pointer) ? "Must be string, json or xml!" : "";
      default:
        return IsPrimitive(type) ? "0" : "";
    }
  };
  for (std::uint32_t code = 0; code < kCodes; ++code) {
    const auto type = static_cast<ValueType>(code);
    for (const Variant& variant : {NullReference(type), Address(type, 0)}) {
      const auto what = std::string(GetValueTypeName(type)) + " " + std::to_string(variant.type);
      EXPECT_EQ(Outcome([&] { return ToInt64(variant); }), kMustBeValue) << what;
      EXPECT_EQ(Outcome([&] { return ToDouble(variant); }), kMustBeValue) << what;
      EXPECT_EQ(WideOutcome(variant), kMustBeValue) << what;
      EXPECT_EQ(GetObject<IObject>(variant), nullptr) << what;
      EXPECT_EQ(ToStringObject(variant), nullptr) << what;
      EXPECT_EQ(Outcome([&] { return ToText(variant); }), text(variant)) << what;
    }
  }
}

TEST(VariantConversion, OfAddresses) {
  const struct {
    ValueType type;
    std::string object, string, view, text;
  } cases[] = {
      {ValueType::Null, "(none)", "(none)", "Must be string, json or xml!", ""},
      {ValueType::Pointer, kMustBeReference, kNoText, "Must be string, json or xml!", ""},
      {ValueType::IObject, kMustBeReference, kNoText, "Must be string, json or xml!",
       kMustBeReference},
      {ValueType::String, kMustBeReference, kNoText, "Must be string, json or xml!",
       "Must be string, json or xml!"},
      {ValueType::JsonDocument, kMustBeReference, kNoText, "Must be string, json or xml!",
       kMustMeanReference},
      {ValueType::ErrorCode, kMustBeReference, kNoText, "Must be string, json or xml!",
       kMustMeanReference},
      {ValueType::Uuid, kMustBeReference, kNoText, "Must be string, json or xml!", kMustBeValue},
      {ValueType::Int32, kMustBeReference, kNoText, "Must be string, json or xml!", "5"},
  };
  for (const auto& c : cases) {
    const Variant address = Address(c.type, 5);
    const auto what = GetValueTypeName(c.type);
    EXPECT_EQ(Outcome([&] { return GetObject<IObject>(address) ? "some" : "(none)"; }), c.object)
        << what;
    EXPECT_EQ(Outcome([&] { return TextOutcome(ToStringObject(address)); }), c.string) << what;
    EXPECT_EQ(Outcome([&] { return std::string(GetStringView(address)); }), c.view) << what;
    EXPECT_EQ(Outcome([&] { return ToText(address); }), c.text) << what;
  }
}

TEST(VariantConversion, NumbersInOtherFormsAreRejected) {
  const auto array = New(Data_CreateArray);
  for (std::uint32_t code = 0; code < kCodes; ++code) {
    const auto type = static_cast<ValueType>(code);
    for (const Variant& variant :
         {Reference(type, array), Address(type, 7), Record(type, static_cast<StorageForm>(3), 7)}) {
      EXPECT_EQ(Outcome([&] { return ToInt64(variant); }), kMustBeValue) << code;
      EXPECT_EQ(Outcome([&] { return ToDouble(variant); }), kMustBeValue) << code;
      EXPECT_EQ(WideOutcome(variant), kMustBeValue) << code;
    }
  }
  EXPECT_EQ(ReferencesTo(array), 1u);
}

TEST(VariantConversion, TellsWhatAnObjectIsNot) {
  const auto array = New(Data_CreateArray);
  const struct {
    ValueType type;
    std::string text;
  } cases[] = {
      {ValueType::String, "Object does not implement Interfaces::IString interface!"},
      {ValueType::DateTime, "Object does not implement Interfaces::IDateTime interface!"},
      {ValueType::JsonDocument, "Object does not implement Interfaces::IJsonDocument interface!"},
      {ValueType::XmlDocument, "Object does not implement Interfaces::IXmlDocument interface!"},
      {ValueType::ErrorCode, "Object does not implement Core::IErrorCode interface!"},
      {ValueType::ObjectList,
       "Cannot cast to desired interface: Interface: struct Core::IObject Implementation: struct "
       "Data::Interfaces::IObjectList"},
      {ValueType::StringList,
       "Cannot cast to desired interface: Interface: struct Core::IObject Implementation: struct "
       "Data::Interfaces::IObjectList"},
      {ValueType::Null, ""},
      {ValueType::IObject, "struct Data::impl::ArrayImpl"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Outcome([&] { return ToText(Reference(c.type, array)); }), c.text);
  const Variant number(5);
  EXPECT_EQ(Outcome([&] { return GetJsonDocument(number) ? "" : ""; }),
            "Must be json type! Meaning: Must implement Data::IJsonDocument interface");
  EXPECT_EQ(Outcome([&] { return GetXmlDocument(number) ? "" : ""; }),
            "Must be xml type! Meaning: Must implement Data::IXmlDocument interface");
  EXPECT_EQ(Outcome([&] { return GetDateTime(number) ? "" : ""; }),
            "Must be datetime type! Meaning: Must implement Data::IDateTime interface");
  EXPECT_EQ(Outcome([&] { return GetErrorCode(number) ? "" : ""; }),
            "Must be ErrorCode type! Meaning: Must implement Core::IErrorCode interface");
  EXPECT_EQ(Outcome([&] { return GetObject<IArray>(number) ? "" : ""; }), kMustBeReference);
  EXPECT_EQ(GetErrorCode(Variant(Null)), nullptr);
  EXPECT_EQ(GetObject<IArray>(Reference(ValueType::Null, array)), nullptr)
      << "Null, whatever it refers to";
  EXPECT_EQ(ReferencesTo(array), 1u);
}

TEST(VariantConversion, StringsOfAnyForm) {
  const std::string longText = "a text of more than 16 bytes";
  const auto object = MakeString(longText);
  const Variant sixteen("exactly 16 bytes"), seventeen("exactly 17 bytes.");
  EXPECT_TRUE(HasForm(sixteen, StorageForm::Value));
  EXPECT_TRUE(HasForm(seventeen, StorageForm::Reference));
  const Variant withZero(std::string_view("a\0b", 3));
  EXPECT_TRUE(HasForm(withZero, StorageForm::Reference)) << "a zero byte would end it";
  EXPECT_EQ(ToText(withZero), std::string("a\0b", 3));
  const struct {
    const char* what;
    Variant value;
    std::string text;
  } cases[] = {
      {"empty", Variant(""), ""},
      {"one that ends before the payload", Variant("abc"), "abc"},
      {"one without a terminator", sixteen, "exactly 16 bytes"},
      {"bytes behind the terminator", ByValue(ValueType::String, 0x6100616263, UINT64_MAX), "cba"},
      {"an object", Variant(object), longText},
      {"an object never set", Variant(New(Data_CreateString)), ""},
  };
  EXPECT_EQ(GetStringView(JsonVariant("[1, 2]")), "[1, 2]");
  EXPECT_EQ(GetStringView(Variant(New(Data_CreateJsonDocument))), "");
  EXPECT_EQ(Outcome([] { return TextOutcome(ToStringObject(JsonVariant("[]"))); }),
            "Object does not implement Interfaces::IString interface!");
  for (const auto& c : cases) {
    EXPECT_EQ(GetStringView(c.value), c.text) << c.what;
    EXPECT_EQ(TextOutcome(ToStringObject(c.value)), c.text) << c.what;
    EXPECT_EQ(ToText(c.value), c.text) << c.what;
  }
  EXPECT_EQ(ToStringObject(Variant(object)), object) << "shared, not copied";
  EXPECT_EQ(ToStringObject(Reference(ValueType::IObject, object)), object)
      << "any reference to a string will do";
  EXPECT_EQ(GetStringView(Variant(object)).data(), object->GetUtf8());
  EXPECT_EQ(ReferencesTo(object), 1u + 1u) << "here and in the table of cases";
  EXPECT_EQ(Outcome([] { return TextOutcome(ToStringObject(Variant(5))); }), kNoText);
}

TEST(VariantConversion, DisplayTextOfObjects) {
  const auto array = New(Data_CreateArray);
  array->SetData("abcdef", 2, 3);
  const auto objects = New(Data_CreateObjectList), none = New(Data_CreateObjectList),
             strings = New(Data_CreateObjectList), holes = New(Data_CreateObjectList);
  objects->Add(array.Get());
  objects->Add(none.Get());
  strings->Add(MakeString("one").Get());
  strings->Add(MakeString("say \"two\"").Get());
  holes->Add(nullptr);
  const auto address = static_cast<int>(reinterpret_cast<std::uintptr_t>(array.Get()));
  const char* const nullEntry =
      "Null pointer exception! Interface is not accessible: struct Core::IObject";
  const struct {
    const char* what;
    Variant value;
    std::string text;
  } cases[] = {
      {"address and stride stand for stride and count", Variant(array),
       StringFormat("[Array] (Stride: %d, Count: 2)", address)},
      {"an object's class", Variant(Ptr<IObject>(array)), "struct Data::impl::ArrayImpl"},
      {"the class of the first element", Variant(objects), "struct Data::impl::ArrayImpl "},
      {"an empty list", Variant(none), "[ "},
      {"a null element", Variant(holes), nullEntry},
      {"strings, quoted and left open", Variant::StringList(strings), "[ \"one\" \"say \"two\"\" "},
      {"no strings", Variant::StringList(none), "[ "},
      {"a date-time", Date("2024-11-14T10:20:30.123Z"), "2024-11-14T10:20:30.123000000Z"},
      {"a document as it is", JsonVariant("{ \"a\": [1] }"), "{ \"a\": [1] }"},
      {"valid or not", JsonVariant("{"), "{"},
      {"one without content", Variant(New(Data_CreateJsonDocument)), "{}"},
      {"an error", Variant(SomeError()),
       "Pointer to a pointer of struct Data::Interfaces::IVariantDictionary must not be null! "
       "Address of return must be specified!"},
  };
  for (const auto& c : cases) EXPECT_EQ(Outcome([&] { return ToText(c.value); }), c.text) << c.what;
}

}  // namespace Data::tests
