#include "CallersText.h"
#include "Records.h"

namespace Data::tests {

namespace {

/// What creating a constrained value gives: "value in [min, max]", or the failure.
std::string Constrain(const _VARIANT* value, const _VARIANT* min, const _VARIANT* max) {
  Ptr<IConstrainedValue> out;
  const std::string failure = Failure(
      [&](auto e) { return Data_CreateConstrainedValue(value, min, max, out.Receive(), e); });
  if (!out) return failure;
  Variant shown, low, high;
  out->GetValue(&shown);
  out->GetConstraints(&low, &high);
  return Core::ToText(shown) + " in [" + Core::ToText(low) + ", " + Core::ToText(high) + "]";
}

}  // namespace

TEST(Properties, ChecksWhatAValueRefersTo) {
  for (const Case& c : Cases("Settings.txt", "property")) {
    const Variant value = RecordOf(c[0]);
    const auto properties = New(Data_CreateProperties);
    EXPECT_EQ(Failure([&](auto e) {
                return properties->Register("default", value.Type(), true, &value, e);
              }),
              c[1])
        << c.where;
    EXPECT_TRUE(properties->Register("a", value.Type(), true, nullptr, nullptr)) << c.where;
    EXPECT_EQ(Failure([&](auto e) { return properties->Set("a", &value, e); }), c[1]) << c.where;
    EXPECT_EQ(properties->HasValue("a", nullptr), c[1].empty()) << c.where;
  }
}

TEST(Properties, KeepTheirNamesInPlaceAndOrder) {
  const auto properties = New(Data_CreateProperties);
  std::vector<const char*> names;
  for (std::uint64_t i = 0; i < 10'000; ++i) {
    const std::string name = "property " + std::to_string(i);
    EXPECT_TRUE(properties->Register(name.c_str(), ValueType::Bool, false, nullptr, nullptr));
    names.push_back(properties->GetNameAt(i));
    EXPECT_EQ(names.back(), name);
  }
  for (std::uint64_t i = 0; i < names.size(); ++i) EXPECT_EQ(properties->GetNameAt(i), names[i]);
}

TEST(Enum, LeavesOutOptionsThatAreAddedMeanwhile) {
  const auto list = New(Data_CreateObjectList);
  const auto text = Core::MakePtr<CallersText>("a");
  text->onRead = [&] {
    if (list->GetCount() < 100) list->Add(text.Get());
  };
  list->Add(text.Get());
  EXPECT_EQ(Made<IEnum>(Data_CreateEnum, list.Get())->GetCount(), 1u);
}

TEST(ConstrainedValue, MovesTheValueIntoTheRange) {
  for (const Case& c : Cases("Settings.txt", "constrained")) {
    const Variant value = RecordOf(c[0]), min = RecordOf(c[1]), max = RecordOf(c[2]);
    EXPECT_EQ(Constrain(&value, &min, &max), c[3]) << c.where;
  }
  const Variant one(1), five(5);
  EXPECT_EQ(Constrain(nullptr, &one, &five), "Types of Value and Constraints don't match!");
}

TEST(AllowedValue, KeepsWhatItWasGiven) {
  const auto text = Core::MakeString("a text of more than 16 bytes");
  Variant value(text);
  const auto allowed =
      Made<IAllowedValue>(Data_CreateAllowedValue, &value, ComparisonOperator::NotLike, "name", "",
                          "group", "http://help");
  EXPECT_STREQ(allowed->GetDisplayName(), "name");
  EXPECT_STREQ(allowed->GetDescription(), "");
  EXPECT_STREQ(allowed->GetCategory(), "group");
  EXPECT_STREQ(allowed->GetHelpUri(), "http://help");
  EXPECT_EQ(allowed->GetComparison(), ComparisonOperator::NotLike);
  value = 5;
  allowed->GetValue(&value);
  allowed->GetValue(nullptr);
  EXPECT_EQ(value.As<Ptr<IString>>(), text);
  EXPECT_EQ(ReferencesTo(text), 3u) << "here, in `value` and in the allowed value";
}

TEST(AllowedValue, GivesTheDisplayTextOfItsValue) {
  for (const Case& c : Cases("Settings.txt", "allowed")) {
    const Variant value = RecordOf(c[0]);
    Ptr<IAllowedValue> allowed;
    Ptr<IString> text;
    EXPECT_EQ(Failure([&](auto e) {
                return Data_CreateAllowedValue(&value, ComparisonOperator::None, "", "", "", "",
                                               allowed.Receive(), e) &&
                       allowed->GetValueText(text.Receive(), e);
              }),
              c[2])
        << c.where;
    EXPECT_EQ(text ? text->GetUtf8() : "", c[1]) << c.where;
  }
}

}  // namespace Data::tests
