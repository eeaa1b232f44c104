#include "Prelude.h"

namespace Data::tests {

using namespace Core;

namespace {

/// The type of each value, "&" for a reference, and the first word of its payload.
template <class... Values>
std::string Shown(Values... values) {
  std::string text;
  for (const Variant& value : {Variant(values)...}) {
    text.append(GetValueTypeName(value.Type()));
    text += HasForm(value, StorageForm::Reference) ? " &" : " ";
    text += StringFormat("%llx, ", static_cast<unsigned long long>(value.value[0]));
  }
  return text;
}

}  // namespace

TEST(Variant, TakesTheTypeOfWhatItIsMadeOf) {
  const Structures::_UUID uuid{0x6b29fc40, 0xca47, 0x1067, {0xb3, 0x1d, 0, 0xdd, 1, 6, 0x62, 0xda}};
  EXPECT_EQ(Shown(Variant(), Null, true, std::uint8_t{255}, std::uint16_t{65535}, 4294967295u,
                  UINT64_MAX, 1.0, -1.0f, "abc", uuid),
            "Unknown 0, Null 0, Bool 1, Byte ff, UInt16 ffff, UInt32 ffffffff, "
            "UInt64 ffffffffffffffff, Double 3ff0000000000000, Float bf800000, String 636261, "
            "Uuid 1067ca476b29fc40, ");
  EXPECT_EQ(Shown(std::int8_t{-1}, std::int16_t{-1}, -1, std::int64_t{-1}),
            "SByte ffffffffffffffff, Int16 ffffffffffffffff, Int32 ffffffffffffffff, "
            "Int64 ffffffffffffffff, ");
  EXPECT_EQ(Shown(Ptr<IString>(), Ptr<IArray>(), Ptr<IDateTime>(), Ptr<IJsonDocument>(),
                  Ptr<IXmlDocument>(), Ptr<IErrorCode>(), Ptr<IObjectList>(),
                  Variant::StringList(nullptr), Ptr<IObject>()),
            "String &0, Array &0, DateTime &0, JsonDocument &0, XmlDocument &0, ErrorCode &0, "
            "ObjectList &0, StringList &0, IObject &0, ");
  struct Special : IArray {};
  EXPECT_EQ(detail::ReferenceType<Special>(), ValueType::Array) << "of an implementation";
  EXPECT_EQ(Variant(uuid).As<std::string>(), "6b29fc40-ca47-1067-b31d-00dd010662da");
}

TEST(Variant, OwnsWhatItRefersTo) {
  const auto object = New(Data_CreateArray);
  {
    const Variant value(object), copy(value), ofRecord(static_cast<const _VARIANT&>(value));
    EXPECT_EQ(ReferencesTo(object), 4u);
    Variant moved(Variant{copy}), assigned(7);
    assigned = moved;
    EXPECT_EQ(ReferencesTo(object), 6u);
    assigned = *&assigned;
    EXPECT_EQ(ReferencesTo(object), 6u) << "assigned to itself";
    assigned = std::move(moved);
    EXPECT_EQ(moved.Type(), ValueType::Unknown);
    const _VARIANT record = assigned.Detach();
    EXPECT_EQ(ReferencesTo(object), 5u) << "the record holds the reference now";
    EXPECT_EQ(Variant::Adopt(record).As<Ptr<IArray>>(), object);
  }
  EXPECT_EQ(ReferencesTo(object), 1u);
}

TEST(Variant, CopyingARecord) {
  const auto first = New(Data_CreateArray), second = New(Data_CreateArray);
  Variant source(first), destination(second);
  CopyVariant(&source, &destination);
  EXPECT_EQ(ReferencesTo(first), 3u);
  EXPECT_EQ(ReferencesTo(second), 1u) << "released";
  CopyVariant(&destination, &destination);
  EXPECT_EQ(ReferencesTo(first), 3u) << "onto itself";
  const _VARIANT undefined{MakeTag(static_cast<ValueType>(28), StorageForm::Reference), {0xBAD, 7}};
  for (const _VARIANT& plain : {undefined, _VARIANT(Address(ValueType::IObject, 0xBAD))}) {
    CopyVariant(&plain, &destination);
    EXPECT_EQ(ReferencesTo(first), 2u);
    EXPECT_EQ(destination.type, plain.type);
    EXPECT_EQ(destination.value[0], 0xBADu) << "plain bytes, never followed";
    EXPECT_EQ(destination.value[1], plain.value[1]);
    CopyVariant(&source, &destination);
  }
  EXPECT_EQ(ThrownBy([&] { CopyVariant(nullptr, &destination); }), "Cannot be nullptr!");
  EXPECT_EQ(ThrownBy([&] { CopyVariant(&source, nullptr); }), "Cannot be nullptr!");
  EXPECT_EQ(ReferencesTo(first), 3u);
}

TEST(Variant, ChecksThatARecordIsInitialized) {
  for (const std::uint32_t type : {0u, 27u, MakeTag(ValueType::Array, StorageForm::Reference)}) {
    const _VARIANT record{type, {0, 0}};
    EXPECT_EQ(ThrownBy([&] { CheckInitialized(&record); }), "") << type;
  }
  for (const std::uint32_t type : {28u, 255u, 0xFFFFu, 0x10000u + 28, 0xCCCCCCCCu}) {
    const _VARIANT record{type, {0, 0}};
    EXPECT_EQ(ThrownBy([&] { CheckInitialized(&record); }), kUndefinedRecord) << type;
    EXPECT_EQ(ThrownBy([&] { CheckRecord(&record); }), kUndefinedRecord) << type;
  }
  EXPECT_EQ(ThrownBy([] { CheckInitialized(nullptr); }), "Cannot be nullptr!");
  EXPECT_EQ(ThrownBy([] { CheckRecord(nullptr); }), kNullRecord);
}

TEST(Variant, ReadsAsCppValues) {
  const auto array = New(Data_CreateArray);
  EXPECT_EQ(Variant(-7).As<std::int64_t>(), -7);
  EXPECT_EQ(Variant(300).As<std::uint8_t>(), 44) << "cut to the type asked for";
  EXPECT_EQ(Variant(2.9).As<int>(), 2);
  EXPECT_EQ(Variant(7).As<double>(), 7.0);
  EXPECT_TRUE(Variant(2).As<bool>());
  EXPECT_EQ(Variant(2.5).As<std::string>(), "2.500000");
  EXPECT_EQ(Variant("text").As<std::string_view>(), "text");
  EXPECT_EQ(Variant(array).As<Ptr<IArray>>(), array);
  EXPECT_EQ(Variant(Null).As<Ptr<IArray>>(), nullptr);
  const _VARIANT record = MakeDouble(0.5);
  EXPECT_EQ(As<double>(record), 0.5) << "of a bare record";
  EXPECT_EQ(ThrownBy([] { Variant("7").As<int>(); }),
            "String cannot be converted to the primitive type!");
}

}  // namespace Data::tests
