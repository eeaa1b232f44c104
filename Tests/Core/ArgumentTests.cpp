#include "CallersText.h"

namespace Data::tests {

namespace {

/// An object that was cast to an interface that it does not implement: a list, or a dictionary
/// where a list is expected.
template <class Interface>
Interface* Disguised() {
  constexpr bool isList = std::is_same_v<Interface, IObjectList>;
  static const Ptr<IObject> list(New(Data_CreateObjectList)),
      map(New(Data_CreateVariantDictionary));
  return reinterpret_cast<Interface*>(isList ? map.Get() : list.Get());
}

/// Checks the arguments of an export or operation that creates an object: the out-pointer, which is
/// null or still holds an object, and, if it is guarded, every argument that is a pointer. What is
/// not guarded either throws, or gives false for null and overwrites a held object.
/// @param arguments  the object of an operation, and all arguments but the last ones
template <class Interface, bool throws = false, class Function, class... Arguments>
void Creates(Function function, Arguments... arguments) {
  const std::string type = Core::TypeName<Interface>();
  SCOPED_TRACE(type);
  constexpr bool isGuarded = std::is_invocable_v<Function, Arguments..., Interface**, IErrorCode**>;
  const auto call = [&](Interface** out, IErrorCode** error) -> bool {
    if constexpr (isGuarded)
      return std::invoke(function, arguments..., out, error);
    else if constexpr (std::is_invocable_r_v<bool, Function, Arguments..., Interface**>)
      return std::invoke(function, arguments..., out);
    else
      return std::invoke(function, arguments..., out), out;
  };
  const auto failure = [&](Interface** out) {
    return throws ? ThrownBy([&] { call(out, nullptr); })
                  : Failure([&](IErrorCode** error) { return call(out, error); });
  };
  Interface* created = nullptr;
  ASSERT_TRUE(call(&created, nullptr));
  Interface* out = created;
  if (isGuarded || throws) {
    EXPECT_EQ(failure(nullptr), "Pointer to a pointer of " + type +
                                    " must not be null! Address of return must be specified!");
    EXPECT_EQ(failure(&out),
              "Pointer of " + type + " must be null in order to avoid memory leaks!");
    EXPECT_EQ(out, created);
  } else {
    EXPECT_FALSE(call(nullptr, nullptr));
    EXPECT_TRUE(call(&out, nullptr));
    EXPECT_NE(out, created);
    EXPECT_EQ(out->Release(), 0u);
  }
  EXPECT_EQ(created->Release(), 0u);
  [[maybe_unused]] const auto failureWith = [&](auto& argument, auto wrong) {
    const auto right = std::exchange(argument, wrong);
    const std::string text = failure(Ptr<Interface>().Receive());
    argument = right;
    return text;
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

/// The same for factories without other arguments.
template <class... Interfaces>
void CreateNew(bool (*... factories)(Interfaces**)) {
  (Creates<Interfaces>(factories), ...);
}
template <class... Interfaces>
void CreateNew(bool (*... factories)(Interfaces**, IErrorCode**)) {
  (Creates<Interfaces>(factories), ...);
}

constexpr char kCsv[] = "id,name,at\n1,a name of some length,2024-01-01T10:00:00\n2,,\n";
constexpr std::uint64_t kSize = sizeof kCsv - 1;
constexpr auto kAll = Structures::MergeMode::All;
constexpr auto kNone = ComparisonOperator::None;

}  // namespace

TEST(Factories, CheckTheirArguments) {
  CreateNew(Data_CreateArray, Data_CreateObjectList, Data_CreateVariantList, Data_CreateString,
            Data_CreateJsonDocument, Data_CreateXmlDocument, Data_CreateHtmlDocument,
            Data_CreateRtfDocument, Data_CreateCurrentDateTime, Data_CreateMinimumDateTime,
            Data_CreateMaximumDateTime);
  CreateNew(Data_CreateVariantDictionary, Data_CreateVariantPairList, Data_CreateConfiguration,
            Data_CreateProperties, Data_CreateTable, Data_CreateEncodingInstanceBase64,
            Data_CreateEncodingInstanceBase64Url, Data_CreateHashingInstanceMD5,
            Data_CreateHashingInstanceSha1);
  const _UUID uuid{};
  const auto text = MakeString("a text that fits in no record");
  const Variant value(text), one(1), two(2);
  const _VARIANT *const record = &value, *const number = &one;
  const auto options = New(Data_CreateObjectList);
  options->Add(text.Get());
  const auto key = New(Data_CreateArray);
  const auto base64 = New(Data_CreateEncodingInstanceBase64);
  const auto date = Date("2024-01-01").As<Ptr<IDateTime>>();
  const auto json = JsonVariant(R"([{"a":1}])").As<Ptr<IJsonDocument>>();
  const auto table = Made<ITable>(Data_ParseCsv, kCsv, kSize);
  const auto schema = Made<ISchema>(Data_CreateSchema, &uuid, "", "");
  schema->AddColumn("a", ValueType::Int32, 1, 1, nullptr);
  const auto allowed = Made<IAllowedValue>(Data_CreateAllowedValue, record, kNone, "", "", "", "");
  IRow* const row = table->GetRow(0);
  Creates<IEnum>(Data_CreateEnum, options.Get());
  Creates<IConstrainedValue>([&](auto out, auto error) {
    return Data_CreateConstrainedValue(&one, &one, &two, out, error);
  });
  Creates<IAllowedValue>(Data_CreateAllowedValue, record, kNone, "", "", "", "");
  Creates<ISecureString>(Data_CreateSecureString, text.Get());
  Creates<IHashing>(Data_CreateHashingInstanceSha2, 2u);
  Creates<IHashing>([&](auto out, auto error) {
    return Data_CreateHashingInstanceHmacSha2(0, key.Get(), out, error);
  });
  Creates<IString>(Data_UuidToString, &uuid);
  Creates<ITable>(Data_ParseCsv, kCsv, kSize);
  Creates<ITable>(
      [](auto csv, auto out, auto error) {
        return Data_ParseCsvWithErrors(csv, out, Ptr<IObjectList>().Receive(), kSize, 0, error);
      },
      kCsv);
  Creates<IObjectList>(
      [](auto csv, auto out, auto error) {
        return Data_ParseCsvWithErrors(csv, Ptr<ITable>().Receive(), out, kSize, 0, error);
      },
      kCsv);
  Creates<ITable>(
      [](auto csv, auto separator, auto out, auto error) {
        return Data_ParseCsvWithSeparator(csv, separator, out, kSize, error);
      },
      kCsv, ",");
  Creates<IString>(
      [](auto from, auto separator, auto out, auto error) {
        return Data_ConvertTableToCsv(from, separator, out, true, error);
      },
      table.Get(), ",");
  Creates<ITable>(Data_JsonToTable, json.Get());
  Creates<IJsonDocument>(Data_TableToJson, table.Get());
  Creates<IJsonDocument>(Data_TableRowToJson, row);
  Creates<ISchema>(Data_CreateSchema, &uuid, "title", "description");
  Creates<ISchema>(Data_ParseSchema, JsonVariant("{}").As<Ptr<IJsonDocument>>().Get());
  Creates<IDateTime>(Data_CreateDateTimeFromIso8601, "2024");
  Creates<IDateTime>(Data_CreateDateTimeFromPosixTime, 0);
  Creates<IDateTime>(Data_CreateDateTimeFromFileTime, 0u);
  Creates<IObjectList>(&ITable::GetRows, table);
  Creates<IObjectList>(&ITable::FindRows, table, "id", number);
  Creates<ITable>(&ITable::Merge, table, table.Get(), "id", kAll);
  Creates<ITable>(&ITable::MergeOn, table, table.Get(), "id", "id", kAll);
  Creates<ITable>(
      [&](auto right, auto out, auto error) {
        return table->MergeOnColumns(right, kAll, out, error, 1, "id");
      },
      table.Get());
  Creates<IObjectList>(&ITableHeader::GetColumns, Ptr<ITableHeader>(table->GetHeader()));
  Creates<IVariantList, true>(&IColumn::GetValues, table->GetColumn(0));
  Creates<IString, true>(&IRow::GetCellText, row, 1);
  Creates<IValue, true>(&IRow::GetValue, row, 1);
  Creates<IString, true>(&IValue::GetText, Made<IValue>(&IRow::GetValue, row, 0));
  Creates<IVariantList>(&IVariantDictionary::GetKeys, New(Data_CreateVariantDictionary));
  Creates<IObjectList>(&IProperties::GetMissing, New(Data_CreateProperties));
  Creates<IObjectList>(&IEnum::GetOptions, Made<IEnum>(Data_CreateEnum, options.Get()));
  Creates<IString>(&IAllowedValue::GetValueText, allowed);
  Creates<IString>(&ISecureString::GetText,
                   Made<ISecureString>(Data_CreateSecureString, text.Get()));
  Creates<IArray>(&IEncoding::Encode, base64, key.Get());
  Creates<IArray>(&IEncoding::Decode, base64, key.Get());
  Creates<IArray>(&IHashing::Hash, New(Data_CreateHashingInstanceMD5),
                  static_cast<const void*>(kCsv), kSize);
  Creates<IString>(&IJsonDocument::ToCompactString, json);
  Creates<IObjectList>(&ISchema::GetColumnNames, schema);
  Creates<IObjectList>(&ISchema::GetAllowedValues, schema, "a");
  Creates<IJsonDocument>([&](auto out, auto error) { return schema->ToJson(out, ' ', 2, error); });
  Creates<IJsonDocument>(&ISchema::GetJsonSchema, schema);
  Creates<ISchema>(&ISchema::CloneWithUuid, schema, &uuid);
  Creates<ISchema>(&ISchema::Clone, schema);
  Creates<IDateTime>(&IDateTime::Clone, date);
  for (const auto write : {&IDateTime::ToIso8601, &IDateTime::ToIso8601Time,
                           &IDateTime::ToIso8601Date, &IDateTime::ToIso8601Basic})
    Creates<IString>(write, date);
}

TEST(Arguments, OfAnotherInterfaceAreNotTaken) {
  const auto string = MakeString("a text");
  const auto date = Date("2024-01-01").As<Ptr<IDateTime>>();
  const _UUID uuid{};
  const auto schema = Made<ISchema>(Data_CreateSchema, &uuid, "", "");
  const std::string start = "Memory address [";
  EXPECT_EQ(ThrownBy([&] { string->Compare(Disguised<IString>(), true); }).find(start), 0u);
  EXPECT_EQ(ThrownBy([&] { date->CompareTo(Disguised<IDateTime>()); }).find(start), 0u);
  const auto compareYears = [&] { date->CompareByUnit(Disguised<IDateTime>(), {}); };
  EXPECT_EQ(ThrownBy(compareYears).find(start), 0u);
  const std::function<bool(IErrorCode**)> guarded[] = {
      [&](auto e) { return schema->AddAllowedValue("a", Disguised<IAllowedValue>(), e); },
      [&](auto e) { return schema->SetAllowedValues("a", Disguised<IObjectList>(), e); },
      [&](auto e) {
        return Data_CreateHashingInstanceHmacSha2(0, Disguised<IArray>(), Ptr<IHashing>().Receive(),
                                                  e);
      },
  };
  for (const auto& call : guarded) EXPECT_EQ(Failure(call).find(start), 0u);
  EXPECT_EQ(Failure([&](auto e) { return schema->AddAllowedValue("a", nullptr, e); }),
            "Pointer of struct Data::Interfaces::IAllowedValue must not be null!");
  EXPECT_EQ(schema->GetColumnCount(), 0u) << "a failure adds no column";
  EXPECT_FALSE(JsonVariant("{}").As<Ptr<IJsonDocument>>()->Equals(Disguised<IJsonDocument>()));
  const auto xml = New(Data_CreateXmlDocument);
  xml->SetContent("<a/>", 4);
  EXPECT_FALSE(xml->Equals(Disguised<IXmlDocument>()));
  EXPECT_EQ(Failure([](auto e) { return Data_ParseCsv("a", 0, Ptr<ITable>().Receive(), e); }),
            "Size cannot be 0. We don't call strlen internally because data might not contain null "
            "terminator!");
}

TEST(Arguments, MayThrowAnything) {
  const auto text = Core::MakePtr<CallersText>("a");
  text->onRead = [] { throw 5; };
  Ptr<ISecureString> out;
  Ptr<IErrorCode> error;
  EXPECT_FALSE(Data_CreateSecureString(text.Get(), out.Receive(), error.Receive()));
  ASSERT_TRUE(error);
  EXPECT_EQ(error->GetCode(), 1u);
  EXPECT_EQ(MessageOf(error), "Uncaught exception");
  EXPECT_FALSE(out);
}

#if !defined(__SANITIZE_ADDRESS__)  // which rejects such an object before the library sees it
TEST(Arguments, WithoutTypeInformationAreTrusted) {
  // As other languages build objects, and compilers that omit type information: nothing precedes
  // the virtual table (17 slots, and two for destruction).
  const auto string = Core::MakeString("a text");
  void** table = nullptr;
  std::memcpy(&table, static_cast<const void*>(string.Get()), sizeof table);
  void* bare[1 + 19] = {nullptr};
  std::copy_n(table, 19, bare + 1);
  void** const bareTable = bare + 1;
  std::memcpy(static_cast<void*>(string.Get()), &bareTable, sizeof bareTable);

  EXPECT_TRUE(Made<ISecureString>(Data_CreateSecureString, string.Get()));
  EXPECT_EQ(Core::MakeString("a text")->Compare(string.Get(), true), 0);
  const Core::Variant object =
      Reference(Structures::ValueType::IObject, Ptr<Core::IObject>(string));
  EXPECT_EQ(ThrownBy([&] { Core::CastToInterface<IArray>(Ptr<Core::IObject>(string)); }),
            "Cannot cast to desired interface: Interface: struct Core::IObject Desired Interface: "
            "struct Data::Interfaces::IArray");
  EXPECT_EQ(Core::RuntimeTypeName(*string), "struct unknown");
}
#endif

}  // namespace Data::tests
