#include "Schema/SchemaSupport.h"

namespace Data::tests {

using Names = std::vector<std::string>;

namespace {

/// The attributes that are texts, flags and numbers: how each is set and read,
/// and what `AddColumn` sets.
template <class Value>
struct AttributeCase {
  const char* what;
  bool (ISchema::*set)(const char*, Value, IErrorCode**);
  Value (ISchema::*get)(const char*, IErrorCode**);
  Value initial;  ///< of column "x"; null for a text that is not set
};

constexpr AttributeCase<const char*> kTexts[] = {
    {"description", &ISchema::SetColumnDescription, &ISchema::GetColumnDescription, ""},
    {"update expression", &ISchema::SetUpdateExpression, &ISchema::GetUpdateExpression, nullptr},
    {"unit", &ISchema::SetUnit, &ISchema::GetUnit, nullptr},
    {"insert expression", &ISchema::SetInsertExpression, &ISchema::GetInsertExpression, nullptr},
    {"display name", &ISchema::SetDisplayName, &ISchema::GetDisplayName, "x"},
    {"group", &ISchema::SetGroup, &ISchema::GetGroup, "Attribute Properties"},
    {"help", &ISchema::SetHelpUri, &ISchema::GetHelpUri, ""},
};
constexpr AttributeCase<bool> kFlags[] = {
    {"allow any value", &ISchema::SetAllowAnyValue, &ISchema::GetAllowAnyValue, true},
    {"read only", &ISchema::SetReadOnly, &ISchema::GetReadOnly, false},
    {"visible", &ISchema::SetVisible, &ISchema::GetVisible, true},
    {"display attribute", &ISchema::SetDisplayAttribute, &ISchema::GetDisplayAttribute, false},
};
constexpr AttributeCase<std::int32_t> kNumbers[] = {
    {"width", &ISchema::SetWidth, &ISchema::GetWidth, 5},
    {"decimals", &ISchema::SetDecimals, &ISchema::GetDecimals, 2},
};

Ptr<ISchema> SchemaWithColumn(const char* name = "x", ValueType type = ValueType::Int64) {
  auto schema = NewSchema();
  EXPECT_TRUE(schema->AddColumn(name, type, 5, 2, nullptr));
  return schema;
}

template <class Value>
void ExpectSetterAndGetter(const AttributeCase<Value>& c, Value value) {
  const auto schema = NewSchema();
  const auto read = [&](const char* name) {
    return Failure([&](IErrorCode** error) { return ((*schema).*c.get)(name, error); });
  };
  EXPECT_EQ(read("x"), kMissing) << c.what;
  EXPECT_EQ(schema->GetColumnCount(), 0u) << c.what << ": a getter adds no column";
  EXPECT_EQ(read(nullptr), kNullText) << c.what;
  EXPECT_FALSE(((*schema).*c.set)(nullptr, value, nullptr)) << c.what;
  EXPECT_TRUE(((*schema).*c.set)("x", value, nullptr)) << c.what;
  const Value stored = ((*schema).*c.get)("x", nullptr);
  if constexpr (std::is_same_v<Value, const char*>) {
    EXPECT_STREQ(stored, value) << c.what;
  } else {
    EXPECT_EQ(stored, value) << c.what;
  }
  EXPECT_EQ(ColumnNames(*schema), Names{"x"}) << c.what << ": a setter adds the column";
  EXPECT_EQ(Failure([&](IErrorCode** error) { return schema->CheckConsistency(error); }), kMissing)
      << c.what << ": which has nothing else";
  EXPECT_EQ(JsonOf(*schema), kMissing) << c.what;
}

}  // namespace

TEST(Schema, StartsWithAHeaderAndNoColumns) {
  const auto schema = NewSchema();
  EXPECT_STREQ(schema->GetTitle(), "Roads");
  EXPECT_STREQ(schema->GetDescription(), "All roads");
  EXPECT_EQ(schema->GetVersion(), 1);
  EXPECT_STREQ(schema->GetIdentifierColumn(), "");
  EXPECT_EQ(ColumnNames(*schema), Names{});
  EXPECT_TRUE(schema->CheckConsistency(nullptr));
  Structures::_UUID uuid{};
  EXPECT_TRUE(schema->GetUuid(&uuid, nullptr));
  EXPECT_EQ(std::memcmp(&uuid, &kSomeUuid, sizeof uuid), 0);
  EXPECT_EQ(Failure([&](IErrorCode** error) { return schema->GetUuid(nullptr, error); }),
            "Pointer of struct Data::Structures::_UUID must not be null!");
}

TEST(Schema, FactoryChecksItsArguments) {
  ISchema* held = NewSchema().Detach();
  ISchema* none = nullptr;
  const struct {
    const char* what;
    const Structures::_UUID* uuid;
    const char *title, *description;
    ISchema** out;
    const char* message;
  } cases[] = {
      {"uuid", nullptr, "", "", &none,
       "Pointer of struct Data::Structures::_UUID must not be null!"},
      {"title", &kSomeUuid, nullptr, "", &none, kNullText},
      {"description", &kSomeUuid, "", nullptr, &none, kNullText},
      {"out", &kSomeUuid, "", "", nullptr,
       "Pointer to a pointer of struct Data::Interfaces::ISchema must not be null! Address of "
       "return must be specified!"},
      {"full out", &kSomeUuid, "", "", &held,
       "Pointer of struct Data::Interfaces::ISchema must be null in order to avoid memory leaks!"},
  };
  for (const auto& c : cases) {
    Ptr<IErrorCode> error;
    EXPECT_FALSE(Data_CreateSchema(c.uuid, c.title, c.description, c.out, error.Receive()));
    EXPECT_EQ(MessageOf(error), c.message) << c.what;
  }
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(held->Release(), 0u);
}

TEST(Schema, NullChangesNoTitleButEmptiesTheIdentifierColumn) {
  const auto schema = SchemaWithColumn("first");
  schema->SetTitle(nullptr);
  schema->SetDescription(nullptr);
  EXPECT_STREQ(schema->GetTitle(), "Roads");
  EXPECT_STREQ(schema->GetDescription(), "All roads");
  EXPECT_STREQ(schema->GetIdentifierColumn(), "first") << "the first column ever named";
  schema->SetIdentifierColumn(nullptr);
  EXPECT_STREQ(schema->GetIdentifierColumn(), "");
  EXPECT_TRUE(schema->AddColumn("second", ValueType::Bool, 0, 0, nullptr));
  EXPECT_STREQ(schema->GetIdentifierColumn(), "") << "a later one does not become it";
  schema->SetTitle(schema->GetTitle() + 2);
  EXPECT_STREQ(schema->GetTitle(), "ads") << "set from its own text";
  schema->SetVersion(-7);
  EXPECT_EQ(schema->GetVersion(), -7);
}

TEST(Schema, KeepsAnIdentifierColumnThatWasSetBefore) {
  const auto schema = NewSchema();
  schema->SetIdentifierColumn("fid");
  EXPECT_TRUE(schema->SetWidth("x", 5, nullptr));
  EXPECT_STREQ(schema->GetIdentifierColumn(), "fid");
}

TEST(Schema, EachAttributeHasItsSetterAndGetter) {
  for (const auto& c : kTexts) {
    ExpectSetterAndGetter(c, "some text that is too long to be kept in place");
    EXPECT_EQ(
        Failure([&](IErrorCode** error) { return ((*NewSchema()).*c.set)("x", nullptr, error); }),
        kNullText)
        << c.what;
  }
  for (const auto& c : kFlags) ExpectSetterAndGetter(c, !c.initial);
  for (const auto& c : kNumbers) ExpectSetterAndGetter(c, -3);
  ExpectSetterAndGetter<bool>({"nullable", &ISchema::SetNullable, &ISchema::GetNullable, false},
                              true);
  const auto schema = NewSchema();
  EXPECT_TRUE(schema->SetType("x", ValueType::Double, nullptr));
  EXPECT_EQ(schema->GetType("x", nullptr), ValueType::Double);
  EXPECT_FALSE(schema->SetType(nullptr, ValueType::Double, nullptr));
  EXPECT_EQ(schema->GetType("y", nullptr), ValueType::Unknown);
}

TEST(Schema, FailedOperationsAddNoColumn) {
  const auto schema = NewSchema();
  const Variant undefined = Record(ValueType{99}, Core::StorageForm::Value);
  EXPECT_FALSE(schema->SetUnit("x", nullptr, nullptr));
  EXPECT_FALSE(schema->SetDefaultValue("x", nullptr, nullptr));
  EXPECT_FALSE(schema->SetDefaultValue("x", &undefined, nullptr));
  EXPECT_FALSE(schema->AddAllowedValue("x", nullptr, nullptr));
  EXPECT_FALSE(schema->AddColumnFull("x", "g", "d", ValueType::Bool, 1, 1, "", nullptr, nullptr));
  EXPECT_EQ(schema->GetColumnCount(), 0u);
  EXPECT_STREQ(schema->GetIdentifierColumn(), "");
}

TEST(Schema, AddColumnSetsEveryDefault) {
  const auto schema = SchemaWithColumn();
  for (const auto& c : kTexts) {
    const char* text = ((*schema).*c.get)("x", nullptr);
    EXPECT_EQ(text == nullptr, c.initial == nullptr) << c.what;
    EXPECT_STREQ(text, c.initial) << c.what;
  }
  for (const auto& c : kFlags) EXPECT_EQ(((*schema).*c.get)("x", nullptr), c.initial) << c.what;
  for (const auto& c : kNumbers) EXPECT_EQ(((*schema).*c.get)("x", nullptr), c.initial) << c.what;
  EXPECT_EQ(schema->GetType("x", nullptr), ValueType::Int64);
  EXPECT_EQ(Failure([&](IErrorCode** error) { return schema->GetNullable("x", error); }), kMissing);
  EXPECT_TRUE(schema->HasAllowedValues("x"));
  EXPECT_TRUE(AllowedValues(*schema, "x").empty());
  EXPECT_TRUE(schema->HasDefaultValue("x"));
  EXPECT_FALSE(schema->HasUnit("x"));
  EXPECT_FALSE(schema->HasUpdateExpression("x"));
  EXPECT_FALSE(schema->HasInsertExpression("x"));
  EXPECT_TRUE(schema->CheckConsistency(nullptr));
}

TEST(Schema, AddColumnSetsTheZeroOfTheType) {
  const struct {
    ValueType column, stored;
    const char* text;
  } cases[] = {
      {ValueType::Int16, ValueType::Int32, "0"},
      {ValueType::Int32, ValueType::Int32, "0"},
      {ValueType::Int64, ValueType::Int32, "0"},
      {ValueType::UInt16, ValueType::Int32, "0"},
      {ValueType::UInt32, ValueType::Int32, "0"},
      {ValueType::UInt64, ValueType::Int32, "0"},
      {ValueType::Byte, ValueType::Int32, "0"},
      {ValueType::SByte, ValueType::Int32, "0"},
      {ValueType::Int128, ValueType::Int128, "Int128_ToStringNotImplemented"},
      {ValueType::UInt128, ValueType::UInt128, "UInt128_ToStringNotImplemented"},
      {ValueType::Double, ValueType::Double, "0.000000"},
      {ValueType::Float, ValueType::Float, "0.000000"},
      {ValueType::Bool, ValueType::Bool, "false"},
      {ValueType::String, ValueType::String, ""},
      {ValueType::DateTime, ValueType::DateTime, "1970-01-01T00:00:00.000000000Z"},
      {ValueType::JsonDocument, ValueType::JsonDocument, "{}"},
      {ValueType::XmlDocument, ValueType::XmlDocument, "<?xml version=\"1.0\" ?>"},
      {ValueType::Uuid, ValueType::Null, ""},
      {ValueType::Pointer, ValueType::Null, ""},
      {ValueType::ObjectList, ValueType::Null, ""},
      {ValueType::Invalid, ValueType::Null, ""},
      {ValueType{99}, ValueType::Null, ""},
  };
  for (const auto& c : cases) {
    const auto value = DefaultValue(*SchemaWithColumn("x", c.column), "x");
    EXPECT_EQ(value.Type(), c.stored) << static_cast<int>(c.column);
    EXPECT_EQ(Core::ToText(value), c.text) << static_cast<int>(c.column);
    EXPECT_EQ(value.type >> 16 == 0, value.Type() == ValueType::String ||
                                         Core::IsPrimitive(c.stored) ||
                                         c.stored == ValueType::Null);
  }
  const auto array = DefaultValue(*SchemaWithColumn("x", ValueType::Array), "x");
  EXPECT_EQ(array.As<Ptr<Interfaces::IArray>>()->GetSize(), 0u);
  const auto xml = DefaultValue(*SchemaWithColumn("x", ValueType::XmlDocument), "x");
  EXPECT_TRUE(xml.As<Ptr<Interfaces::IXmlDocument>>()->IsValid());
}

TEST(Schema, HasTellsAttributesThatWereSetFromThoseThatWereNot) {
  const auto schema = SchemaWithColumn();
  EXPECT_TRUE(schema->SetUnit("x", "", nullptr));
  EXPECT_TRUE(schema->HasUnit("x")) << "an empty text is set too";
  EXPECT_TRUE(schema->SetUpdateExpression("x", "a", nullptr));
  EXPECT_TRUE(schema->HasUpdateExpression("x"));
  EXPECT_TRUE(schema->SetInsertExpression("x", "a", nullptr));
  EXPECT_TRUE(schema->HasInsertExpression("x"));
  EXPECT_TRUE(schema->SetWidth("y", 1, nullptr));
  EXPECT_FALSE(schema->HasDefaultValue("y"));
  EXPECT_FALSE(schema->HasAllowedValues("y"));
  EXPECT_FALSE(schema->HasUnit("X")) << "names are compared byte by byte";
  EXPECT_FALSE(schema->HasUnit("unknown"));
  EXPECT_FALSE(schema->HasUnit(nullptr));
}

TEST(Schema, AddColumnAgainKeepsThePlaceAndWhatItNeverSets) {
  const auto schema = SchemaWithColumn("a");
  EXPECT_TRUE(schema->AddColumn("b", ValueType::Double, 1, 1, nullptr));
  for (const auto& c : kTexts) EXPECT_TRUE(((*schema).*c.set)("a", "changed", nullptr));
  for (const auto& c : kFlags) EXPECT_TRUE(((*schema).*c.set)("a", !c.initial, nullptr));
  EXPECT_TRUE(schema->SetNullable("a", true, nullptr));
  EXPECT_TRUE(schema->AddAllowedValue("a", AllowedValue(1).Get(), nullptr));
  // The name may come from the schema's own texts.
  EXPECT_TRUE(schema->SetGroup("a", "a", nullptr));
  EXPECT_TRUE(schema->AddColumn(schema->GetGroup("a", nullptr), ValueType::String, 9, 8, nullptr));
  EXPECT_EQ(ColumnNames(*schema), (Names{"a", "b"}));
  EXPECT_STREQ(schema->GetDisplayName("a", nullptr), "a");
  EXPECT_STREQ(schema->GetGroup("a", nullptr), "Attribute Properties");
  EXPECT_STREQ(schema->GetUnit("a", nullptr), "changed");
  EXPECT_STREQ(schema->GetInsertExpression("a", nullptr), "changed");
  EXPECT_STREQ(schema->GetUpdateExpression("a", nullptr), "changed");
  EXPECT_TRUE(schema->GetNullable("a", nullptr));
  for (const auto& c : kFlags) EXPECT_EQ(((*schema).*c.get)("a", nullptr), c.initial) << c.what;
  EXPECT_EQ(schema->GetType("a", nullptr), ValueType::String);
  EXPECT_EQ(schema->GetWidth("a", nullptr), 9);
  EXPECT_TRUE(AllowedValues(*schema, "a").empty());
}

TEST(Schema, AddColumnWithTextsSetsThem) {
  const auto schema = NewSchema();
  EXPECT_TRUE(
      schema->AddColumnWithText("a", "group", "Shown", ValueType::Int32, "about", "m", nullptr));
  EXPECT_TRUE(
      schema->AddColumnFull("b", "group", "Shown", ValueType::Int32, 7, 3, "about", "m", nullptr));
  for (const char* column : {"a", "b"}) {
    EXPECT_STREQ(schema->GetGroup(column, nullptr), "group");
    EXPECT_STREQ(schema->GetDisplayName(column, nullptr), "Shown");
    EXPECT_STREQ(schema->GetColumnDescription(column, nullptr), "about");
    EXPECT_STREQ(schema->GetUnit(column, nullptr), "m");
  }
  EXPECT_EQ(schema->GetWidth("a", nullptr), -1);
  EXPECT_EQ(schema->GetDecimals("a", nullptr), -1);
  EXPECT_EQ(schema->GetWidth("b", nullptr), 7);
  EXPECT_EQ(schema->GetDecimals("b", nullptr), 3);
  for (int missing = 0; missing < 5; ++missing) {
    const auto text = [&](int index) { return index == missing ? nullptr : "c"; };
    EXPECT_EQ(Failure([&](IErrorCode** error) {
                return schema->AddColumnWithText(text(0), text(1), text(2), ValueType::Bool,
                                                 text(3), text(4), error);
              }),
              kNullText);
  }
  EXPECT_EQ(Failure([&](IErrorCode** error) {
              return schema->AddColumn(nullptr, ValueType::Bool, 0, 0, error);
            }),
            kNullText);
  EXPECT_EQ(schema->GetColumnCount(), 2u);
}

TEST(Schema, DefaultValuesShareTheirObjects) {
  const auto schema = SchemaWithColumn();
  const auto array = New<Interfaces::IArray>(Data_CreateArray);
  const Variant value(array);
  EXPECT_TRUE(schema->SetDefaultValue("x", &value, nullptr));
  EXPECT_EQ(ReferencesTo(array), 3u) << "here, in the record, in the schema";
  {
    Variant copy = 5;
    EXPECT_TRUE(schema->GetDefaultValue("x", &copy, nullptr));
    EXPECT_EQ(ReferencesTo(array), 4u);
    EXPECT_FALSE(schema->GetDefaultValue("y", &copy, nullptr));
    EXPECT_EQ(ReferencesTo(array), 4u) << "a failure leaves the record alone";
  }
  const Variant other = "text";
  EXPECT_TRUE(schema->SetDefaultValue("x", &other, nullptr));
  EXPECT_EQ(ReferencesTo(array), 2u);
  EXPECT_EQ(
      Failure([&](IErrorCode** error) { return schema->GetDefaultValue("x", nullptr, error); }),
      kNullRecord);
  EXPECT_EQ(
      Failure([&](IErrorCode** error) { return schema->SetDefaultValue("x", nullptr, error); }),
      kNullRecord);
  const Variant undefined = Record(ValueType{28}, Core::StorageForm::Reference, 1);
  EXPECT_EQ(
      Failure([&](IErrorCode** error) { return schema->SetDefaultValue("x", &undefined, error); }),
      kUndefinedRecord);
  EXPECT_EQ(Core::ToText(DefaultValue(*schema, "x")), "text");
}

TEST(Schema, ListsOfAllowedValues) {
  const auto schema = NewSchema();
  const auto first = AllowedValue(1), second = AllowedValue("two");
  EXPECT_TRUE(schema->AddAllowedValue("x", first.Get(), nullptr)) << "adds the column";
  EXPECT_TRUE(schema->AddAllowedValue("x", second.Get(), nullptr));
  EXPECT_TRUE(schema->AddAllowedValue("x", first.Get(), nullptr));
  EXPECT_EQ(AllowedValues(*schema, "x"), (std::vector{first, second, first}));
  EXPECT_EQ(ReferencesTo(first), 3u);

  const auto list = New<IObjectList>(Data_CreateObjectList);
  list->Add(second.Get());
  EXPECT_TRUE(schema->SetAllowedValues("x", list.Get(), nullptr));
  EXPECT_EQ(AllowedValues(*schema, "x"), std::vector{second});
  EXPECT_EQ(ReferencesTo(first), 1u);

  list->Add(nullptr);
  EXPECT_EQ(
      Failure([&](IErrorCode** error) { return schema->SetAllowedValues("x", list.Get(), error); }),
      "Null pointer exception! Interface is not accessible: struct Core::IObject");
  list->Clear();
  list->Add(schema.Get());
  EXPECT_EQ(
      Failure([&](IErrorCode** error) { return schema->SetAllowedValues("x", list.Get(), error); }),
      "Cannot cast to desired interface: Interface: struct Core::IObject Desired Interface: "
      "struct Data::Interfaces::IAllowedValue");
  EXPECT_EQ(AllowedValues(*schema, "x"), std::vector{second}) << "a failure changes nothing";
  list->Clear();

  EXPECT_TRUE(schema->SetAllowedValues("y", nullptr, nullptr)) << "null empties the list";
  EXPECT_TRUE(schema->HasAllowedValues("y"));
  EXPECT_TRUE(schema->ClearAllowedValues("x", nullptr));
  EXPECT_TRUE(schema->ClearAllowedValues("z", nullptr));
  EXPECT_TRUE(AllowedValues(*schema, "x").empty());
  EXPECT_EQ(ReferencesTo(second), 1u);
  EXPECT_EQ(ColumnNames(*schema), (Names{"x", "y", "z"}));
}

TEST(Schema, AllowedValueOperationsCheckTheirArguments) {
  const auto schema = SchemaWithColumn();
  const auto value = AllowedValue(1);
  Ptr<IObjectList> list;
  EXPECT_EQ(Failure([&](IErrorCode** e) { return schema->ClearAllowedValues(nullptr, e); }),
            kNullText);
  EXPECT_EQ(
      Failure([&](IErrorCode** e) { return schema->AddAllowedValue(nullptr, value.Get(), e); }),
      kNullText);
  EXPECT_EQ(Failure([&](IErrorCode** e) { return schema->AddAllowedValue("x", nullptr, e); }),
            "Pointer of struct Data::Interfaces::IAllowedValue must not be null!");
  EXPECT_EQ(Failure([&](IErrorCode** e) { return schema->SetAllowedValues(nullptr, nullptr, e); }),
            kNullText);
  EXPECT_EQ(
      Failure([&](IErrorCode** e) { return schema->GetAllowedValues("y", list.Receive(), e); }),
      kMissing);
  const char* const full =
      "Pointer of struct Data::Interfaces::IObjectList must be null in order to avoid memory "
      "leaks!";
  EXPECT_TRUE(schema->GetColumnNames(list.Receive(), nullptr));
  IObjectList* out = list.Get();
  EXPECT_EQ(Failure([&](IErrorCode** e) { return schema->GetAllowedValues("x", &out, e); }), full);
  EXPECT_EQ(Failure([&](IErrorCode** e) { return schema->GetColumnNames(&out, e); }), full);
  EXPECT_EQ(Failure([&](IErrorCode** e) { return schema->GetColumnNames(nullptr, e); }),
            "Pointer to a pointer of struct Data::Interfaces::IObjectList must not be null! "
            "Address of return must be specified!");
}

TEST(Schema, ClonesEverythingButTheIdentifier) {
  const auto schema = SchemaWithColumn("fid");
  const auto allowed = AllowedValue(1);
  EXPECT_TRUE(schema->SetUnit("unit only", "m", nullptr));
  EXPECT_TRUE(schema->AddAllowedValue("fid", allowed.Get(), nullptr));
  schema->SetIdentifierColumn("other");
  schema->SetVersion(5);

  Ptr<ISchema> same, renamed;
  const Structures::_UUID zero{};
  EXPECT_TRUE(schema->Clone(same.Receive(), nullptr));
  EXPECT_TRUE(schema->CloneWithUuid(&zero, renamed.Receive(), nullptr));
  EXPECT_EQ(AllowedValues(*same, "fid"), std::vector{allowed}) << "the very same object";
  for (const auto& clone : {same, renamed}) {
    EXPECT_EQ(ColumnNames(*clone), (Names{"fid", "unit only"}));
    EXPECT_STREQ(clone->GetTitle(), "Roads");
    EXPECT_STREQ(clone->GetDescription(), "All roads");
    EXPECT_STREQ(clone->GetIdentifierColumn(), "other");
    EXPECT_EQ(clone->GetVersion(), 5);
    EXPECT_STREQ(clone->GetUnit("unit only", nullptr), "m");
    EXPECT_FALSE(clone->HasDefaultValue("unit only"));
    Structures::_UUID uuid;
    EXPECT_TRUE(clone->GetUuid(&uuid, nullptr));
    EXPECT_EQ(std::memcmp(&uuid, clone == same ? &kSomeUuid : &zero, sizeof uuid), 0);
    EXPECT_TRUE(clone->SetWidth("new", 1, nullptr));
  }
  EXPECT_EQ(schema->GetColumnCount(), 2u) << "a clone has its own columns";
  EXPECT_EQ(Failure([&](IErrorCode** error) {
              Ptr<ISchema> clone;
              return schema->CloneWithUuid(nullptr, clone.Receive(), error);
            }),
            "Pointer of struct Data::Structures::_UUID must not be null!");
  ISchema* out = same.Get();
  EXPECT_EQ(Failure([&](IErrorCode** error) { return schema->Clone(&out, error); }),
            "Pointer of struct Data::Interfaces::ISchema must be null in order to avoid memory "
            "leaks!");
}

TEST(Schema, KeepsTheOrderOfManyColumns) {
  const auto schema = NewSchema();
  for (int i = 0; i < 5000; ++i)
    EXPECT_TRUE(
        schema->SetWidth(("column " + std::to_string(i * 7919 % 5000)).c_str(), i, nullptr));
  const auto names = ColumnNames(*schema);
  ASSERT_EQ(names.size(), 5000u);
  for (std::size_t i = 0; i < names.size(); ++i)
    ASSERT_EQ(schema->GetWidth(names[i].c_str(), nullptr), static_cast<int>(i)) << names[i];
}

}  // namespace Data::tests
