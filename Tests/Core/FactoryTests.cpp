#include <atomic>
#include <cstdlib>
#include <functional>
#include <new>

#include "Data/Interfaces/IAllowedValue.h"
#include "Data/Interfaces/IConfiguration.h"
#include "Data/Interfaces/IConstrainedValue.h"
#include "Data/Interfaces/IDateTime.h"
#include "Data/Interfaces/IEncoding.h"
#include "Data/Interfaces/IEnum.h"
#include "Data/Interfaces/IHashing.h"
#include "Data/Interfaces/IHtmlDocument.h"
#include "Data/Interfaces/IProperties.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/IRtfDocument.h"
#include "Data/Interfaces/ISchema.h"
#include "Data/Interfaces/ISecureString.h"
#include "Data/Interfaces/ITable.h"
#include "Data/Interfaces/IVariantDictionary.h"
#include "Data/Interfaces/IVariantPairList.h"
#include "Data/Interfaces/IXmlDocument.h"
#include "VariantSupport.h"

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

using namespace Interfaces;
using Core::IErrorCode;
using Core::IObject;
using Core::Ptr;

namespace {

struct Factory {
  const char* what;
  bool isGuarded;
  std::function<bool(IObject** out, IErrorCode** error)> make;
};

template <class Interface, class Make>
Factory Unguarded(const char* what, Make make) {
  return {what, false, [make](IObject** out, IErrorCode**) {
            Interface* object = nullptr;
            const bool isMade = make(&object);
            *out = object;
            return isMade;
          }};
}
template <class Interface>
Factory Unguarded(const char* what, bool (*factory)(Interface**)) {
  return Unguarded<Interface, bool (*)(Interface**)>(what, factory);
}

template <class Interface, class Make>
Factory Guarded(const char* what, Make make) {
  return {what, true, [make](IObject** out, IErrorCode** error) {
            auto* object = static_cast<Interface*>(*out);
            const bool isMade = make(&object, error);
            *out = object;
            return isMade;
          }};
}
template <class Interface>
Factory Guarded(const char* what, bool (*factory)(Interface**, IErrorCode**)) {
  return Guarded<Interface, bool (*)(Interface**, IErrorCode**)>(what, factory);
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
  ASSERT_TRUE(Data_ParseCsv(kCsv, sizeof kCsv - 1, table.Receive(), nullptr));

  const Factory factories[] = {
      Unguarded("array", Data_CreateArray),
      Unguarded("object list", Data_CreateObjectList),
      Unguarded("variant list", Data_CreateVariantList),
      Guarded("dictionary", Data_CreateVariantDictionary),
      Guarded("pair list", Data_CreateVariantPairList),
      Guarded("configuration", Data_CreateConfiguration),
      Guarded("properties", Data_CreateProperties),
      Guarded<IEnum>(
          "enumeration",
          [&](auto out, auto error) { return Data_CreateEnum(options.Get(), out, error); }),
      Guarded<IConstrainedValue>("constrained value",
                                 [&](auto out, auto error) {
                                   return Data_CreateConstrainedValue(&one, &one, &two, out, error);
                                 }),
      Guarded<IAllowedValue>("allowed value",
                             [&](auto out, auto error) {
                               return Data_CreateAllowedValue(&value,
                                                              Structures::ComparisonOperator(), "",
                                                              "", "", "", out, error);
                             }),
      Unguarded("string", Data_CreateString),
      Guarded<ISecureString>(
          "secure string",
          [&](auto out, auto error) { return Data_CreateSecureString(text.Get(), out, error); }),
      Guarded("Base64", Data_CreateEncodingInstanceBase64),
      Guarded("Base64 for URLs", Data_CreateEncodingInstanceBase64Url),
      Guarded("MD5", Data_CreateHashingInstanceMD5),
      Guarded("SHA-1", Data_CreateHashingInstanceSha1),
      Guarded<IHashing>(
          "SHA-2",
          [](auto out, auto error) { return Data_CreateHashingInstanceSha2(2, out, error); }),
      Guarded<IHashing>("HMAC",
                        [&](auto out, auto error) {
                          return Data_CreateHashingInstanceHmacSha2(0, key.Get(), out, error);
                        }),
      Unguarded<IString>("identifier as text",
                         [&](auto out) { return Data_UuidToString(&uuid, out); }),
      Guarded("table", Data_CreateTable),
      Guarded<ITable>(
          "table of delimited text",
          [](auto out, auto error) { return Data_ParseCsv(kCsv, sizeof kCsv - 1, out, error); }),
      Guarded<ITable>("table with problems",
                      [](auto out, auto error) {
                        Ptr<IObjectList> problems;
                        return Data_ParseCsvWithErrors(kCsv, out, problems.Receive(),
                                                       sizeof kCsv - 1, 0, error);
                      }),
      Guarded<ITable>("table with a separator",
                      [](auto out, auto error) {
                        return Data_ParseCsvWithSeparator(kCsv, ",", out, sizeof kCsv - 1, error);
                      }),
      Guarded<IString>("delimited text",
                       [&](auto out, auto error) {
                         return Data_ConvertTableToCsv(table.Get(), ",", out, true, error);
                       }),
      Unguarded("JSON document", Data_CreateJsonDocument),
      Unguarded("XML document", Data_CreateXmlDocument),
      Unguarded("HTML document", Data_CreateHtmlDocument),
      Unguarded("RTF document", Data_CreateRtfDocument),
      Guarded<ITable>(
          "table of JSON",
          [&](auto out, auto error) { return Data_JsonToTable(document.Get(), out, error); }),
      Guarded<IJsonDocument>(
          "JSON of a table",
          [&](auto out, auto error) { return Data_TableToJson(table.Get(), out, error); }),
      Guarded<IJsonDocument>(
          "JSON of a row",
          [&](auto out, auto error) { return Data_TableRowToJson(table->GetRow(0), out, error); }),
      Guarded<ISchema>("schema",
                       [&](auto out, auto error) {
                         return Data_CreateSchema(&uuid, "title", "description", out, error);
                       }),
      Guarded<ISchema>(
          "schema of JSON",
          [&](auto out, auto error) { return Data_ParseSchema(schemaText.Get(), out, error); }),
      Unguarded("now", Data_CreateCurrentDateTime),
      Unguarded("the first date-time", Data_CreateMinimumDateTime),
      Unguarded("the last date-time", Data_CreateMaximumDateTime),
      Guarded<IDateTime>(
          "date-time of text",
          [](auto out, auto error) { return Data_CreateDateTimeFromIso8601("2024", out, error); }),
      Unguarded<IDateTime>("date-time of seconds",
                           [](auto out) { return Data_CreateDateTimeFromPosixTime(0, out); }),
      Unguarded<IDateTime>("date-time of ticks",
                           [](auto out) { return Data_CreateDateTimeFromFileTime(0, out); }),
  };
  for (const Factory& factory : factories) {
    MakeAndEnd(factory);  // what is made once in a process stays
    const std::int64_t before = liveBlocks;
    MakeAndEnd(factory);
    EXPECT_EQ(liveBlocks, before) << factory.what;
  }
}

}  // namespace Data::tests
