#include "Prelude.h"

#include <new>

// What the program and, where the system lets a program stand in for it, the library hold on the
// heap. A Windows library keeps to its own heap: there the counts of references speak alone.
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

struct Factory {
  const char* what;
  bool isGuarded;
  std::function<bool(IObject** out, IErrorCode** error)> make;
};

/// A factory without an error argument, given its other arguments but the last.
template <class Interface, class Make, class... Arguments>
Factory Unguarded(const char* what, Make make, Arguments... arguments) {
  return {what, false, [=](IObject** out, IErrorCode**) {
            Interface* object = nullptr;
            const bool isMade = make(arguments..., &object);
            *out = object;
            return isMade;
          }};
}
template <class Interface, class Make, class... Arguments>
Factory Guarded(const char* what, Make make, Arguments... arguments) {
  return {what, true, [=](IObject** out, IErrorCode** error) {
            auto* object = static_cast<Interface*>(*out);
            const bool isMade = make(arguments..., &object, error);
            *out = object;
            return isMade;
          }};
}

/// Makes an object; a guarded factory then refuses to overwrite it. Ends it.
void MakeAndEnd(const Factory& factory) {
  IObject* object = nullptr;
  Ptr<IErrorCode> error;
  ASSERT_TRUE(factory.make(&object, error.Receive())) << factory.what << MessageOf(error);
  IObject* const made = object;
  if (factory.isGuarded) {
    EXPECT_FALSE(factory.make(&object, error.Receive())) << factory.what;
    EXPECT_TRUE(error) << factory.what;
    EXPECT_EQ(object, made) << factory.what;
  }
  EXPECT_EQ(made->Release(), 0u) << factory.what;
}

constexpr char kCsv[] = "id,name,at\n1,a name of some length,2024-01-01T10:00:00\n2,,\n";
constexpr std::uint64_t kSize = sizeof kCsv - 1;

}  // namespace

TEST(Factories, LeaveNothingBehind) {
  const auto text = Core::MakeString("a text that fits in no record");
  const auto options = New(Data_CreateObjectList);
  options->Add(text.Get());
  const auto key = New(Data_CreateArray);
  const Core::Variant value(text), one(1), two(2);
  const auto json = JsonVariant(R"([{"a":1,"b":"a text that fits in no record"}])");
  const auto document = json.As<Ptr<IJsonDocument>>();
  const auto schemaText = JsonVariant("{}").As<Ptr<IJsonDocument>>();
  const Structures::_UUID uuid{};
  Ptr<ITable> table;
  ASSERT_TRUE(Data_ParseCsv(kCsv, kSize, table.Receive(), nullptr));

  const auto readNotingProblems = [](ITable** out, IErrorCode** error) {
    Ptr<IObjectList> problems;
    return Data_ParseCsvWithErrors(kCsv, out, problems.Receive(), kSize, 0, error);
  };
  const auto readSeparated = [](ITable** out, IErrorCode** error) {
    return Data_ParseCsvWithSeparator(kCsv, ",", out, kSize, error);
  };
  const auto writeCsv = [&](IString** out, IErrorCode** error) {
    return Data_ConvertTableToCsv(table.Get(), ",", out, true, error);
  };
  const auto anyOperator = Structures::ComparisonOperator();
  const Factory factories[] = {
      Unguarded<IArray>("array", Data_CreateArray),
      Unguarded<IObjectList>("object list", Data_CreateObjectList),
      Unguarded<IVariantList>("variant list", Data_CreateVariantList),
      Guarded<IVariantDictionary>("dictionary", Data_CreateVariantDictionary),
      Guarded<IVariantPairList>("pair list", Data_CreateVariantPairList),
      Guarded<IConfiguration>("configuration", Data_CreateConfiguration),
      Guarded<IProperties>("properties", Data_CreateProperties),
      Guarded<IEnum>("enumeration", Data_CreateEnum, options.Get()),
      Guarded<IConstrainedValue>("constrained", Data_CreateConstrainedValue, &one, &one, &two),
      Guarded<IAllowedValue>("allowed", Data_CreateAllowedValue, &value, anyOperator, "", "", "",
                             ""),
      Unguarded<IString>("string", Data_CreateString),
      Guarded<ISecureString>("secure string", Data_CreateSecureString, text.Get()),
      Guarded<IEncoding>("Base64", Data_CreateEncodingInstanceBase64),
      Guarded<IEncoding>("Base64 for URLs", Data_CreateEncodingInstanceBase64Url),
      Guarded<IHashing>("MD5", Data_CreateHashingInstanceMD5),
      Guarded<IHashing>("SHA-1", Data_CreateHashingInstanceSha1),
      Guarded<IHashing>("SHA-2", Data_CreateHashingInstanceSha2, 2u),
      Guarded<IHashing>("HMAC", Data_CreateHashingInstanceHmacSha2, 0u, key.Get()),
      Unguarded<IString>("identifier as text", Data_UuidToString, &uuid),
      Guarded<ITable>("table", Data_CreateTable),
      Guarded<ITable>("read table", Data_ParseCsv, kCsv, kSize),
      Guarded<ITable>("read table with problems", readNotingProblems),
      Guarded<ITable>("read table with a separator", readSeparated),
      Guarded<IString>("delimited text", writeCsv),
      Unguarded<IJsonDocument>("JSON document", Data_CreateJsonDocument),
      Unguarded<IXmlDocument>("XML document", Data_CreateXmlDocument),
      Unguarded<IHtmlDocument>("HTML document", Data_CreateHtmlDocument),
      Unguarded<IRtfDocument>("RTF document", Data_CreateRtfDocument),
      Guarded<ITable>("table of JSON", Data_JsonToTable, document.Get()),
      Guarded<IJsonDocument>("JSON of a table", Data_TableToJson, table.Get()),
      Guarded<IJsonDocument>("JSON of a row", Data_TableRowToJson, table->GetRow(0)),
      Guarded<ISchema>("schema", Data_CreateSchema, &uuid, "title", "description"),
      Guarded<ISchema>("schema of JSON", Data_ParseSchema, schemaText.Get()),
      Unguarded<IDateTime>("now", Data_CreateCurrentDateTime),
      Unguarded<IDateTime>("the first date-time", Data_CreateMinimumDateTime),
      Unguarded<IDateTime>("the last date-time", Data_CreateMaximumDateTime),
      Guarded<IDateTime>("date-time of text", Data_CreateDateTimeFromIso8601, "2024"),
      Unguarded<IDateTime>("date-time of seconds", Data_CreateDateTimeFromPosixTime, 0),
      Unguarded<IDateTime>("date-time of ticks", Data_CreateDateTimeFromFileTime, 0u),
  };
  for (const Factory& factory : factories) {
    MakeAndEnd(factory);  // what is made once in a process stays
    const std::int64_t before = liveBlocks;
    MakeAndEnd(factory);
    EXPECT_EQ(liveBlocks, before) << factory.what;
  }
}

}  // namespace Data::tests
