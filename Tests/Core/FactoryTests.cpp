#include "Prelude.h"

namespace Data::tests {

namespace {

/// What a careless cast makes of an object: a list that passes for anything else, a dictionary
/// that passes for a list.
template <class Interface>
Interface* Disguised() {
  constexpr bool isList = std::is_same_v<Interface, IObjectList>;
  static const Ptr<IObject> list(New(Data_CreateObjectList)),
      map(New(Data_CreateVariantDictionary));
  return reinterpret_cast<Interface*>(isList ? map.Get() : list.Get());
}

/// What a call does with an out-pointer that is null or still holds an object.
enum class Kind {
  Guarded,     ///< fails
  Throwing,    ///< throws
  Overwriting  ///< false for null; overwrites a held object
};

using Make = std::function<bool(IObject** out, IErrorCode** error)>;

/// How the call fails with an out-pointer.
std::string FailureWith(Kind kind, const Make& make, IObject** out) {
  if (kind == Kind::Throwing) return ThrownBy([&] { make(out, nullptr); });
  return Failure([&](IErrorCode** error) { return make(out, error); });
}

/// @param type  of the out-pointer, as messages name it
void ExpectChecksItsOutPointer(Kind kind, const std::string& type, const Make& make) {
  IObject* created = nullptr;
  ASSERT_TRUE(make(&created, nullptr));
  IObject* out = created;
  if (kind == Kind::Overwriting) {
    EXPECT_FALSE(make(nullptr, nullptr));
    EXPECT_TRUE(make(&out, nullptr));
    EXPECT_NE(out, created);
    EXPECT_EQ(out->Release(), 0u);
  } else {
    EXPECT_EQ(FailureWith(kind, make, nullptr),
              "Pointer to a pointer of " + type +
                  " must not be null! Address of return must be specified!");
    EXPECT_EQ(FailureWith(kind, make, &out),
              "Pointer of " + type + " must be null in order to avoid memory leaks!");
    EXPECT_EQ(out, created);
  }
  EXPECT_EQ(created->Release(), 0u);
}

/// Checks the arguments of an export or operation that creates an object: the out-pointer and, if
/// it is guarded, every argument that is a pointer.
/// @param arguments  the object of an operation, and all arguments but the last ones
template <class Interface, Kind unguarded = Kind::Overwriting, class Function, class... Arguments>
void Creates(const char* what, Function function, Arguments... arguments) {
  SCOPED_TRACE(what);
  constexpr bool isGuarded = std::is_invocable_v<Function, Arguments..., Interface**, IErrorCode**>;
  const auto call = [&](Interface** out, IErrorCode** error) -> bool {
    if constexpr (isGuarded)
      return std::invoke(function, arguments..., out, error);
    else if constexpr (std::is_invocable_r_v<bool, Function, Arguments..., Interface**>)
      return std::invoke(function, arguments..., out);
    else
      return std::invoke(function, arguments..., out), out;
  };
  ExpectChecksItsOutPointer(isGuarded ? Kind::Guarded : unguarded, Core::TypeName<Interface>(),
                            [&](IObject** out, IErrorCode** error) {
                              if (!out) return call(nullptr, error);
                              Interface* object = static_cast<Interface*>(*out);
                              const bool isMade = call(&object, error);
                              *out = object;
                              return isMade;
                            });
  const auto failureWith = [&](auto& argument, auto wrong) {
    const auto right = std::exchange(argument, wrong);
    const auto failure =
        Failure([&](IErrorCode** error) { return call(Ptr<Interface>().Receive(), error); });
    argument = right;
    return failure;
  };
  [[maybe_unused]] const auto check = [&]<class Argument>(Argument& argument) {
    using Pointed = std::remove_pointer_t<Argument>;
    if constexpr (isGuarded && std::is_pointer_v<Argument>) {
      EXPECT_EQ(failureWith(argument, nullptr),
                "Pointer of " + Core::TypeName<Pointed>() + " must not be null!");
    }
    if constexpr (isGuarded && std::is_base_of_v<IObject, Pointed>) {
      EXPECT_EQ(failureWith(argument, Disguised<Pointed>()).find("Memory address ["), 0u);
    }
  };
  (check(arguments), ...);
}

/// A new object of a guarded factory.
template <class Interface, class Make, class... Arguments>
Ptr<Interface> Made(Make make, Arguments... arguments) {
  Ptr<Interface> object;
  EXPECT_TRUE(make(arguments..., object.Receive(), nullptr));
  return object;
}

constexpr char kCsv[] = "id,name,at\n1,a name of some length,2024-01-01T10:00:00\n2,,\n";
constexpr std::uint64_t kSize = sizeof kCsv - 1;
constexpr auto kAll = Structures::MergeMode::All;
constexpr auto kNone = ComparisonOperator::None;

}  // namespace

TEST(Factories, CheckTheOutPointer) {
  const _UUID uuid{};
  const auto text = MakeString("a text that fits in no record");
  const Variant value(text), one(1), two(2);
  const _VARIANT *const record = &value, *const number = &one;
  const auto options = New(Data_CreateObjectList);
  options->Add(text.Get());
  const auto key = New(Data_CreateArray);
  const auto date = Date("2024-01-01").As<Ptr<IDateTime>>();
  const auto json = JsonVariant(R"([{"a":1}])").As<Ptr<IJsonDocument>>();
  const auto empty = JsonVariant("{}").As<Ptr<IJsonDocument>>();
  const auto table = Made<ITable>(Data_ParseCsv, kCsv, kSize);
  const auto schema = Made<ISchema>(Data_CreateSchema, &uuid, "", "");
  schema->AddColumn("a", ValueType::Int32, 1, 1, nullptr);
  const auto allowed = Made<IAllowedValue>(Data_CreateAllowedValue, &value, kNone, "", "", "", "");
  Ptr<IValue> cell;
  ASSERT_TRUE(table->GetRow(0)->GetValue(0, cell.Receive()));
  const auto withProblems = [](const char* csv, ITable** out, IErrorCode** error) {
    return Data_ParseCsvWithErrors(csv, out, Ptr<IObjectList>().Receive(), kSize, 0, error);
  };
  const auto problemsOf = [](const char* csv, IObjectList** out, IErrorCode** error) {
    return Data_ParseCsvWithErrors(csv, Ptr<ITable>().Receive(), out, kSize, 0, error);
  };
  const auto separated = [](const char* csv, const char* separator, ITable** out,
                            IErrorCode** error) {
    return Data_ParseCsvWithSeparator(csv, separator, out, kSize, error);
  };
  const auto delimited = [](ITable* from, const char* separator, IString** out,
                            IErrorCode** error) {
    return Data_ConvertTableToCsv(from, separator, out, true, error);
  };
  const auto schemaAsJson = [&](IJsonDocument** out, IErrorCode** error) {
    return schema->ToJson(out, ' ', 2, error);
  };
  const auto mergeOnColumns = [&](ITable* right, ITable** out, IErrorCode** error) {
    return table->MergeOnColumns(right, kAll, out, error, 1, "id");
  };
  const auto constrained = [&](IConstrainedValue** out, IErrorCode** error) {
    return Data_CreateConstrainedValue(&one, &one, &two, out, error);
  };
  const auto keyed = [&](IHashing** out, IErrorCode** error) {
    return Data_CreateHashingInstanceHmacSha2(0, key.Get(), out, error);
  };
  IRow* const row = table->GetRow(0);
  const Ptr<ITableHeader> header(table->GetHeader());
  const auto base64 = New(Data_CreateEncodingInstanceBase64);
  const auto map = New(Data_CreateVariantDictionary);
  Creates<IArray>("array", Data_CreateArray);
  Creates<IObjectList>("object list", Data_CreateObjectList);
  Creates<IVariantList>("variant list", Data_CreateVariantList);
  Creates<IVariantDictionary>("dictionary", Data_CreateVariantDictionary);
  Creates<IVariantPairList>("pair list", Data_CreateVariantPairList);
  Creates<IConfiguration>("configuration", Data_CreateConfiguration);
  Creates<IProperties>("properties", Data_CreateProperties);
  Creates<IEnum>("enumeration", Data_CreateEnum, options.Get());
  Creates<IConstrainedValue>("constrained", constrained);
  Creates<IAllowedValue>("allowed", Data_CreateAllowedValue, record, kNone, "", "", "", "");
  Creates<IString>("string", Data_CreateString);
  Creates<ISecureString>("secure string", Data_CreateSecureString, text.Get());
  Creates<IEncoding>("Base64", Data_CreateEncodingInstanceBase64);
  Creates<IEncoding>("Base64 for URLs", Data_CreateEncodingInstanceBase64Url);
  Creates<IHashing>("MD5", Data_CreateHashingInstanceMD5);
  Creates<IHashing>("SHA-1", Data_CreateHashingInstanceSha1);
  Creates<IHashing>("SHA-2", Data_CreateHashingInstanceSha2, 2u);
  Creates<IHashing>("HMAC", keyed);
  Creates<IString>("UUID as text", Data_UuidToString, &uuid);
  Creates<ITable>("table", Data_CreateTable);
  Creates<ITable>("table of CSV", Data_ParseCsv, kCsv, kSize);
  Creates<ITable>("table of CSV with problems", withProblems, kCsv);
  Creates<IObjectList>("problems of CSV", problemsOf, kCsv);
  Creates<ITable>("table of CSV with a separator", separated, kCsv, ",");
  Creates<IString>("CSV", delimited, table.Get(), ",");
  Creates<IJsonDocument>("JSON document", Data_CreateJsonDocument);
  Creates<IXmlDocument>("XML document", Data_CreateXmlDocument);
  Creates<IHtmlDocument>("HTML document", Data_CreateHtmlDocument);
  Creates<IRtfDocument>("RTF document", Data_CreateRtfDocument);
  Creates<ITable>("table of JSON", Data_JsonToTable, json.Get());
  Creates<IJsonDocument>("JSON of a table", Data_TableToJson, table.Get());
  Creates<IJsonDocument>("JSON of a row", Data_TableRowToJson, row);
  Creates<ISchema>("schema", Data_CreateSchema, &uuid, "title", "description");
  Creates<ISchema>("schema of JSON", Data_ParseSchema, empty.Get());
  Creates<IDateTime>("now", Data_CreateCurrentDateTime);
  Creates<IDateTime>("the first date-time", Data_CreateMinimumDateTime);
  Creates<IDateTime>("the last date-time", Data_CreateMaximumDateTime);
  Creates<IDateTime>("date-time of text", Data_CreateDateTimeFromIso8601, "2024");
  Creates<IDateTime>("date-time of seconds", Data_CreateDateTimeFromPosixTime, 0);
  Creates<IDateTime>("date-time of ticks", Data_CreateDateTimeFromFileTime, 0u);
  Creates<IObjectList>("rows", &ITable::GetRows, table);
  Creates<IObjectList>("found rows", &ITable::FindRows, table, "id", number);
  Creates<ITable>("merge", &ITable::Merge, table, table.Get(), "id", kAll);
  Creates<ITable>("merge on two names", &ITable::MergeOn, table, table.Get(), "id", "id", kAll);
  Creates<ITable>("merge on columns", mergeOnColumns, table.Get());
  Creates<IObjectList>("columns", &ITableHeader::GetColumns, header);
  Creates<IVariantList, Kind::Throwing>("values of a column", &IColumn::GetValues,
                                        table->GetColumn(0));
  Creates<IString, Kind::Throwing>("text of a cell", &IRow::GetCellText, row, 1);
  Creates<IValue, Kind::Throwing>("value of a cell", &IRow::GetValue, row, 1);
  Creates<IString, Kind::Throwing>("text of a value", &IValue::GetText, cell);
  Creates<IVariantList>("keys", &IVariantDictionary::GetKeys, map);
  Creates<IObjectList>("missing", &IProperties::GetMissing, New(Data_CreateProperties));
  Creates<IObjectList>("options", &IEnum::GetOptions, Made<IEnum>(Data_CreateEnum, options.Get()));
  Creates<IString>("allowed value", &IAllowedValue::GetValueText, allowed);
  Creates<IString>("secure text", &ISecureString::GetText,
                   Made<ISecureString>(Data_CreateSecureString, text.Get()));
  Creates<IArray>("encoded", &IEncoding::Encode, base64, key.Get());
  Creates<IArray>("decoded", &IEncoding::Decode, base64, key.Get());
  Creates<IArray>("hash", &IHashing::Hash, New(Data_CreateHashingInstanceMD5),
                  static_cast<const void*>(kCsv), kSize);
  Creates<IString>("compact JSON", &IJsonDocument::ToCompactString, json);
  Creates<IObjectList>("names", &ISchema::GetColumnNames, schema);
  Creates<IObjectList>("allowed values", &ISchema::GetAllowedValues, schema, "a");
  Creates<IJsonDocument>("JSON of a schema", schemaAsJson);
  Creates<IJsonDocument>("JSON schema", &ISchema::GetJsonSchema, schema);
  Creates<ISchema>("clone with a UUID", &ISchema::CloneWithUuid, schema, &uuid);
  Creates<ISchema>("clone", &ISchema::Clone, schema);
  Creates<IDateTime>("clone of a date-time", &IDateTime::Clone, date);
  Creates<IString>("ISO 8601", &IDateTime::ToIso8601, date);
  Creates<IString>("time", &IDateTime::ToIso8601Time, date);
  Creates<IString>("date", &IDateTime::ToIso8601Date, date);
  Creates<IString>("basic ISO 8601", &IDateTime::ToIso8601Basic, date);
}

}  // namespace Data::tests
