// A schema whose allowed values, default values and lists are the caller's own objects. Their
// code may use the schema while the schema uses them.
#include "Callers.h"
#include "Schema/SchemaSupport.h"

namespace Data::tests {

namespace {

/// Answers null for every text.
struct CallersValue : CallersOwn<IAllowedValue> {
  std::function<void()> onRead = [] {};
  Variant value = "the value that a schema allows";

  const char* GetDisplayName() override { return Text(); }
  const char* GetDescription() override { return Text(); }
  const char* GetCategory() override { return Text(); }
  const char* GetHelpUri() override { return Text(); }
  void GetValue(_VARIANT* out) override { Core::CopyVariant(&value, out); }
  ComparisonOperator GetComparison() override { return ComparisonOperator{9}; }
  bool GetValueText(IString**, IErrorCode**) override { return false; }

 private:
  const char* Text() {
    onRead();
    return nullptr;
  }
};

/// Runs once: what it calls may come back to it.
std::function<void()> Once(std::function<void()> call) {
  return [call, ran = std::make_shared<bool>()] {
    if (!std::exchange(*ran, true)) call();
  };
}

/// Adds one to column "x", which alone keeps it alive.
CallersValue* AddCallersValue(ISchema& schema) {
  const auto value = Core::MakePtr<CallersValue>();
  EXPECT_TRUE(schema.AddAllowedValue("x", value.Get(), nullptr));
  return value.Get();
}

const std::function<void(ISchema&)> kReads[] = {
    [](ISchema& schema) { AllowedValues(schema, "x"); },
    [](ISchema& schema) { EXPECT_EQ(JsonOf(schema)[0], '{'); },
    [](ISchema& schema) { Made<ISchema>(&ISchema::Clone, &schema); }};

}  // namespace

TEST(SchemaCallers, TextsThatAreNullAreEmpty) {
  const auto schema = SchemaWithColumn();
  AddCallersValue(*schema);
  const char* const written =
      R"({"value":"the value that a schema allows","type":"string","comparison":"none",)"
      R"("displayName":"","description":"","category":"","helpUri":""})";
  EXPECT_NE(JsonOf(*schema).find(written), std::string::npos) << JsonOf(*schema);
}

TEST(SchemaCallers, AValueMayChangeTheListThatIsRead) {
  for (const auto& read : kReads)
    for (const int added : {0, 100}) {
      const auto schema = SchemaWithColumn();
      auto* const value = AddCallersValue(*schema);
      AddCallersValue(*schema);
      value->onAddReference = value->onRead = Once([&] {
        if (added == 0) schema->ClearAllowedValues("x", nullptr);
        for (int i = 0; i < added; ++i) AddCallersValue(*schema);
      });
      read(*schema);
      EXPECT_EQ(AllowedValues(*schema, "x").size(), added == 0 ? 0u : 102u);
    }
}

TEST(SchemaCallers, AValueMayReleaseTheSchema) {
  const auto list = New(Data_CreateObjectList);
  Ptr<CallersValue> value;
  std::vector<std::function<void(ISchema&)>> uses(std::begin(kReads), std::end(kReads));
  uses.push_back([&](auto& schema) { schema.AddAllowedValue("y", value.Get(), nullptr); });
  uses.push_back([&](auto& schema) { schema.SetAllowedValues("y", list.Get(), nullptr); });
  uses.push_back([&](auto& schema) {
    const _VARIANT record = Core::MakeReference(ValueType::IObject, value.Get());
    schema.SetDefaultValue("x", &record, nullptr);
  });
  for (const auto& use : uses) {
    auto schema = SchemaWithColumn();
    value = AddCallersValue(*schema);
    list->Clear();
    list->Add(value.Get());
    value->onAddReference = value->onRead = Once([&] { schema.Reset(); });
    use(*schema);
    EXPECT_FALSE(schema);
  }
}

TEST(SchemaCallers, WhatAValueAddsMeanwhileIsLeftOut) {
  const auto schema = SchemaWithColumn();
  auto* const value = AddCallersValue(*schema);
  int added = 0;
  bool isAdding = false;
  const auto add = [&] {
    if (added >= 100 || std::exchange(isAdding, true)) return;
    for (const std::string& name : {"x"s, std::to_string(++added)})
      EXPECT_TRUE(schema->AddAllowedValue(name.c_str(), value, nullptr));
    isAdding = false;
  };
  value->onAddReference = value->onRead = add;
  const std::string json = JsonOf(*schema);
  EXPECT_EQ(json[0], '{') << json;
  EXPECT_EQ(json.find("allowedValues"), json.rfind("allowedValues")) << json;
  EXPECT_LT(std::exchange(added, 0), 10);
  Made<ISchema>(&ISchema::Clone, schema);
  EXPECT_LT(added, 50);
}

TEST(SchemaCallers, AValueMayUseTheListThatItIsAddedTo) {
  const auto schema = SchemaWithColumn();
  const auto value = Core::MakePtr<CallersValue>();
  const auto other = AllowedValue(1);
  value->onAddReference = Once([&] {
    for (int i = 0; i < 10; ++i) EXPECT_TRUE(schema->AddAllowedValue("x", other.Get(), nullptr));
  });
  EXPECT_TRUE(schema->AddAllowedValue("x", value.Get(), nullptr));
  EXPECT_EQ(AllowedValues(*schema, "x").size(), 11u);

  const auto list = New(Data_CreateObjectList);
  for (int i = 0; i < 3; ++i) list->Add(value.Get());
  value->onAddReference = Once([&] { list->Clear(); });
  EXPECT_TRUE(schema->SetAllowedValues("x", list.Get(), nullptr));
  EXPECT_EQ(AllowedValues(*schema, "x").size(), 1u) << "the list was emptied at its first entry";
}

TEST(SchemaCallers, WhatIsReplacedIsReleasedLast) {
  const auto schema = SchemaWithColumn();
  const auto store = [&] {
    const auto value = Core::MakePtr<CallersValue>();
    EXPECT_TRUE(
        schema->SetDefaultValue("x", &static_cast<const _VARIANT&>(Variant(value)), nullptr));
    return value.Get();
  };
  const auto widen = Once([&] { EXPECT_TRUE(schema->SetWidth("x", 77, nullptr)); });
  store()->onRelease = widen;
  EXPECT_TRUE(schema->AddColumn("x", ValueType::Bool, 1, 1, nullptr));
  EXPECT_EQ(schema->GetWidth("x", nullptr), 77) << "set when the column was complete";
  const Variant text = "text", other = "other";
  store()->onRelease = Once([&] { EXPECT_TRUE(schema->SetDefaultValue("x", &other, nullptr)); });
  EXPECT_TRUE(schema->SetDefaultValue("x", &text, nullptr));
  EXPECT_EQ(Core::ToText(DefaultValue(*schema, "x")), "other");
}

TEST(SchemaCallers, AnObjectThatThrowsAddsNoColumn) {
  const auto schema = NewSchema();
  const auto value = Core::MakePtr<CallersValue>();
  const Variant record = Reference(ValueType::IObject, value);
  value->onAddReference = [] { throw std::runtime_error("no more references"); };
  const auto setDefault = [&](auto e) { return schema->SetDefaultValue("x", &record, e); };
  const auto allow = [&](auto e) { return schema->AddAllowedValue("x", value.Get(), e); };
  EXPECT_EQ(Failure(setDefault), "no more references");
  EXPECT_EQ(Failure(allow), "no more references");
  EXPECT_EQ(schema->GetColumnCount(), 0u);
  EXPECT_STREQ(schema->GetIdentifierColumn(), "");
}

}  // namespace Data::tests
