#include "Prelude.h"

namespace Data::tests {

namespace {

constexpr const char* kMinMaxTypes = "Types of Min/Max don't match!";
constexpr const char* kValueTypes = "Types of Value and Constraints don't match!";

Ptr<IObjectList> Texts(std::initializer_list<const char*> texts) {
  const auto list = New(Data_CreateObjectList);
  for (const char* text : texts) list->Add(Core::MakeString(text).Get());
  return list;
}

std::string EnumFailure(IObjectList* options) {
  Ptr<IEnum> out;
  return Failure([&](auto e) { return Data_CreateEnum(options, out.Receive(), e); });
}

Ptr<IEnum> NewEnum(std::initializer_list<const char*> options) {
  Ptr<IEnum> result;
  EXPECT_TRUE(Data_CreateEnum(Texts(options).Get(), result.Receive(), nullptr));
  return result;
}

std::string ConstrainFailure(const _VARIANT* value, const _VARIANT* min, const _VARIANT* max) {
  Ptr<IConstrainedValue> out;
  return Failure(
      [&](auto e) { return Data_CreateConstrainedValue(value, min, max, out.Receive(), e); });
}

Ptr<IConstrainedValue> Constrained(const Variant& value, const Variant& min, const Variant& max) {
  Ptr<IConstrainedValue> result;
  EXPECT_TRUE(Data_CreateConstrainedValue(&value, &min, &max, result.Receive(), nullptr));
  return result;
}

/// "value in [min, max]" as display texts.
std::string Shown(IConstrainedValue& constrained) {
  Variant value, min, max;
  constrained.GetValue(&value);
  constrained.GetConstraints(&min, &max);
  return value.As<std::string>() + " in [" + min.As<std::string>() + ", " + max.As<std::string>() +
         "]";
}

}  // namespace

TEST(Enum, FactoryRejectsWhatGivesNoOptions) {
  const auto notText = New(Data_CreateObjectList), holed = New(Data_CreateObjectList);
  notText->Add(New(Data_CreateArray).Get());
  holed->Add(nullptr);
  EXPECT_EQ(EnumFailure(nullptr),
            "Pointer of struct Data::Interfaces::IObjectList must not be null!");
  EXPECT_EQ(EnumFailure(Texts({}).Get()), "Cannot create enum with 0 options.");
  EXPECT_EQ(EnumFailure(notText.Get()),
            "Cannot cast to desired interface: Interface: struct Core::IObject Desired Interface: "
            "struct Data::Interfaces::IString");
  EXPECT_EQ(EnumFailure(holed.Get()),
            "Null pointer exception! Interface is not accessible: struct Core::IObject");
  const auto options = Texts({"a"});
  const auto existing = NewEnum({"a"});
  IEnum* out = existing.Get();
  EXPECT_EQ(Failure([&](auto e) { return Data_CreateEnum(options.Get(), nullptr, e); }),
            "Pointer to a pointer of struct Data::Interfaces::IEnum must not be null! Address of "
            "return must be specified!");
  EXPECT_EQ(Failure([&](auto e) { return Data_CreateEnum(options.Get(), &out, e); }),
            "Pointer of struct Data::Interfaces::IEnum must be null in order to avoid memory "
            "leaks!");
  EXPECT_EQ(out, existing.Get());
}

TEST(Enum, SelectsByPosition) {
  const auto choice = NewEnum({"x", "y", "z"});
  EXPECT_EQ(choice->GetIndex(), 0u);
  EXPECT_STREQ(choice->GetSelected(), "x");
  EXPECT_EQ(Failure([&](auto e) { return choice->SetIndex(2, e); }), "");
  const struct {
    std::uint32_t index;
    const char* error;
  } cases[] = {
      {3, "Index out of bounds. Expected in range [0, 2]. Got 3."},
      {2147483647, "Index out of bounds. Expected in range [0, 2]. Got 2147483647."},
      {4294967295, "Index out of bounds. Expected in range [0, 2]. Got -1."},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Failure([&](auto e) { return choice->SetIndex(c.index, e); }), c.error);
    EXPECT_EQ(choice->GetIndex(), 2u) << "unchanged";
    EXPECT_STREQ(choice->GetSelected(), "z");
  }
}

TEST(Enum, SelectsByText) {
  const char* const notAvailable = "Given string is not an available option.";
  const struct {
    const char* text;
    std::uint32_t index;  ///< 1 if nothing changes
    const char* error;
  } cases[] = {
      {"a", 0, ""},
      {"", 2, ""},
      {"c\xC3\xA9", 4, ""},
      {"A", 1, notAvailable},
      {"ab", 1, notAvailable},
      {" ", 1, notAvailable},
      {nullptr, 1, kNullText},
  };
  for (const auto& c : cases) {
    const auto choice = NewEnum({"a", "b", "", "a", "c\xC3\xA9"});
    ASSERT_TRUE(choice->SetIndex(1, nullptr));
    EXPECT_EQ(Failure([&](auto e) { return choice->SelectOption(c.text, e); }), c.error);
    EXPECT_EQ(choice->GetIndex(), c.index);
  }
}

TEST(Enum, GivesItsOptionsInOrder) {
  const auto choice = NewEnum({"b", "a", "b"});
  EXPECT_EQ(choice->GetCount(), 3u);
  Ptr<IObjectList> options;
  EXPECT_EQ(Failure([&](auto e) { return choice->GetOptions(options.Receive(), e); }), "");
  EXPECT_EQ(Core::ToText(Variant::StringList(options)), "[ \"b\" \"a\" \"b\" ");
  IObjectList* held = options.Get();
  EXPECT_EQ(Failure([&](auto e) { return choice->GetOptions(&held, e); }),
            "Pointer of struct Data::Interfaces::IObjectList must be null in order to avoid memory "
            "leaks!");
}

TEST(ConstrainedValue, FactoryChecksTypesAndOrder) {
  const auto array = New(Data_CreateArray);
  const Variant one(1), five(5), wide(std::int64_t{5}), real(2.0), null(Null), bytes(array);
  const Variant nullText = NullReference(ValueType::String), text("b");
  const _VARIANT undefined{28, {0, 0}};
  const char* const noOrder =
      "Values cannot be compared due type mismatch! Left type is Null, Right type is Null";
  const struct {
    const char* what;
    const _VARIANT *value, *min, *max;
    const char* error;
  } cases[] = {
      {"in range", &one, &one, &five, ""},
      {"bounds of two types", &one, &one, &wide, kMinMaxTypes},
      {"bounds first", &real, &one, &wide, kMinMaxTypes},
      {"value of another type", &real, &one, &five, kValueTypes},
      {"bounds swapped", &one, &five, &one, "Min is bigger than Max!"},
      {"null pointers are Null, which has no order", nullptr, nullptr, nullptr, noOrder},
      {"as is Null", &null, &null, &null, noOrder},
      {"one null pointer", nullptr, &one, &five, kValueTypes},
      {"arrays have no order", &bytes, &bytes, &bytes,
       "Compare is not implemented for specified value types: Left type is Array, Right type is "
       "Array"},
      {"a null reference", &nullText, &text, &text,
       "Null values cannot be compared! Left type is String, Right type is String"},
      {"undefined", &undefined, &one, &five, kUndefinedRecord},
      {"undefined bound", &one, &undefined, &undefined, kUndefinedRecord},
  };
  for (const auto& c : cases) EXPECT_EQ(ConstrainFailure(c.value, c.min, c.max), c.error) << c.what;
  EXPECT_EQ(ReferencesTo(array), 2u);
  EXPECT_EQ(
      Failure([&](auto e) { return Data_CreateConstrainedValue(&one, &one, &one, nullptr, e); }),
      "Pointer to a pointer of struct Data::Interfaces::IConstrainedValue must not be null! "
      "Address of return must be specified!");
}

TEST(ConstrainedValue, MovesTheValueIntoTheRange) {
  const Variant longLow("a text of more than 16 bytes"), longHigh("b text of more than 16 bytes");
  const struct {
    Variant value, min, max;
    const char* shown;
  } cases[] = {
      {15, 0, 10, "10 in [0, 10]"},
      {-3, 0, 10, "0 in [0, 10]"},
      {0, 0, 10, "0 in [0, 10]"},
      {10, 0, 10, "10 in [0, 10]"},
      {7, 5, 5, "5 in [5, 5]"},
      {2.5, -1.0, 2.25, "2.250000 in [-1.000000, 2.250000]"},
      {"m", "A", "z", "m in [A, z]"},
      {"aa", "B", "z", "B in [B, z]"},
      {"B", "b", "z", "B in [b, z]"},
      {longHigh, "a", longLow, "a text of more than 16 bytes in [a, a text of more than 16 bytes]"},
  };
  for (const auto& c : cases) EXPECT_EQ(Shown(*Constrained(c.value, c.min, c.max)), c.shown);
}

TEST(ConstrainedValue, ChangesWholeOrNotAtAll) {
  const auto constrained = Constrained(5, 0, 10);
  const Variant two(2), seven(7), minus(-3), real(1.0), wide(std::int64_t{9});
  const _VARIANT undefined{0xFFFF, {0, 0}};
  const auto constrain = [&](const _VARIANT* min, const _VARIANT* max) {
    return Failure([&](auto e) { return constrained->SetConstraints(min, max, e); });
  };
  const auto set = [&](const _VARIANT* value) {
    return Failure([&](auto e) { return constrained->SetValue(value, e); });
  };
  EXPECT_EQ(set(&real), kValueTypes);
  EXPECT_EQ(set(nullptr), kNullRecord);
  EXPECT_EQ(set(&undefined), kUndefinedRecord);
  EXPECT_EQ(constrain(&two, &wide), kMinMaxTypes);
  EXPECT_EQ(constrain(&real, &real), kValueTypes);
  EXPECT_EQ(constrain(&seven, &two), "Min is bigger than Max!");
  EXPECT_EQ(constrain(nullptr, &two), kNullRecord);
  EXPECT_EQ(constrain(&two, &undefined), kUndefinedRecord);
  EXPECT_EQ(Shown(*constrained), "5 in [0, 10]");
  EXPECT_EQ(set(&minus), "");
  EXPECT_EQ(Shown(*constrained), "0 in [0, 10]");
  EXPECT_EQ(constrain(&seven, &seven), "");
  EXPECT_EQ(Shown(*constrained), "7 in [7, 7]");
  constrained->GetConstraints(nullptr, nullptr);
  constrained->GetValue(nullptr);
  const auto ofText = Constrained("m", "a", "z");
  const Variant nullText = NullReference(ValueType::String);
  EXPECT_EQ(Failure([&](auto e) { return ofText->SetValue(&nullText, e); }),
            "Null values cannot be compared! Left type is String, Right type is String");
  EXPECT_EQ(Shown(*ofText), "m in [a, z]");
}

TEST(ConstrainedValue, HoldsReferencesToItsTexts) {
  const auto text = Core::MakeString("m");
  {
    const auto constrained = Constrained(Variant(text), Variant(text), "z");
    EXPECT_EQ(ReferencesTo(text), 3u);
    Variant min(text), max;
    constrained->GetConstraints(&min, &max);
    EXPECT_EQ(ReferencesTo(text), 4u) << "the destination gave up what it held";
    const Variant last("y");
    EXPECT_TRUE(constrained->SetConstraints(&last, &last, nullptr));
    EXPECT_EQ(ReferencesTo(text), 2u);
  }
  EXPECT_EQ(ReferencesTo(text), 1u);
}

TEST(AllowedValue, KeepsWhatItWasGiven) {
  const auto text = Core::MakeString("a text of more than 16 bytes");
  Ptr<IAllowedValue> allowed;
  const Variant value(text);
  EXPECT_EQ(Failure([&](auto e) {
              return Data_CreateAllowedValue(&value, ComparisonOperator::NotLike, "name", "",
                                             "group", "http://help", allowed.Receive(), e);
            }),
            "");
  EXPECT_STREQ(allowed->GetDisplayName(), "name");
  EXPECT_STREQ(allowed->GetDescription(), "");
  EXPECT_STREQ(allowed->GetCategory(), "group");
  EXPECT_STREQ(allowed->GetHelpUri(), "http://help");
  EXPECT_EQ(allowed->GetComparison(), ComparisonOperator::NotLike);
  EXPECT_EQ(ReferencesTo(text), 3u);
  Variant copy;
  allowed->GetValue(&copy);
  allowed->GetValue(&copy);
  EXPECT_EQ(copy.As<Ptr<IString>>(), text);
  EXPECT_EQ(ReferencesTo(text), 4u);
  allowed->GetValue(nullptr);
  allowed.Reset();
  EXPECT_EQ(ReferencesTo(text), 3u);
}

TEST(AllowedValue, FactoryRejectsMissingArguments) {
  const Variant one(1);
  const _VARIANT undefined{200, {0, 0}};
  const struct {
    const char* what;
    const _VARIANT* value;
    const char* texts[4];
    const char* error;
  } cases[] = {
      {"value", nullptr, {"", "", "", ""}, kNullRecord},
      {"display name", &one, {nullptr, "", "", ""}, kNullText},
      {"description", &one, {"", nullptr, "", ""}, kNullText},
      {"category", &one, {"", "", nullptr, ""}, kNullText},
      {"help link", &one, {"", "", "", nullptr}, kNullText},
      {"undefined value", &undefined, {"", "", "", ""}, kUndefinedRecord},
  };
  for (const auto& c : cases) {
    Ptr<IAllowedValue> allowed;
    EXPECT_EQ(Failure([&](auto e) {
                return Data_CreateAllowedValue(c.value, ComparisonOperator::Equal, c.texts[0],
                                               c.texts[1], c.texts[2], c.texts[3],
                                               allowed.Receive(), e);
              }),
              c.error)
        << c.what;
    EXPECT_FALSE(allowed);
  }
}

TEST(AllowedValue, GivesTheDisplayTextOfItsValue) {
  const struct {
    Variant value;
    const char* text;
    const char* error;
  } cases[] = {
      {42, "42", ""},
      {"text", "text", ""},
      {Null, "", ""},
      {2.5, "2.500000", ""},
      {ByValue(ValueType::Array, 1), "",
       "Must be reference type! Must implement Core::IObject interface!"},
  };
  for (const auto& c : cases) {
    Ptr<IAllowedValue> allowed;
    ASSERT_TRUE(Data_CreateAllowedValue(&c.value, ComparisonOperator::None, "", "", "", "",
                                        allowed.Receive(), nullptr));
    Ptr<IString> text;
    EXPECT_EQ(Failure([&](auto e) { return allowed->GetValueText(text.Receive(), e); }), c.error);
    EXPECT_STREQ(text ? text->GetUtf8() : "", c.text);
    EXPECT_EQ(Failure([&](auto e) { return allowed->GetValueText(nullptr, e); }),
              "Pointer to a pointer of struct Data::Interfaces::IString must not be null! Address "
              "of return must be specified!");
  }
}

}  // namespace Data::tests
