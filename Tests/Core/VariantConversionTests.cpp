#include "CallersText.h"

namespace Data::tests {

using namespace Core;

namespace {

/// Takes the text up to the next space.
std::string_view TakeWord(std::string_view& text) {
  const std::size_t space = std::min(text.find(' '), text.size());
  const std::string_view word = text.substr(0, space);
  text.remove_prefix(std::min(space + 1, text.size()));
  return word;
}

ValueType TypeNamed(std::string_view name) {
  for (std::uint32_t code = 0; code < Core::kValueTypes.size(); ++code)
    if (Core::kValueTypes[code].name == name) return static_cast<ValueType>(code);
  if (name == "Undefined") return static_cast<ValueType>(28);
  throw std::runtime_error("Not a type: " + std::string(name));
}

std::uint64_t PayloadWord(ValueType type, std::string_view digits) {
  if (digits.empty()) return 0;
  if (digits.starts_with("0x")) return std::stoull(std::string(digits), nullptr, 16);
  const std::string number(digits);
  if (type == ValueType::Double) return std::bit_cast<std::uint64_t>(std::stod(number));
  if (type == ValueType::Float) return std::bit_cast<std::uint32_t>(std::stof(number));
  return number.starts_with('-') ? static_cast<std::uint64_t>(std::stoll(number))
                                 : std::stoull(number);
}

/// Unknown if the text describes no object.
Variant ObjectOf(std::string_view text) {
  const std::string_view kind = TakeWord(text);
  if (kind == "array") return New(Data_CreateArray);
  if (kind == "list") return New(Data_CreateObjectList);
  if (kind == "string") return New(Data_CreateString);
  if (kind == "text") return MakeString(text);
  if (kind == "date") return Date(std::string(text).c_str());
  if (kind == "json" && text.empty()) return New(Data_CreateJsonDocument);
  if (kind == "json") return JsonVariant(text);
  if (kind != "xml") return {};
  const auto document = New(Data_CreateXmlDocument);
  document->SetContent(text.data(), text.size());
  return document;
}

/// The record that a data file describes:
///
///     Int32 -7, Int16 0xFFFE, Int128 5 0x1   the payload of any type by value, as
///                                            one or two words
///     "abc                                   a text
///     String &, Array & list                 a reference to nothing, to an object
///     Pointer * 5                            an address
///     Int32 ? 7                              a storage form that does not exist
///
/// Objects: `array`, `list`, `string` and `json` (new ones), `text abc`, `date
/// 2024`, `json [1]`, `xml <a/>`; alone each is a reference of its own type.
Variant RecordOf(std::string_view text) {
  if (text.starts_with('"')) return text.substr(1);
  Variant object = ObjectOf(text);
  if (object.Type() != ValueType::Unknown) return object;

  const ValueType type = TypeNamed(TakeWord(text));
  if (text.starts_with('&')) {
    text.remove_prefix(std::min<std::size_t>(2, text.size()));
    object = ObjectOf(text);
    object.type = Core::MakeTag(type, Core::StorageForm::Reference);
    return object;
  }
  auto form = Core::StorageForm::Value;
  if (text.starts_with('*')) form = Core::StorageForm::Pointer;
  if (text.starts_with('?')) form = static_cast<Core::StorageForm>(3);
  if (form != Core::StorageForm::Value) TakeWord(text);
  const std::uint64_t low = PayloadWord(type, TakeWord(text));
  return Record(type, form, low, PayloadWord(type, text));
}

/// "high:low", or what is thrown.
std::string WideOutcome(const _VARIANT& variant) {
  return Outcome([&] {
    const WideInteger wide = ToWideInteger(variant);
    return std::to_string(wide.high) + ":" + std::to_string(wide.low);
  });
}

std::string StringOutcome(const _VARIANT& variant) {
  return Outcome([&] {
    const auto text = ToStringObject(variant);
    return text ? std::string(Utf8View(*text)) : "(none)";
  });
}

std::string ObjectOutcome(const _VARIANT& variant) {
  return Outcome([&] { return GetObject<IObject>(variant) ? "some" : "(none)"; });
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
    EXPECT_EQ(WideOutcome(value), c[3]) << c.where;
    EXPECT_EQ(Outcome([&] { return ToText(value); }), c[4]) << c.where;
  }
}

TEST(VariantConversion, OfObjectsAndTexts) {
  for (const Case& c : Cases("Variants.txt", "objects and texts")) {
    const Variant value = RecordOf(c[0]);
    EXPECT_EQ(ObjectOutcome(value), c[1]) << c.where;
    EXPECT_EQ(StringOutcome(value), c[2]) << c.where;
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
}

namespace {

/// An error of a program's own, without a message.
class CallersError final : public CallersOwn<IErrorCode> {
 public:
  const char* GetMessage() override { return nullptr; }
  std::uint64_t GetMessageLength() override { return 5; }
  std::uint32_t GetCode() override { return 0; }
};

}  // namespace

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
