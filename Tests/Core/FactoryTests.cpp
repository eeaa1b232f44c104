#include "Prelude.h"

namespace Data::tests {

namespace {

/// What a call does with an out-pointer that is null or still holds an object.
enum class Kind {
  Guarded,     ///< fails
  Throwing,    ///< throws
  Overwriting  ///< false for null; overwrites a held object
};

/// An export or operation that creates an object.
struct Call {
  const char* what;
  Kind kind;
  std::string type;  ///< of the out-pointer, as messages name it
  std::function<bool(IObject** out, IErrorCode** error)> make;
};

/// @param arguments  the object of an operation, and all arguments but the last ones
template <class Interface, Kind unguarded = Kind::Overwriting, class Function, class... Arguments>
Call Creates(const char* what, Function function, Arguments... arguments) {
  constexpr bool isGuarded = std::is_invocable_v<Function, Arguments..., Interface**, IErrorCode**>;
  return {what, isGuarded ? Kind::Guarded : unguarded, Core::TypeName<Interface>(),
          [=](IObject** out, IErrorCode** error) -> bool {
            Interface* object = out ? static_cast<Interface*>(*out) : nullptr;
            Interface** const address = out ? &object : nullptr;
            bool isMade = out != nullptr;
            if constexpr (isGuarded)
              isMade = std::invoke(function, arguments..., address, error);
            else if constexpr (std::is_invocable_r_v<bool, Function, Arguments..., Interface**>)
              isMade = std::invoke(function, arguments..., address);
            else
              std::invoke(function, arguments..., address);
            if (out) *out = object;
            return isMade;
          }};
}

/// A new object of a guarded factory.
template <class Interface, class Make, class... Arguments>
Ptr<Interface> Made(Make make, Arguments... arguments) {
  Ptr<Interface> object;
  EXPECT_TRUE(make(arguments..., object.Receive(), nullptr));
  return object;
}

/// How the call fails with an out-pointer.
std::string FailureWith(const Call& call, IObject** out) {
  if (call.kind == Kind::Throwing) return ThrownBy([&] { call.make(out, nullptr); });
  return Failure([&](IErrorCode** error) { return call.make(out, error); });
}

void ExpectChecksItsOutPointer(const Call& call) {
  IObject* created = nullptr;
  ASSERT_TRUE(call.make(&created, nullptr));
  IObject* out = created;
  if (call.kind == Kind::Overwriting) {
    EXPECT_FALSE(call.make(nullptr, nullptr));
    EXPECT_TRUE(call.make(&out, nullptr));
    EXPECT_NE(out, created);
    EXPECT_EQ(out->Release(), 0u);
  } else {
    EXPECT_EQ(FailureWith(call, nullptr),
              "Pointer to a pointer of " + call.type +
                  " must not be null! Address of return must be specified!");
    EXPECT_EQ(FailureWith(call, &out),
              "Pointer of " + call.type + " must be null in order to avoid memory leaks!");
    EXPECT_EQ(out, created);
  }
  EXPECT_EQ(created->Release(), 0u);
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
  const auto withProblems = [](ITable** out, IErrorCode** error) {
    return Data_ParseCsvWithErrors(kCsv, out, Ptr<IObjectList>().Receive(), kSize, 0, error);
  };
  const auto problemsOf = [](IObjectList** out, IErrorCode** error) {
    return Data_ParseCsvWithErrors(kCsv, Ptr<ITable>().Receive(), out, kSize, 0, error);
  };
  const auto separated = [](ITable** out, IErrorCode** error) {
    return Data_ParseCsvWithSeparator(kCsv, ",", out, kSize, error);
  };
  const auto delimited = [&](IString** out, IErrorCode** error) {
    return Data_ConvertTableToCsv(table.Get(), ",", out, true, error);
  };
  const auto schemaAsJson = [&](IJsonDocument** out, IErrorCode** error) {
    return schema->ToJson(out, ' ', 2, error);
  };
  const auto mergeOnColumns = [&](ITable** out, IErrorCode** error) {
    return table->MergeOnColumns(table.Get(), kAll, out, error, 1, "id");
  };
  IRow* const row = table->GetRow(0);
  const auto base64 = New(Data_CreateEncodingInstanceBase64);
  const auto map = New(Data_CreateVariantDictionary);
  const Call calls[] = {
      Creates<IArray>("array", Data_CreateArray),
      Creates<IObjectList>("object list", Data_CreateObjectList),
      Creates<IVariantList>("variant list", Data_CreateVariantList),
      Creates<IVariantDictionary>("dictionary", Data_CreateVariantDictionary),
      Creates<IVariantPairList>("pair list", Data_CreateVariantPairList),
      Creates<IConfiguration>("configuration", Data_CreateConfiguration),
      Creates<IProperties>("properties", Data_CreateProperties),
      Creates<IEnum>("enumeration", Data_CreateEnum, options.Get()),
      Creates<IConstrainedValue>("constrained", Data_CreateConstrainedValue, &one, &one, &two),
      Creates<IAllowedValue>("allowed", Data_CreateAllowedValue, &value, kNone, "", "", "", ""),
      Creates<IString>("string", Data_CreateString),
      Creates<ISecureString>("secure string", Data_CreateSecureString, text.Get()),
      Creates<IEncoding>("Base64", Data_CreateEncodingInstanceBase64),
      Creates<IEncoding>("Base64 for URLs", Data_CreateEncodingInstanceBase64Url),
      Creates<IHashing>("MD5", Data_CreateHashingInstanceMD5),
      Creates<IHashing>("SHA-1", Data_CreateHashingInstanceSha1),
      Creates<IHashing>("SHA-2", Data_CreateHashingInstanceSha2, 2u),
      Creates<IHashing>("HMAC", Data_CreateHashingInstanceHmacSha2, 0u, key.Get()),
      Creates<IString>("UUID as text", Data_UuidToString, &uuid),
      Creates<ITable>("table", Data_CreateTable),
      Creates<ITable>("table of CSV", Data_ParseCsv, kCsv, kSize),
      Creates<ITable>("table of CSV with problems", withProblems),
      Creates<IObjectList>("problems of CSV", problemsOf),
      Creates<ITable>("table of CSV with a separator", separated),
      Creates<IString>("CSV", delimited),
      Creates<IJsonDocument>("JSON document", Data_CreateJsonDocument),
      Creates<IXmlDocument>("XML document", Data_CreateXmlDocument),
      Creates<IHtmlDocument>("HTML document", Data_CreateHtmlDocument),
      Creates<IRtfDocument>("RTF document", Data_CreateRtfDocument),
      Creates<ITable>("table of JSON", Data_JsonToTable, json.Get()),
      Creates<IJsonDocument>("JSON of a table", Data_TableToJson, table.Get()),
      Creates<IJsonDocument>("JSON of a row", Data_TableRowToJson, row),
      Creates<ISchema>("schema", Data_CreateSchema, &uuid, "title", "description"),
      Creates<ISchema>("schema of JSON", Data_ParseSchema, empty.Get()),
      Creates<IDateTime>("now", Data_CreateCurrentDateTime),
      Creates<IDateTime>("the first date-time", Data_CreateMinimumDateTime),
      Creates<IDateTime>("the last date-time", Data_CreateMaximumDateTime),
      Creates<IDateTime>("date-time of text", Data_CreateDateTimeFromIso8601, "2024"),
      Creates<IDateTime>("date-time of seconds", Data_CreateDateTimeFromPosixTime, 0),
      Creates<IDateTime>("date-time of ticks", Data_CreateDateTimeFromFileTime, 0u),
      Creates<IObjectList>("rows", &ITable::GetRows, table),
      Creates<IObjectList>("found rows", &ITable::FindRows, table, "id", &one),
      Creates<ITable>("merge", &ITable::Merge, table, table.Get(), "id", kAll),
      Creates<ITable>("merge on two names", &ITable::MergeOn, table, table.Get(), "id", "id", kAll),
      Creates<ITable>("merge on columns", mergeOnColumns),
      Creates<IObjectList>("columns", &ITableHeader::GetColumns, table->GetHeader()),
      Creates<IVariantList, Kind::Throwing>("values of a column", &IColumn::GetValues,
                                            table->GetColumn(0)),
      Creates<IString, Kind::Throwing>("text of a cell", &IRow::GetCellText, row, 1),
      Creates<IValue, Kind::Throwing>("value of a cell", &IRow::GetValue, row, 1),
      Creates<IString, Kind::Throwing>("text of a value", &IValue::GetText, cell),
      Creates<IVariantList>("keys", &IVariantDictionary::GetKeys, map),
      Creates<IObjectList>("missing", &IProperties::GetMissing, New(Data_CreateProperties)),
      Creates<IObjectList>("options", &IEnum::GetOptions,
                           Made<IEnum>(Data_CreateEnum, options.Get())),
      Creates<IString>("allowed value", &IAllowedValue::GetValueText, allowed),
      Creates<IString>("secure text", &ISecureString::GetText,
                       Made<ISecureString>(Data_CreateSecureString, text.Get())),
      Creates<IArray>("encoded", &IEncoding::Encode, base64, key.Get()),
      Creates<IArray>("decoded", &IEncoding::Decode, base64, key.Get()),
      Creates<IArray>("hash", &IHashing::Hash, New(Data_CreateHashingInstanceMD5), kCsv, kSize),
      Creates<IString>("compact JSON", &IJsonDocument::ToCompactString, json),
      Creates<IObjectList>("names", &ISchema::GetColumnNames, schema),
      Creates<IObjectList>("allowed values", &ISchema::GetAllowedValues, schema, "a"),
      Creates<IJsonDocument>("JSON of a schema", schemaAsJson),
      Creates<IJsonDocument>("JSON schema", &ISchema::GetJsonSchema, schema),
      Creates<ISchema>("clone with a UUID", &ISchema::CloneWithUuid, schema, &uuid),
      Creates<ISchema>("clone", &ISchema::Clone, schema),
      Creates<IDateTime>("clone of a date-time", &IDateTime::Clone, date),
      Creates<IString>("ISO 8601", &IDateTime::ToIso8601, date),
      Creates<IString>("time", &IDateTime::ToIso8601Time, date),
      Creates<IString>("date", &IDateTime::ToIso8601Date, date),
      Creates<IString>("basic ISO 8601", &IDateTime::ToIso8601Basic, date),
  };
  for (const Call& call : calls) {
    SCOPED_TRACE(call.what);
    ExpectChecksItsOutPointer(call);
  }
}

TEST(Factories, TablesOfUnusualShapesAreRead) {
  const std::string longText(20'000, 'x');
  std::string wide;
  for (int i = 0; i < 200; ++i) wide += "column" + std::to_string(i) + ",";
  Variant cell;
  for (const std::string& text :
       {"a,b\n1," + longText + "\n2,short\n", wide + "x\n1," + longText}) {
    const auto table = Made<ITable>(Data_ParseCsv, text.data(), text.size());
    cell = Variant(*table->GetCellAt(0, 1));
  }
  EXPECT_EQ(cell.As<std::string>(), longText) << "it outlives its table";
}

}  // namespace Data::tests
