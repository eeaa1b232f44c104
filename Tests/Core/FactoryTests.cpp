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

template <class Interface, class Make>
Call MakeCall(const char* what, Kind kind, Make make) {
  return {what, kind, Core::TypeName<Interface>(), [=](IObject** out, IErrorCode** error) {
            if (!out) return make(static_cast<Interface**>(nullptr), error);
            auto* object = static_cast<Interface*>(*out);
            const bool isMade = make(&object, error);
            *out = object;
            return isMade;
          }};
}
/// @param arguments  the object of an operation, and all arguments but the last two
template <class Interface, class Function, class... Arguments>
Call Guarded(const char* what, Function function, Arguments... arguments) {
  return MakeCall<Interface>(what, Kind::Guarded, [=](Interface** out, IErrorCode** error) {
    return std::invoke(function, arguments..., out, error);
  });
}
/// A call without an error argument.
template <class Interface, Kind kind = Kind::Overwriting, class Function, class... Arguments>
Call Unguarded(const char* what, Function function, Arguments... arguments) {
  return MakeCall<Interface>(what, kind, [=](Interface** out, IErrorCode**) -> bool {
    using Result = std::invoke_result_t<Function, Arguments..., Interface**>;
    if constexpr (std::is_void_v<Result>) {
      std::invoke(function, arguments..., out);
      return out != nullptr;
    } else {
      return std::invoke(function, arguments..., out);
    }
  });
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

std::vector<Call> ExportsThatCreate(const Objects& with) {
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
  return {
      Unguarded<IArray>("array", Data_CreateArray),
      Unguarded<IObjectList>("object list", Data_CreateObjectList),
      Unguarded<IVariantList>("variant list", Data_CreateVariantList),
      Guarded<IVariantDictionary>("dictionary", Data_CreateVariantDictionary),
      Guarded<IVariantPairList>("pair list", Data_CreateVariantPairList),
      Guarded<IConfiguration>("configuration", Data_CreateConfiguration),
      Guarded<IProperties>("properties", Data_CreateProperties),
      Guarded<IEnum>("enumeration", Data_CreateEnum, with.options.Get()),
      Guarded<IConstrainedValue>("constrained", Data_CreateConstrainedValue, &with.one, &with.one,
                                 &with.two),
      Guarded<IAllowedValue>("allowed", Data_CreateAllowedValue, &with.value,
                             ComparisonOperator::None, "", "", "", ""),
      Unguarded<IString>("string", Data_CreateString),
      Guarded<ISecureString>("secure string", Data_CreateSecureString, with.text.Get()),
      Guarded<IEncoding>("Base64", Data_CreateEncodingInstanceBase64),
      Guarded<IEncoding>("Base64 for URLs", Data_CreateEncodingInstanceBase64Url),
      Guarded<IHashing>("MD5", Data_CreateHashingInstanceMD5),
      Guarded<IHashing>("SHA-1", Data_CreateHashingInstanceSha1),
      Guarded<IHashing>("SHA-2", Data_CreateHashingInstanceSha2, 2u),
      Guarded<IHashing>("HMAC", Data_CreateHashingInstanceHmacSha2, 0u, with.key.Get()),
      Unguarded<IString>("UUID as text", Data_UuidToString, &with.uuid),
      Guarded<ITable>("table", Data_CreateTable),
      Guarded<ITable>("table of CSV", Data_ParseCsv, kCsv, kSize),
      Guarded<ITable>("table of CSV with problems", withProblems),
      Guarded<IObjectList>("problems of CSV", problemsOf),
      Guarded<ITable>("table of CSV with a separator", separated),
      Guarded<IString>("CSV", delimited),
      Unguarded<IJsonDocument>("JSON document", Data_CreateJsonDocument),
      Unguarded<IXmlDocument>("XML document", Data_CreateXmlDocument),
      Unguarded<IHtmlDocument>("HTML document", Data_CreateHtmlDocument),
      Unguarded<IRtfDocument>("RTF document", Data_CreateRtfDocument),
      Guarded<ITable>("table of JSON", Data_JsonToTable, with.json.Get()),
      Guarded<IJsonDocument>("JSON of a table", Data_TableToJson, with.table.Get()),
      Guarded<IJsonDocument>("JSON of a row", Data_TableRowToJson, with.table->GetRow(0)),
      Guarded<ISchema>("schema", Data_CreateSchema, &with.uuid, "title", "description"),
      Guarded<ISchema>("schema of JSON", Data_ParseSchema, with.schemaText.Get()),
      Unguarded<IDateTime>("now", Data_CreateCurrentDateTime),
      Unguarded<IDateTime>("the first date-time", Data_CreateMinimumDateTime),
      Unguarded<IDateTime>("the last date-time", Data_CreateMaximumDateTime),
      Guarded<IDateTime>("date-time of text", Data_CreateDateTimeFromIso8601, "2024"),
      Unguarded<IDateTime>("date-time of seconds", Data_CreateDateTimeFromPosixTime, 0),
      Unguarded<IDateTime>("date-time of ticks", Data_CreateDateTimeFromFileTime, 0u),
  };
}

std::vector<Call> OperationsThatCreate(const Objects& with) {
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
      Guarded<IObjectList>("rows", &ITable::GetRows, table),
      Guarded<IObjectList>("found rows", &ITable::FindRows, table, "id", &with.one),
      Guarded<ITable>("merge", &ITable::Merge, table, table, "id", kAll),
      Guarded<ITable>("merge on two names", &ITable::MergeOn, table, table, "id", "id", kAll),
      Guarded<ITable>("merge on columns", mergeOnColumns),
      Guarded<IObjectList>("columns", &ITableHeader::GetColumns, table->GetHeader()),
      Unguarded<IVariantList, Kind::Throwing>("values of a column", &IColumn::GetValues,
                                              table->GetColumn(0)),
      Unguarded<IString, Kind::Throwing>("text of a cell", &IRow::GetCellText, row, 1),
      Unguarded<IValue, Kind::Throwing>("value of a cell", &IRow::GetValue, row, 1),
      Unguarded<IString, Kind::Throwing>("text of a value", &IValue::GetText, with.cell.Get()),
      Guarded<IVariantList>("keys", &IVariantDictionary::GetKeys,
                            New(Data_CreateVariantDictionary)),
      Guarded<IObjectList>("missing", &IProperties::GetMissing, New(Data_CreateProperties)),
      Guarded<IObjectList>("options", &IEnum::GetOptions, with.enumeration.Get()),
      Guarded<IString>("allowed value", &IAllowedValue::GetValueText, with.allowed.Get()),
      Guarded<IString>("secure text", &ISecureString::GetText, with.secure.Get()),
      Guarded<IArray>("encoded", &IEncoding::Encode, New(Data_CreateEncodingInstanceBase64),
                      with.key.Get()),
      Guarded<IArray>("decoded", &IEncoding::Decode, New(Data_CreateEncodingInstanceBase64),
                      with.key.Get()),
      Guarded<IArray>("hash", &IHashing::Hash, New(Data_CreateHashingInstanceMD5), kCsv, kSize),
      Guarded<IString>("compact JSON", &IJsonDocument::ToCompactString, with.json.Get()),
      Guarded<IObjectList>("names", &ISchema::GetColumnNames, with.schema.Get()),
      Guarded<IObjectList>("allowed values", &ISchema::GetAllowedValues, with.schema.Get(), "a"),
      Guarded<IJsonDocument>("JSON of a schema", schemaAsJson),
      Guarded<IJsonDocument>("JSON schema", &ISchema::GetJsonSchema, with.schema.Get()),
      Guarded<ISchema>("clone with a UUID", &ISchema::CloneWithUuid, with.schema.Get(), &with.uuid),
      Guarded<ISchema>("clone", &ISchema::Clone, with.schema.Get()),
      Unguarded<IDateTime>("clone of a date-time", &IDateTime::Clone, with.date.Get()),
      Unguarded<IString>("ISO 8601", &IDateTime::ToIso8601, with.date.Get()),
      Unguarded<IString>("time", &IDateTime::ToIso8601Time, with.date.Get()),
      Unguarded<IString>("date", &IDateTime::ToIso8601Date, with.date.Get()),
      Unguarded<IString>("basic ISO 8601", &IDateTime::ToIso8601Basic, with.date.Get()),
  };
}

std::vector<Call> CallsThatCreate(const Objects& with) {
  std::vector<Call> calls = ExportsThatCreate(with);
  for (Call& call : OperationsThatCreate(with)) calls.push_back(std::move(call));
  return calls;
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

}  // namespace Data::tests
