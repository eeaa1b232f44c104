#include "Prelude.h"

#include "CallersText.h"
#include "Records.h"

namespace Data::tests {

namespace {

constexpr const char* kMinMaxTypes = "Types of Min/Max don't match!";
constexpr const char* kValueTypes = "Types of Value and Constraints don't match!";

Ptr<IObjectList> Texts(std::initializer_list<const char*> texts) {
  const auto list = New(Data_CreateObjectList);
  for (const char* text : texts) list->Add(Core::MakePtr<CallersText>(text).Get());
  return list;
}

std::string EnumFailure(const Ptr<IObjectList>& options) {
  Ptr<IEnum> out;
  return Failure([&](auto e) { return Data_CreateEnum(options.Get(), out.Receive(), e); });
}

Ptr<IEnum> NewEnum(std::initializer_list<const char*> options) {
  Ptr<IEnum> result;
  EXPECT_TRUE(Data_CreateEnum(Texts(options).Get(), result.Receive(), nullptr));
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

/// What creating a constrained value gives: as `Shown`, or the failure.
std::string Constrain(const _VARIANT* value, const _VARIANT* min, const _VARIANT* max) {
  Ptr<IConstrainedValue> out;
  const std::string failure = Failure(
      [&](auto e) { return Data_CreateConstrainedValue(value, min, max, out.Receive(), e); });
  return out ? Shown(*out) : failure;
}

}  // namespace

TEST(Enum, FactoryRejectsWhatGivesNoOptions) {
  const auto notText = New(Data_CreateObjectList), holed = New(Data_CreateObjectList);
  notText->Add(New(Data_CreateArray).Get());
  holed->Add(nullptr);
  EXPECT_EQ(EnumFailure(Texts({})), "Cannot create enum with 0 options.");
  EXPECT_EQ(EnumFailure(notText),
            "Cannot cast to desired interface: Interface: struct Core::IObject Desired Interface: "
            "struct Data::Interfaces::IString");
  EXPECT_EQ(EnumFailure(holed),
            "Null pointer exception! Interface is not accessible: struct Core::IObject");
}

TEST(Enum, SelectsByPositionOrText) {
  const auto choice = NewEnum({"a", "b", nullptr, "a", "ca"});
  const char* const notAvailable = "Given string is not an available option.";
  EXPECT_EQ(choice->GetIndex(), 0u);
  EXPECT_STREQ(choice->GetSelected(), "a");
  for (const std::uint32_t index : {4u, 1u}) {
    EXPECT_EQ(Failure([&](auto e) { return choice->SetIndex(index, e); }), "");
    EXPECT_EQ(choice->GetIndex(), index);
  }
  EXPECT_STREQ(choice->GetSelected(), "b");
  const struct {
    std::uint32_t index;
    const char* got;
  } positions[] = {{5, "5"}, {2147483647, "2147483647"}, {4294967295, "-1"}};
  for (const auto& c : positions)
    EXPECT_EQ(Failure([&](auto e) { return choice->SetIndex(c.index, e); }),
              "Index out of bounds. Expected in range [0, 4]. Got "s + c.got + ".");
  for (const char* text : {"A", "ab", " ", "c"})
    EXPECT_EQ(Failure([&](auto e) { return choice->SelectOption(text, e); }), notAvailable);
  EXPECT_EQ(Failure([&](auto e) { return choice->SelectOption(nullptr, e); }), kNullText);
  EXPECT_EQ(choice->GetIndex(), 1u) << "failures change nothing";
  EXPECT_TRUE(choice->SelectOption("", nullptr)) << "an option that answers null is empty";
  EXPECT_EQ(choice->GetIndex(), 2u);
  EXPECT_TRUE(choice->SelectOption("a", nullptr));
  EXPECT_EQ(choice->GetIndex(), 0u) << "the first of equal ones";
}

TEST(Enum, GivesItsOptionsInOrder) {
  const auto choice = NewEnum({"b", "a", "b"});
  EXPECT_EQ(choice->GetCount(), 3u);
  Ptr<IObjectList> options;
  EXPECT_EQ(Failure([&](auto e) { return choice->GetOptions(options.Receive(), e); }), "");
  EXPECT_EQ(Core::ToText(Variant::StringList(options)), "[ \"b\" \"a\" \"b\" ");
}

TEST(ConstrainedValue, MovesTheValueIntoTheRange) {
  for (const Case& c : Cases("Settings.txt", "constrained")) {
    const Variant value = RecordOf(c[0]), min = RecordOf(c[1]), max = RecordOf(c[2]);
    EXPECT_EQ(Constrain(&value, &min, &max), c[3]) << c.where;
  }
  const Variant one(1), five(5);
  EXPECT_EQ(Constrain(nullptr, &one, &five), kValueTypes) << "null is Null";
}

TEST(ConstrainedValue, ChangesWholeOrNotAtAll) {
  const Variant zero(0), two(2), five(5), seven(7), minus(-3), ten(10), real(1.0);
  const Variant wide(std::int64_t{9});
  const _VARIANT undefined{0xFFFF, {0, 0}};
  Ptr<IConstrainedValue> constrained;
  ASSERT_TRUE(Data_CreateConstrainedValue(&five, &zero, &ten, constrained.Receive(), nullptr));
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
  const Variant text("m"), nullText = NullReference(ValueType::String);
  constrained.Reset();
  ASSERT_TRUE(Data_CreateConstrainedValue(&text, &text, &text, constrained.Receive(), nullptr));
  EXPECT_EQ(set(&nullText),
            "Null values cannot be compared! Left type is String, Right type is String");
  EXPECT_EQ(Shown(*constrained), "m in [m, m]");
}

TEST(ConstrainedValue, HoldsReferencesToItsTexts) {
  const auto text = Core::MakeString("m");
  {
    const Variant held(text), last("y"), highest("z");
    Ptr<IConstrainedValue> constrained;
    ASSERT_TRUE(
        Data_CreateConstrainedValue(&held, &held, &highest, constrained.Receive(), nullptr));
    EXPECT_EQ(ReferencesTo(text), 4u) << "here, in `held`, as value and as bound";
    Variant min(text), max;
    constrained->GetConstraints(&min, &max);
    EXPECT_EQ(ReferencesTo(text), 5u) << "the destination gave up what it held";
    EXPECT_TRUE(constrained->SetConstraints(&last, &last, nullptr));
    EXPECT_EQ(ReferencesTo(text), 3u);
  }
  EXPECT_EQ(ReferencesTo(text), 1u);
}

TEST(AllowedValue, KeepsWhatItWasGiven) {
  const auto text = Core::MakeString("a text of more than 16 bytes");
  {
    Ptr<IAllowedValue> allowed;
    const Variant value(text);
    ASSERT_TRUE(Data_CreateAllowedValue(&value, ComparisonOperator::NotLike, "name", "", "group",
                                        "http://help", allowed.Receive(), nullptr));
    EXPECT_STREQ(allowed->GetDisplayName(), "name");
    EXPECT_STREQ(allowed->GetDescription(), "");
    EXPECT_STREQ(allowed->GetCategory(), "group");
    EXPECT_STREQ(allowed->GetHelpUri(), "http://help");
    EXPECT_EQ(allowed->GetComparison(), ComparisonOperator::NotLike);
    EXPECT_EQ(ReferencesTo(text), 3u);
    Variant copy(text);
    allowed->GetValue(&copy);
    allowed->GetValue(nullptr);
    EXPECT_EQ(copy.As<Ptr<IString>>(), text);
    EXPECT_EQ(ReferencesTo(text), 4u);
  }
  EXPECT_EQ(ReferencesTo(text), 1u);
}

TEST(AllowedValue, GivesTheDisplayTextOfItsValue) {
  for (const Case& c : Cases("Settings.txt", "allowed")) {
    const Variant value = RecordOf(c[0]);
    Ptr<IAllowedValue> allowed;
    ASSERT_TRUE(Data_CreateAllowedValue(&value, ComparisonOperator::None, "", "", "", "",
                                        allowed.Receive(), nullptr));
    Ptr<IString> text;
    EXPECT_EQ(Failure([&](auto e) { return allowed->GetValueText(text.Receive(), e); }), c[2])
        << c.where;
    EXPECT_EQ(text ? text->GetUtf8() : "", c[1]) << c.where;
  }
  const _VARIANT undefined{28, {0, 0}};
  Ptr<IAllowedValue> out;
  EXPECT_EQ(Failure([&](auto e) {
              return Data_CreateAllowedValue(&undefined, ComparisonOperator::None, "", "", "", "",
                                             out.Receive(), e);
            }),
            kUndefinedRecord);
}

}  // namespace Data::tests
