#include "Prelude.h"

#include <new>

// Counts the live heap blocks of the program and, where it may replace the library's allocator, of
// the library. A Windows library has its own: there only reference counts are checked.
namespace {
std::atomic<std::int64_t> liveBlocks{0};
}

void* operator new(std::size_t size) {
  void* block = std::malloc(size == 0 ? 1 : size);
  if (!block) throw std::bad_alloc();
  ++liveBlocks;
  return block;
}
void operator delete(void* block) noexcept {
  if (block) --liveBlocks;
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }

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

constexpr char kCsv[] = "id,name,at\n1,a name of some length,2024-01-01T10:00:00\n2,,\n";
constexpr std::uint64_t kSize = sizeof kCsv - 1;

Ptr<ITable> SomeTable() {
  Ptr<ITable> table;
  EXPECT_TRUE(Data_ParseCsv(kCsv, kSize, table.Receive(), nullptr));
  return table;
}

/// What the calls are given.
struct Objects {
  Objects() {
    options->Add(text.Get());
    schema->AddColumn("a", ValueType::Int32, 1, 1, nullptr);
    EXPECT_TRUE(Data_CreateEnum(options.Get(), enumeration.Receive(), nullptr));
    EXPECT_TRUE(Data_CreateAllowedValue(&value, ComparisonOperator::None, "", "", "", "",
                                        allowed.Receive(), nullptr));
    EXPECT_TRUE(Data_CreateSecureString(text.Get(), secure.Receive(), nullptr));
    EXPECT_TRUE(table->GetRow(0)->GetValue(0, cell.Receive()));
  }

  const _UUID uuid{};
  const Ptr<IString> text = MakeString("a text that fits in no record");
  const Variant value{text}, one{1}, two{2};
  const Ptr<IObjectList> options = New(Data_CreateObjectList);
  const Ptr<IArray> key = New(Data_CreateArray);
  const Ptr<ITable> table = SomeTable();
  const Ptr<IDateTime> date = Date("2024-01-01").As<Ptr<IDateTime>>();
  const Ptr<IJsonDocument> json =
      JsonVariant(R"([{"a":1,"b":"a text that fits in no record"}])").As<Ptr<IJsonDocument>>();
  const Ptr<IJsonDocument> schemaText = JsonVariant("{}").As<Ptr<IJsonDocument>>();
  const Ptr<ISchema> schema = New<ISchema>([](ISchema** out) {
    const _UUID none{};
    return Data_CreateSchema(&none, "", "", out, nullptr);
  });
  Ptr<IEnum> enumeration;
  Ptr<IAllowedValue> allowed;
  Ptr<ISecureString> secure;
  Ptr<IValue> cell;
};

std::vector<Call> CallsThatCreate(const Objects& with) {
  const auto withProblems = [](ITable** out, IErrorCode** error) {
    Ptr<IObjectList> problems;
    return Data_ParseCsvWithErrors(kCsv, out, problems.Receive(), kSize, 0, error);
  };
  const auto problemsOf = [](IObjectList** out, IErrorCode** error) {
    Ptr<ITable> table;
    return Data_ParseCsvWithErrors(kCsv, table.Receive(), out, kSize, 0, error);
  };
  const auto separated = [](ITable** out, IErrorCode** error) {
    return Data_ParseCsvWithSeparator(kCsv, ",", out, kSize, error);
  };
  const auto delimited = [table = with.table](IString** out, IErrorCode** error) {
    return Data_ConvertTableToCsv(table.Get(), ",", out, true, error);
  };
  const auto schemaAsJson = [schema = with.schema](IJsonDocument** out, IErrorCode** error) {
    return schema->ToJson(out, ' ', 2, error);
  };
  const auto mergeOnColumns = [table = with.table](ITable** out, IErrorCode** error) {
    return table->MergeOnColumns(table.Get(), Structures::MergeMode::All, out, error, 1, "id");
  };
  ITable* const table = with.table.Get();
  IRow* const row = table->GetRow(0);
  constexpr auto kAll = Structures::MergeMode::All;
  return {
      Creates<IArray>("array", Data_CreateArray),
      Creates<IObjectList>("object list", Data_CreateObjectList),
      Creates<IVariantList>("variant list", Data_CreateVariantList),
      Creates<IVariantDictionary>("dictionary", Data_CreateVariantDictionary),
      Creates<IVariantPairList>("pair list", Data_CreateVariantPairList),
      Creates<IConfiguration>("configuration", Data_CreateConfiguration),
      Creates<IProperties>("properties", Data_CreateProperties),
      Creates<IEnum>("enumeration", Data_CreateEnum, with.options.Get()),
      Creates<IConstrainedValue>("constrained", Data_CreateConstrainedValue, &with.one, &with.one,
                                 &with.two),
      Creates<IAllowedValue>("allowed", Data_CreateAllowedValue, &with.value,
                             ComparisonOperator::None, "", "", "", ""),
      Creates<IString>("string", Data_CreateString),
      Creates<ISecureString>("secure string", Data_CreateSecureString, with.text.Get()),
      Creates<IEncoding>("Base64", Data_CreateEncodingInstanceBase64),
      Creates<IEncoding>("Base64 for URLs", Data_CreateEncodingInstanceBase64Url),
      Creates<IHashing>("MD5", Data_CreateHashingInstanceMD5),
      Creates<IHashing>("SHA-1", Data_CreateHashingInstanceSha1),
      Creates<IHashing>("SHA-2", Data_CreateHashingInstanceSha2, 2u),
      Creates<IHashing>("HMAC", Data_CreateHashingInstanceHmacSha2, 0u, with.key.Get()),
      Creates<IString>("UUID as text", Data_UuidToString, &with.uuid),
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
      Creates<ITable>("table of JSON", Data_JsonToTable, with.json.Get()),
      Creates<IJsonDocument>("JSON of a table", Data_TableToJson, with.table.Get()),
      Creates<IJsonDocument>("JSON of a row", Data_TableRowToJson, with.table->GetRow(0)),
      Creates<ISchema>("schema", Data_CreateSchema, &with.uuid, "title", "description"),
      Creates<ISchema>("schema of JSON", Data_ParseSchema, with.schemaText.Get()),
      Creates<IDateTime>("now", Data_CreateCurrentDateTime),
      Creates<IDateTime>("the first date-time", Data_CreateMinimumDateTime),
      Creates<IDateTime>("the last date-time", Data_CreateMaximumDateTime),
      Creates<IDateTime>("date-time of text", Data_CreateDateTimeFromIso8601, "2024"),
      Creates<IDateTime>("date-time of seconds", Data_CreateDateTimeFromPosixTime, 0),
      Creates<IDateTime>("date-time of ticks", Data_CreateDateTimeFromFileTime, 0u),
      Creates<IObjectList>("rows", &ITable::GetRows, table),
      Creates<IObjectList>("found rows", &ITable::FindRows, table, "id", &with.one),
      Creates<ITable>("merge", &ITable::Merge, table, table, "id", kAll),
      Creates<ITable>("merge on two names", &ITable::MergeOn, table, table, "id", "id", kAll),
      Creates<ITable>("merge on columns", mergeOnColumns),
      Creates<IObjectList>("columns", &ITableHeader::GetColumns, table->GetHeader()),
      Creates<IVariantList, Kind::Throwing>("values of a column", &IColumn::GetValues,
                                            table->GetColumn(0)),
      Creates<IString, Kind::Throwing>("text of a cell", &IRow::GetCellText, row, 1),
      Creates<IValue, Kind::Throwing>("value of a cell", &IRow::GetValue, row, 1),
      Creates<IString, Kind::Throwing>("text of a value", &IValue::GetText, with.cell.Get()),
      Creates<IVariantList>("keys", &IVariantDictionary::GetKeys,
                            New(Data_CreateVariantDictionary)),
      Creates<IObjectList>("missing", &IProperties::GetMissing, New(Data_CreateProperties)),
      Creates<IObjectList>("options", &IEnum::GetOptions, with.enumeration.Get()),
      Creates<IString>("allowed value", &IAllowedValue::GetValueText, with.allowed.Get()),
      Creates<IString>("secure text", &ISecureString::GetText, with.secure.Get()),
      Creates<IArray>("encoded", &IEncoding::Encode, New(Data_CreateEncodingInstanceBase64),
                      with.key.Get()),
      Creates<IArray>("decoded", &IEncoding::Decode, New(Data_CreateEncodingInstanceBase64),
                      with.key.Get()),
      Creates<IArray>("hash", &IHashing::Hash, New(Data_CreateHashingInstanceMD5), kCsv, kSize),
      Creates<IString>("compact JSON", &IJsonDocument::ToCompactString, with.json.Get()),
      Creates<IObjectList>("names", &ISchema::GetColumnNames, with.schema.Get()),
      Creates<IObjectList>("allowed values", &ISchema::GetAllowedValues, with.schema.Get(), "a"),
      Creates<IJsonDocument>("JSON of a schema", schemaAsJson),
      Creates<IJsonDocument>("JSON schema", &ISchema::GetJsonSchema, with.schema.Get()),
      Creates<ISchema>("clone with a UUID", &ISchema::CloneWithUuid, with.schema.Get(), &with.uuid),
      Creates<ISchema>("clone", &ISchema::Clone, with.schema.Get()),
      Creates<IDateTime>("clone of a date-time", &IDateTime::Clone, with.date.Get()),
      Creates<IString>("ISO 8601", &IDateTime::ToIso8601, with.date.Get()),
      Creates<IString>("time", &IDateTime::ToIso8601Time, with.date.Get()),
      Creates<IString>("date", &IDateTime::ToIso8601Date, with.date.Get()),
      Creates<IString>("basic ISO 8601", &IDateTime::ToIso8601Basic, with.date.Get()),
  };
}

IObject* Created(const Call& call) {
  IObject* object = nullptr;
  Ptr<IErrorCode> error;
  EXPECT_TRUE(call.make(&object, error.Receive())) << call.what << ": " << MessageOf(error);
  return object;
}

/// How the call fails with an out-pointer.
std::string FailureWith(const Call& call, IObject** out) {
  if (call.kind == Kind::Throwing) return ThrownBy([&] { call.make(out, nullptr); });
  return Failure([&](IErrorCode** error) { return call.make(out, error); });
}

}  // namespace

TEST(Factories, LeaveNothingBehind) {
  const Objects objects;
  for (const Call& call : CallsThatCreate(objects)) {
    EXPECT_EQ(Created(call)->Release(), 0u) << call.what;  // what is made once in a process stays
    const std::int64_t before = liveBlocks;
    EXPECT_EQ(Created(call)->Release(), 0u) << call.what;
    EXPECT_EQ(liveBlocks, before) << call.what;
  }
}

TEST(Factories, CheckTheOutPointer) {
  const Objects objects;
  for (const Call& call : CallsThatCreate(objects)) {
    const auto held = Ptr<IObject>::Adopt(Created(call));
    IObject* out = held.Get();
    if (call.kind == Kind::Overwriting) {
      EXPECT_FALSE(call.make(nullptr, nullptr)) << call.what;
      EXPECT_TRUE(call.make(&out, nullptr)) << call.what;
      EXPECT_NE(Ptr<IObject>::Adopt(out), held) << call.what;
      continue;
    }
    EXPECT_EQ(FailureWith(call, nullptr),
              "Pointer to a pointer of " + call.type +
                  " must not be null! Address of return must be specified!")
        << call.what;
    EXPECT_EQ(FailureWith(call, &out),
              "Pointer of " + call.type + " must be null in order to avoid memory leaks!")
        << call.what;
    EXPECT_EQ(out, held.Get()) << call.what;
  }
}

TEST(Factories, ATextTooLongForARegionComesFromTheHeap) {
  const std::string longText(20'000, 'x'), text = "a,b\n1," + longText + "\n2,short\n";
  Ptr<ITable> table;
  ASSERT_TRUE(Data_ParseCsv(text.data(), text.size(), table.Receive(), nullptr));
  const Variant cell(*table->GetCellAt(0, 1));
  table.Reset();
  EXPECT_EQ(cell.As<std::string>(), longText);
}

}  // namespace Data::tests
