#include "Schema/SchemaSupport.h"

namespace Data::tests {

using Names = std::vector<std::string>;

namespace {

/// An attribute that is a text, a flag or a number: how it is set and read, and another value than
/// `AddColumn` sets.
template <class Value>
struct Attribute {
  const char* what;
  bool (ISchema::*set)(const char*, Value, IErrorCode**);
  Value (ISchema::*get)(const char*, IErrorCode**);
  Value other;
};

constexpr Attribute<const char*> kTexts[] = {
    {"description", &ISchema::SetColumnDescription, &ISchema::GetColumnDescription, "d"},
    {"update expression", &ISchema::SetUpdateExpression, &ISchema::GetUpdateExpression, "u"},
    {"unit", &ISchema::SetUnit, &ISchema::GetUnit, "m"},
    {"insert expression", &ISchema::SetInsertExpression, &ISchema::GetInsertExpression, "i"},
    {"display name", &ISchema::SetDisplayName, &ISchema::GetDisplayName, "n"},
    {"group", &ISchema::SetGroup, &ISchema::GetGroup, "x"},
    {"help", &ISchema::SetHelpUri, &ISchema::GetHelpUri, "a text of more than sixteen bytes"},
};
constexpr Attribute<bool> kFlags[] = {
    {"allow any value", &ISchema::SetAllowAnyValue, &ISchema::GetAllowAnyValue, false},
    {"read only", &ISchema::SetReadOnly, &ISchema::GetReadOnly, true},
    {"visible", &ISchema::SetVisible, &ISchema::GetVisible, false},
    {"display attribute", &ISchema::SetDisplayAttribute, &ISchema::GetDisplayAttribute, true},
    {"nullable", &ISchema::SetNullable, &ISchema::GetNullable, true},
};
constexpr Attribute<std::int32_t> kNumbers[] = {
    {"width", &ISchema::SetWidth, &ISchema::GetWidth, -3},
    {"decimals", &ISchema::SetDecimals, &ISchema::GetDecimals, -4},
};
constexpr Attribute<ValueType> kTypes[] = {
    {"type", &ISchema::SetType, &ISchema::GetType, ValueType::Double},
};

/// Calls `visit` with each attribute of the tables above.
template <class Visitor>
void ForEachAttribute(Visitor visit) {
  for (const auto& attribute : kTexts) visit(attribute);
  for (const auto& attribute : kFlags) visit(attribute);
  for (const auto& attribute : kNumbers) visit(attribute);
  for (const auto& attribute : kTypes) visit(attribute);
}

constexpr char kHeader[] =
    R"({"$schema":"./qv.schema.layer.json","schema":{"uuid":"6b29fc40-ca47-1067-b31d-00dd010662da",)"
    R"("title":"Roads","description":"All roads","identifierColumn":"x","version":1},"columns":[)";
/// The column that `AddColumn("x", Int64, 5, 2)` makes.
constexpr char kColumn[] =
    R"({"name":"x","group":"Attribute Properties","displayName":"x","description":"","helpUri":"",)"
    R"("type":"integer","defaultValue":"0","width":5,"decimals":2,"readOnly":false,)"
    R"("allowAnyValue":true,"displayAttribute":false,"visible":true})";

std::string DocumentOf(const std::string& columns) { return kHeader + columns + "]}"; }

}  // namespace

TEST(Schema, StartsWithAHeaderAndNoColumns) {
  const auto schema = NewSchema();
  EXPECT_STREQ(schema->GetTitle(), "Roads");
  EXPECT_STREQ(schema->GetDescription(), "All roads");
  EXPECT_EQ(schema->GetVersion(), 1);
  EXPECT_STREQ(schema->GetIdentifierColumn(), "");
  EXPECT_EQ(ColumnNames(*schema), Names{});
  EXPECT_TRUE(schema->CheckConsistency(nullptr));
  _UUID uuid{};
  EXPECT_TRUE(schema->GetUuid(&uuid, nullptr));
  EXPECT_EQ(std::memcmp(&uuid, &kSomeUuid, sizeof uuid), 0);
}

TEST(Schema, NullChangesNoTitleButEmptiesTheIdentifierColumn) {
  const auto schema = SchemaWithColumn();
  schema->SetTitle(nullptr);
  schema->SetDescription(nullptr);
  EXPECT_STREQ(schema->GetTitle(), "Roads");
  EXPECT_STREQ(schema->GetDescription(), "All roads");
  EXPECT_STREQ(schema->GetIdentifierColumn(), "x") << "the first column ever named";
  schema->SetIdentifierColumn(nullptr);
  EXPECT_STREQ(schema->GetIdentifierColumn(), "");
  EXPECT_TRUE(schema->SetWidth("second", 0, nullptr));
  EXPECT_STREQ(schema->GetIdentifierColumn(), "") << "a later one does not become it";
  schema->SetTitle(schema->GetTitle() + 2);
  EXPECT_STREQ(schema->GetTitle(), "ads") << "set from its own text";
  schema->SetDescription("");
  EXPECT_STREQ(schema->GetDescription(), "");
  schema->SetVersion(-7);
  EXPECT_EQ(schema->GetVersion(), -7);

  const auto identified = NewSchema();
  identified->SetIdentifierColumn("fid");
  EXPECT_TRUE(identified->SetWidth("x", 5, nullptr));
  EXPECT_STREQ(identified->GetIdentifierColumn(), "fid") << "it was set before";
}

TEST(Schema, EachAttributeHasItsSetterAndGetter) {
  ForEachAttribute([]<class Value>(const Attribute<Value>& c) {
    const auto schema = NewSchema();
    const auto read = [&](const char* name) {
      return Failure([&](IErrorCode** error) { return ((*schema).*c.get)(name, error); });
    };
    EXPECT_EQ(read("x"), kMissing) << c.what;
    EXPECT_EQ(schema->GetColumnCount(), 0u) << c.what << ": a getter adds no column";
    EXPECT_EQ(read(nullptr), kNullText) << c.what;
    EXPECT_FALSE(((*schema).*c.set)(nullptr, c.other, nullptr)) << c.what;
    EXPECT_TRUE(((*schema).*c.set)("x", c.other, nullptr)) << c.what;
    const Value stored = ((*schema).*c.get)("x", nullptr);
    if constexpr (std::is_same_v<Value, const char*>) {
      EXPECT_STREQ(stored, c.other) << c.what;
      EXPECT_EQ(Failure([&](IErrorCode** e) { return ((*schema).*c.set)("y", nullptr, e); }),
                kNullText);
    } else {
      EXPECT_EQ(stored, c.other) << c.what;
    }
    EXPECT_EQ(ColumnNames(*schema), Names{"x"}) << c.what << ": a setter adds the column";
    EXPECT_EQ(Failure([&](IErrorCode** error) { return schema->CheckConsistency(error); }),
              kMissing)
        << c.what << ": which has nothing else";
    EXPECT_EQ(JsonOf(*schema), kMissing) << c.what;
  });
}

TEST(Schema, AddColumnSetsWhatASetterAloneDoesNot) {
  const auto schema = SchemaWithColumn();
  EXPECT_EQ(JsonOf(*schema), DocumentOf(kColumn));
  EXPECT_TRUE(schema->CheckConsistency(nullptr));
  EXPECT_TRUE(AllowedValues(*schema, "x").empty());
  EXPECT_EQ(Failure([&](IErrorCode** error) { return schema->GetNullable("x", error); }), kMissing);
  EXPECT_EQ(Failure([&](IErrorCode** error) { return schema->GetUnit("x", error); }), kMissing);

  EXPECT_TRUE(schema->SetWidth("y", 1, nullptr));
  for (const auto& [has, isAdded] : {std::pair{&ISchema::HasAllowedValues, true},
                                     {&ISchema::HasDefaultValue, true},
                                     {&ISchema::HasUpdateExpression, false},
                                     {&ISchema::HasInsertExpression, false},
                                     {&ISchema::HasUnit, false}}) {
    EXPECT_EQ(((*schema).*has)("x"), isAdded);
    for (const char* name : {"y", "X", "unknown", static_cast<const char*>(nullptr)})
      EXPECT_FALSE(((*schema).*has)(name)) << "names are compared byte by byte";
  }
  EXPECT_TRUE(schema->SetUnit("x", "", nullptr));
  EXPECT_TRUE(schema->HasUnit("x")) << "an empty text is set too";
  EXPECT_TRUE(schema->SetUpdateExpression("x", "a", nullptr));
  EXPECT_TRUE(schema->HasUpdateExpression("x"));
  EXPECT_FALSE(schema->HasInsertExpression("x"));
  EXPECT_TRUE(schema->SetInsertExpression("x", "a", nullptr));
  EXPECT_TRUE(schema->HasInsertExpression("x"));
}

TEST(Schema, EveryTypeHasANameAndADefaultValue) {
  std::uint32_t code = 0;
  for (const Case& c : Cases("Schemas.txt", "types")) {
    const auto type = static_cast<ValueType>(code++);
    ASSERT_EQ(Core::GetValueTypeName(type), c[0]) << c.where;
    const auto schema = SchemaWithColumn(type);
    const std::string json = JsonOf(*schema), key = R"("type":")";
    const auto name = json.find(key);
    EXPECT_EQ(name == json.npos ? json : json.substr(name + key.size()).substr(0, c[1].size()),
              c[1])
        << c.where;
    const Variant value = DefaultValue(*schema, "x");
    EXPECT_EQ(Core::GetValueTypeName(value.Type()), c[2]) << c.where;
    EXPECT_EQ(Core::ToText(value).substr(0, c[3].size()), c[3]) << c.where;
    if (!Core::ReferencedObject(value)) {
      EXPECT_EQ(value.value[0] | value.value[1], 0u) << c.where;
    }
  }
  EXPECT_EQ(code, 28u);
  EXPECT_TRUE(DefaultValue(*SchemaWithColumn(ValueType{99}), "x").IsNull());
  EXPECT_TRUE(DefaultValue(*SchemaWithColumn(ValueType::XmlDocument), "x")
                  .As<Ptr<IXmlDocument>>()
                  ->IsValid());
}

TEST(Schema, AddColumnAgainKeepsThePositionAndWhatItNeverSets) {
  const auto schema = SchemaWithColumn();
  EXPECT_TRUE(schema->SetWidth("later", 1, nullptr));
  EXPECT_TRUE(schema->SetType("later", ValueType::Bool, nullptr));
  ForEachAttribute([&](const auto& c) { EXPECT_TRUE(((*schema).*c.set)("x", c.other, nullptr)); });
  EXPECT_TRUE(schema->AddAllowedValue("x", AllowedValue(1).Get(), nullptr));
  // The name may come from the schema's own texts.
  const char* const name = schema->GetGroup("x", nullptr);
  EXPECT_TRUE(schema->AddColumn(name, ValueType::Int64, 5, 2, nullptr));
  EXPECT_EQ(ColumnNames(*schema), (Names{"x", "later"}));
  EXPECT_TRUE(schema->AddColumn("later", ValueType::Int64, 5, 2, nullptr));
  std::string kept = kColumn;
  kept.insert(kept.find(R"("width")"),
              R"("updateExpression":"u","insertExpression":"i","unit":"m",)");
  kept.insert(kept.size() - 1, R"(,"nullable":true)");
  EXPECT_EQ(JsonOf(*schema).find(DocumentOf(kept).substr(0, sizeof kHeader + kept.size() - 1)), 0u)
      << JsonOf(*schema);
}

TEST(Schema, AddColumnWithTextsSetsThem) {
  const auto schema = NewSchema();
  EXPECT_TRUE(schema->AddColumnWithText("x", "g", "n", ValueType::Int32, "d", "m", nullptr));
  EXPECT_TRUE(schema->AddColumnFull("b", "g", "n", ValueType::Int32, 7, 3, "d", "m", nullptr));
  const std::string common = R"(,"group":"g","displayName":"n","description":"d","helpUri":"",)"
                             R"("type":"integer","defaultValue":"0","unit":"m",)";
  const std::string flags = R"(,"readOnly":false,"allowAnyValue":true,"displayAttribute":false,)"
                            R"("visible":true})";
  EXPECT_EQ(JsonOf(*schema),
            DocumentOf(R"({"name":"x")" + common + R"("width":-1,"decimals":-1)" + flags +
                       R"(,{"name":"b")" + common + R"("width":7,"decimals":3)" + flags));
  for (int missing = 0; missing < 5; ++missing) {
    const auto text = [&](int index) { return index == missing ? nullptr : "c"; };
    const auto add = [&](IErrorCode** error) {
      return schema->AddColumnWithText(text(0), text(1), text(2), ValueType::Bool, text(3), text(4),
                                       error);
    };
    EXPECT_EQ(Failure(add), kNullText);
  }
  EXPECT_FALSE(schema->AddColumn(nullptr, ValueType::Bool, 0, 0, nullptr));
  EXPECT_EQ(schema->GetColumnCount(), 2u);
}

TEST(Schema, DefaultValuesShareTheirObjects) {
  const auto schema = SchemaWithColumn();
  const auto array = New<IArray>(Data_CreateArray);
  const Variant value(array), other = "text";
  EXPECT_TRUE(schema->SetDefaultValue("x", &value, nullptr));
  EXPECT_EQ(ReferencesTo(array), 3u) << "here, in the record, in the schema";
  {
    Variant copy = 5;
    EXPECT_TRUE(schema->GetDefaultValue("x", &copy, nullptr));
    EXPECT_EQ(ReferencesTo(array), 4u);
    EXPECT_FALSE(schema->GetDefaultValue("y", &copy, nullptr));
    EXPECT_EQ(ReferencesTo(array), 4u) << "a failure leaves the record alone";
  }
  EXPECT_TRUE(schema->SetDefaultValue("x", &other, nullptr));
  EXPECT_EQ(ReferencesTo(array), 2u);

  const Variant undefined = Record(ValueType{28}, Core::StorageForm::Reference, 1);
  const auto set = [&](const char* name, const _VARIANT* record) {
    return Failure(
        [&](IErrorCode** error) { return schema->SetDefaultValue(name, record, error); });
  };
  EXPECT_EQ(set(nullptr, &value), kNullText);
  EXPECT_EQ(set("y", nullptr), kNullRecord);
  EXPECT_EQ(set("y", &undefined), kUndefinedRecord);
  EXPECT_EQ(Failure([&](IErrorCode** e) { return schema->GetDefaultValue("x", nullptr, e); }),
            kNullRecord);
  EXPECT_EQ(Core::ToText(DefaultValue(*schema, "x")), "text");
  EXPECT_EQ(schema->GetColumnCount(), 1u) << "a failure adds no column";
}

TEST(Schema, ListsOfAllowedValues) {
  const auto schema = NewSchema();
  const auto first = AllowedValue(1), second = AllowedValue("two");
  for (const auto& value : {first, second, first})
    EXPECT_TRUE(schema->AddAllowedValue("x", value.Get(), nullptr)) << "adds the column";
  EXPECT_EQ(AllowedValues(*schema, "x"), (std::vector{first, second, first}));
  EXPECT_EQ(ReferencesTo(first), 3u);

  const auto list = New<IObjectList>(Data_CreateObjectList);
  const auto set = [&](IErrorCode** error) {
    return schema->SetAllowedValues("x", list.Get(), error);
  };
  list->Add(second.Get());
  EXPECT_EQ(Failure(set), "");
  EXPECT_EQ(AllowedValues(*schema, "x"), std::vector{second});
  EXPECT_EQ(ReferencesTo(first), 1u);
  list->Add(nullptr);
  EXPECT_EQ(Failure(set),
            "Null pointer exception! Interface is not accessible: struct Core::IObject");
  list->Clear();
  list->Add(schema.Get());
  EXPECT_EQ(Failure(set),
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

  EXPECT_FALSE(schema->ClearAllowedValues(nullptr, nullptr));
  EXPECT_FALSE(schema->AddAllowedValue(nullptr, first.Get(), nullptr));
  EXPECT_FALSE(schema->SetAllowedValues(nullptr, nullptr, nullptr));
  EXPECT_EQ(Failure([&](IErrorCode** e) { return schema->AddAllowedValue("a", nullptr, e); }),
            "Pointer of struct Data::Interfaces::IAllowedValue must not be null!");
  EXPECT_EQ(Failure([&](IErrorCode** error) {
              Ptr<IObjectList> out;
              return schema->GetAllowedValues("a", out.Receive(), error);
            }),
            kMissing);
  EXPECT_EQ(ColumnNames(*schema), (Names{"x", "y", "z"}));
}

TEST(Schema, ClonesEverythingButTheIdentifier) {
  const auto schema = SchemaWithColumn();
  const auto allowed = AllowedValue(1);
  ForEachAttribute([&](const auto& c) { EXPECT_TRUE(((*schema).*c.set)("x", c.other, nullptr)); });
  EXPECT_TRUE(schema->AddAllowedValue("x", allowed.Get(), nullptr));
  schema->SetIdentifierColumn("other");
  schema->SetVersion(5);

  Ptr<ISchema> same, renamed;
  const _UUID zero{};
  EXPECT_TRUE(schema->Clone(same.Receive(), nullptr));
  EXPECT_TRUE(schema->CloneWithUuid(&zero, renamed.Receive(), nullptr));
  EXPECT_EQ(AllowedValues(*same, "x"), std::vector{allowed}) << "the very same object";
  std::string json = JsonOf(*schema);
  EXPECT_EQ(JsonOf(*same), json);
  EXPECT_EQ(JsonOf(*renamed), json.replace(json.find("6b29fc40-ca47-1067-b31d-00dd010662da"), 36,
                                           "00000000-0000-0000-0000-000000000000"));
  EXPECT_TRUE(same->SetWidth("new", 1, nullptr));
  EXPECT_TRUE(renamed->SetWidth("x", 1, nullptr));
  EXPECT_EQ(schema->GetColumnCount(), 1u) << "a clone has its own columns";
  EXPECT_EQ(schema->GetWidth("x", nullptr), -3);
}

TEST(Schema, KeepsTheOrderOfManyColumns) {
  const auto schema = NewSchema();
  const auto name = [](int i) { return "column " + std::to_string(i * 7919 % 5000); };
  for (int i = 0; i < 5000; ++i) EXPECT_TRUE(schema->SetWidth(name(i).c_str(), i, nullptr));
  Ptr<ISchema> clone;
  EXPECT_TRUE(schema->Clone(clone.Receive(), nullptr));
  const auto names = ColumnNames(*clone);
  ASSERT_EQ(names.size(), 5000u);
  for (int i = 0; i < 5000; ++i) {
    const std::string& found = names[static_cast<std::size_t>(i)];
    ASSERT_EQ(found, name(i));
    ASSERT_EQ(clone->GetWidth(found.c_str(), nullptr), i);
  }
}

}  // namespace Data::tests
