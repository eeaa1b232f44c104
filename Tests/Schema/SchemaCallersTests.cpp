// A schema whose allowed values, default values and lists are objects of the program's own. Their
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
  void GetValue(_VARIANT* out) override {
    onRead();
    Core::CopyVariant(&value, out);
  }
  ComparisonOperator GetComparison() override { return ComparisonOperator{99}; }
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

/// A schema with three such values in column "x".
struct SchemaOfCallersValues {
  Ptr<ISchema> schema = SchemaWithColumn();
  CallersValue* value = nullptr;  ///< the first, which the schema alone keeps alive

  SchemaOfCallersValues() {
    for (int i = 0; i < 3; ++i) {
      const auto added = Core::MakePtr<CallersValue>();
      EXPECT_TRUE(schema->AddAllowedValue("x", added.Get(), nullptr));
      if (i == 0) value = added.Get();
    }
  }
};

}  // namespace

TEST(SchemaCallers, TextsThatAreNullAreEmpty) {
  const SchemaOfCallersValues s;
  const std::string json = JsonOf(*s.schema);
  EXPECT_NE(json.find(R"({"value":"the value that a schema allows","type":"string",)"
                      R"("comparison":"none","displayName":"","description":"","category":"",)"
                      R"("helpUri":""})"),
            json.npos)
      << json;
}

TEST(SchemaCallers, AValueMayChangeTheListThatIsRead) {
  const struct {
    const char* what;
    std::function<void(ISchema&)> read;
  } cases[] = {
      {"listed", [](ISchema& schema) { AllowedValues(schema, "x"); }},
      {"cloned",
       [](ISchema& schema) {
         Ptr<ISchema> clone;
         EXPECT_TRUE(schema.Clone(clone.Receive(), nullptr));
       }},
      {"written", [](ISchema& schema) { EXPECT_EQ(JsonOf(schema)[0], '{'); }},
  };
  for (const auto& c : cases) {
    const SchemaOfCallersValues cleared, grown;
    cleared.value->onAddReference = cleared.value->onRead =
        Once([&] { EXPECT_TRUE(cleared.schema->ClearAllowedValues("x", nullptr)); });
    c.read(*cleared.schema);
    EXPECT_TRUE(AllowedValues(*cleared.schema, "x").empty()) << c.what;
    grown.value->onAddReference = grown.value->onRead = Once([&] {
      for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(grown.schema->AddAllowedValue("x", AllowedValue(i).Get(), nullptr));
    });
    c.read(*grown.schema);
    EXPECT_EQ(AllowedValues(*grown.schema, "x").size(), 103u) << c.what;
  }
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

  const auto list = New<IObjectList>(Data_CreateObjectList);
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
  EXPECT_EQ(
      Failure([&](IErrorCode** error) { return schema->SetDefaultValue("x", &record, error); }),
      "no more references");
  EXPECT_EQ(
      Failure([&](IErrorCode** error) { return schema->AddAllowedValue("x", value.Get(), error); }),
      "no more references");
  EXPECT_EQ(schema->GetColumnCount(), 0u);
  EXPECT_STREQ(schema->GetIdentifierColumn(), "");
}

}  // namespace Data::tests
