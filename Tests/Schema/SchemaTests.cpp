#include "Schema/SchemaSupport.h"

namespace Data::tests {

using Names = std::vector<std::string>;

namespace {

/// Calls `visit` with the setter and the getter of each attribute that is a text, a flag, a number
/// or a type, and with a value other than the one that `AddColumn` sets.
template <class Visitor>
void ForEachAttribute(Visitor visit) {
  visit(&ISchema::SetColumnDescription, &ISchema::GetColumnDescription, "d");
  visit(&ISchema::SetUpdateExpression, &ISchema::GetUpdateExpression, "u");
  visit(&ISchema::SetUnit, &ISchema::GetUnit, "m");
  visit(&ISchema::SetInsertExpression, &ISchema::GetInsertExpression, "i");
  visit(&ISchema::SetDisplayName, &ISchema::GetDisplayName, "n");
  visit(&ISchema::SetGroup, &ISchema::GetGroup, "x");
  visit(&ISchema::SetHelpUri, &ISchema::GetHelpUri, "a text of more than sixteen bytes");
  visit(&ISchema::SetAllowAnyValue, &ISchema::GetAllowAnyValue, false);
  visit(&ISchema::SetReadOnly, &ISchema::GetReadOnly, true);
  visit(&ISchema::SetVisible, &ISchema::GetVisible, false);
  visit(&ISchema::SetDisplayAttribute, &ISchema::GetDisplayAttribute, true);
  visit(&ISchema::SetNullable, &ISchema::GetNullable, true);
  visit(&ISchema::SetWidth, &ISchema::GetWidth, -3);
  visit(&ISchema::SetDecimals, &ISchema::GetDecimals, -4);
  visit(&ISchema::SetType, &ISchema::GetType, ValueType::Double);
}
void SetEachAttribute(ISchema& schema) {
  ForEachAttribute(
      [&](auto set, auto, auto other) { EXPECT_TRUE((schema.*set)("x", other, nullptr)); });
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

std::string Replaced(std::string text, std::string_view part, std::string_view by) {
  return text.replace(text.find(part), part.size(), by);
}

}  // namespace

TEST(Schema, StartsWithAHeaderAndNoColumns) {
  const auto schema = NewSchema();
  EXPECT_EQ(JsonOf(*schema), Replaced(DocumentOf(""), R"("x")", R"("")"));
  EXPECT_TRUE(schema->CheckConsistency(nullptr));
  _UUID uuid{};
  EXPECT_TRUE(schema->GetUuid(&uuid, nullptr));
  EXPECT_EQ(Core::ToText(Variant(uuid)), Core::ToText(Variant(kSomeUuid)));
}

TEST(Schema, NullChangesNoTitleButEmptiesTheIdentifierColumn) {
  const auto schema = SchemaWithColumn();
  schema->SetTitle(nullptr);
  schema->SetDescription(nullptr);
  EXPECT_STREQ(schema->GetTitle(), "Roads");
  EXPECT_STREQ(schema->GetDescription(), "All roads");
  EXPECT_STREQ(schema->GetIdentifierColumn(), "x") << "the first column ever named";
  schema->SetIdentifierColumn(nullptr);
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
  ForEachAttribute([](auto set, auto get, auto other) {
    const auto schema = NewSchema();
    const auto read = [&](const char* name) {
      return Failure([&](IErrorCode** error) { return ((*schema).*get)(name, error); });
    };
    EXPECT_EQ(read("x"), kMissing);
    EXPECT_EQ(schema->GetColumnCount(), 0u) << "a getter adds no column";
    EXPECT_EQ(read(nullptr), kNullText);
    EXPECT_FALSE(((*schema).*set)(nullptr, other, nullptr));
    EXPECT_TRUE(((*schema).*set)("x", other, nullptr));
    if constexpr (std::is_same_v<decltype(other), const char*>) {
      EXPECT_STREQ(((*schema).*get)("x", nullptr), other);
      EXPECT_FALSE(((*schema).*set)("y", nullptr, nullptr));
    } else {
      EXPECT_EQ(((*schema).*get)("x", nullptr), other);
    }
    EXPECT_EQ(ColumnNames(*schema), Names{"x"}) << "a setter adds the column, with nothing else";
    const auto check = [&](IErrorCode** error) { return schema->CheckConsistency(error); };
    EXPECT_EQ(Failure(check), kMissing);
    EXPECT_EQ(JsonOf(*schema), kMissing);
  });
}

TEST(Schema, AddColumnSetsWhatASetterAloneDoesNot) {
  const auto schema = SchemaWithColumn();
  EXPECT_EQ(JsonOf(*schema), DocumentOf(kColumn));
  EXPECT_TRUE(schema->CheckConsistency(nullptr));
  EXPECT_TRUE(AllowedValues(*schema, "x").empty());
  const auto get = [&](IErrorCode** error) { return schema->GetNullable("x", error); };
  EXPECT_EQ(Failure(get), kMissing);

  EXPECT_TRUE(schema->SetWidth("y", 1, nullptr));
  for (const auto has : {&ISchema::HasAllowedValues, &ISchema::HasDefaultValue}) {
    EXPECT_TRUE(((*schema).*has)("x"));
    for (const char* name : {"y", "X", static_cast<const char*>(nullptr)})
      EXPECT_FALSE(((*schema).*has)(name)) << "names are compared byte by byte";
  }
  for (const auto& [has, set] :
       {std::pair{&ISchema::HasUpdateExpression, &ISchema::SetUpdateExpression},
        {&ISchema::HasInsertExpression, &ISchema::SetInsertExpression},
        {&ISchema::HasUnit, &ISchema::SetUnit}}) {
    EXPECT_FALSE(((*schema).*has)("x"));
    EXPECT_TRUE(((*schema).*set)("x", "", nullptr));
    EXPECT_TRUE(((*schema).*has)("x")) << "an empty text is set too";
  }
}

TEST(Schema, EveryTypeHasANameAndADefaultValue) {
  std::uint32_t code = 0;
  for (const Case& c : Cases("Schemas.txt", "types")) {
    const auto type = static_cast<ValueType>(code++);
    ASSERT_EQ(Core::GetValueTypeName(type), c[0]) << c.where;
    const auto schema = SchemaWithColumn(type);
    const std::string json = JsonOf(*schema), key = R"("type":")";
    const auto name = json.find(key) == json.npos ? 0 : json.find(key) + key.size();
    EXPECT_EQ(json.substr(name, c[1].size()), c[1]) << c.where;
    const Variant value = DefaultValue(*schema, "x");
    EXPECT_EQ(Core::GetValueTypeName(value.Type()), c[2]) << c.where;
    EXPECT_EQ(Core::ToText(value).substr(0, c[3].size()), c[3]) << c.where;
    if (!Core::ReferencedObject(value)) {
      EXPECT_EQ(value.value[0] | value.value[1], 0u) << c.where;
    }
  }
  EXPECT_EQ(code, 28u);
  EXPECT_TRUE(DefaultValue(*SchemaWithColumn(ValueType{99}), "x").IsNull());
}

TEST(Schema, AddColumnAgainKeepsThePositionAndWhatItNeverSets) {
  const auto schema = SchemaWithColumn();
  EXPECT_TRUE(schema->AddColumn("later", ValueType::Int64, 5, 2, nullptr));
  SetEachAttribute(*schema);
  EXPECT_TRUE(schema->AddAllowedValue("x", AllowedValue(1).Get(), nullptr));
  // The name may come from the schema's own texts.
  EXPECT_TRUE(schema->AddColumn(schema->GetGroup("x", nullptr), ValueType::Int64, 5, 2, nullptr));
  EXPECT_EQ(ColumnNames(*schema), (Names{"x", "later"}));
  const std::string left = R"("updateExpression":"u","insertExpression":"i","unit":"m","width")";
  const std::string again = Replaced(Replaced(kColumn, R"("width")", left), R"("visible":true)",
                                     R"("visible":true,"nullable":true)");
  EXPECT_EQ(JsonOf(*schema).find(again), sizeof kHeader - 1) << JsonOf(*schema);
}

TEST(Schema, AddColumnWithTextsSetsThem) {
  const auto full = NewSchema(), unlimited = NewSchema();
  EXPECT_TRUE(full->AddColumnFull("x", "g", "n", ValueType::Int64, 5, 2, "d", "m", nullptr));
  EXPECT_TRUE(unlimited->AddColumnWithText("x", "g", "n", ValueType::Int64, "d", "m", nullptr));
  std::string column = Replaced(kColumn, "Attribute Properties", "g");
  column = Replaced(column, R"("x","description":"")", R"("n","description":"d")");
  column = Replaced(column, R"("width")", R"("unit":"m","width")");
  EXPECT_EQ(JsonOf(*full), DocumentOf(column));
  EXPECT_EQ(JsonOf(*unlimited),
            DocumentOf(Replaced(column, R"(5,"decimals":2)", R"(-1,"decimals":-1)")));
  for (int missing = 0; missing < 5; ++missing) {
    const auto text = [&](int index) { return index == missing ? nullptr : "c"; };
    EXPECT_FALSE(full->AddColumnWithText(text(0), text(1), text(2), ValueType::Bool, text(3),
                                         text(4), nullptr));
  }
  EXPECT_FALSE(full->AddColumn(nullptr, ValueType::Bool, 0, 0, nullptr));
  EXPECT_EQ(full->GetColumnCount(), 1u);
}

TEST(Schema, DefaultValuesShareTheirObjects) {
  const auto schema = SchemaWithColumn();
  const auto array = New(Data_CreateArray);
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
  const auto set = [&](IErrorCode** e) { return schema->SetDefaultValue("y", &undefined, e); };
  EXPECT_EQ(Failure(set), kUndefinedRecord);
  EXPECT_FALSE(schema->SetDefaultValue(nullptr, &value, nullptr));
  EXPECT_FALSE(schema->SetDefaultValue("y", nullptr, nullptr));
  EXPECT_FALSE(schema->GetDefaultValue("x", nullptr, nullptr));
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

  const auto list = New(Data_CreateObjectList);
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
  EXPECT_FALSE(schema->AddAllowedValue("a", nullptr, nullptr));
  const auto get = [&](auto e) {
    return schema->GetAllowedValues("a", Ptr<IObjectList>().Receive(), e);
  };
  EXPECT_EQ(Failure(get), kMissing);
  EXPECT_EQ(ColumnNames(*schema), (Names{"x", "y", "z"}));
}

TEST(Schema, ClonesEverythingButTheIdentifier) {
  const auto schema = SchemaWithColumn();
  const auto allowed = AllowedValue(1);
  SetEachAttribute(*schema);
  EXPECT_TRUE(schema->AddAllowedValue("x", allowed.Get(), nullptr));
  schema->SetIdentifierColumn("other");
  schema->SetVersion(5);

  const _UUID zero{};
  const auto same = Made<ISchema>(&ISchema::Clone, schema);
  const auto renamed = Made<ISchema>(&ISchema::CloneWithUuid, schema, &zero);
  EXPECT_EQ(AllowedValues(*same, "x"), std::vector{allowed}) << "the very same object";
  EXPECT_EQ(JsonOf(*same), JsonOf(*schema));
  EXPECT_EQ(JsonOf(*renamed), Replaced(JsonOf(*schema), Core::ToText(Variant(kSomeUuid)),
                                       Core::ToText(Variant(zero))));
  EXPECT_TRUE(same->SetWidth("new", 1, nullptr));
  EXPECT_TRUE(renamed->SetWidth("x", 1, nullptr));
  EXPECT_EQ(schema->GetColumnCount(), 1u) << "a clone has its own columns";
  EXPECT_EQ(schema->GetWidth("x", nullptr), -3);
}

}  // namespace Data::tests
