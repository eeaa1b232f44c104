#include "Prelude.h"

namespace Data::tests {

namespace {

constexpr const char* kUnknownName = "invalid unordered_map<K, T> key";

/// A bag with the properties that the tests are about.
Ptr<IProperties> NewProperties() {
  const auto properties = New(Data_CreateProperties);
  const Variant colour("red"), none(Null);
  EXPECT_TRUE(properties->Register("width", ValueType::Int32, true, nullptr, nullptr));
  EXPECT_TRUE(properties->Register("colour", ValueType::String, true, &colour, nullptr));
  EXPECT_TRUE(properties->Register("scale", ValueType::Double, false, &none, nullptr));
  EXPECT_TRUE(properties->Register("bytes", ValueType::Array, true, nullptr, nullptr));
  return properties;
}

std::string Missing(IProperties& properties) {
  Ptr<IObjectList> names;
  EXPECT_TRUE(properties.GetMissing(names.Receive(), nullptr));
  return Core::ToText(Variant::StringList(names));
}

std::string TextOf(IProperties& properties, const char* name) {
  Variant value;
  EXPECT_TRUE(properties.Get(name, &value, nullptr)) << name;
  return value.IsNull() ? "Null" : value.As<std::string>();
}

}  // namespace

TEST(Properties, RegistersConcreteTypesAlone) {
  const auto properties = New(Data_CreateProperties);
  for (std::uint32_t code = 0; code < 30; ++code) {
    const auto type = static_cast<ValueType>(code);
    const std::string name = std::to_string(code);
    const std::string unsupported =
        "Unsupported variantValueType (" + name +
        ")! Use valid value from Structures::ValueType which is not null, unknown, invalid or "
        "reserved!";
    const bool isConcrete = code >= 3 && code <= 26;
    EXPECT_EQ(Failure([&](auto e) {
                return properties->Register(name.c_str(), type, false, nullptr, e);
              }),
              isConcrete ? "" : unsupported);
    EXPECT_EQ(properties->Contains(name.c_str(), nullptr), isConcrete);
    if (isConcrete) {
      EXPECT_EQ(properties->GetType(name.c_str(), nullptr), type);
    }
  }
  EXPECT_EQ(properties->GetCount(), 24u);
}

TEST(Properties, RejectsRegistrationsThatContradict) {
  const auto properties = NewProperties();
  const Variant text("text"), number(1);
  const _VARIANT undefined{28, {0, 0}};
  const struct {
    const char* what;
    const char* name;
    ValueType type;
    const _VARIANT* defaultValue;
    const char* error;
  } cases[] = {
      {"twice", "width", ValueType::Int32, nullptr, "Property with name [width] already exists!"},
      {"no name", nullptr, ValueType::Int32, nullptr, kNullText},
      {"default of another type", "new", ValueType::Int64, &number,
       "Types of Value and Property don't match! Property [new] is of type Int64, Value is of type "
       "Int32"},
      {"undefined default", "new", ValueType::String, &undefined, kUndefinedRecord},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Failure([&](auto e) {
                return properties->Register(c.name, c.type, true, c.defaultValue, e);
              }),
              c.error)
        << c.what;
  }
  EXPECT_EQ(properties->GetCount(), 4u);
  EXPECT_EQ(Failure([&](auto e) {
              return properties->Register("Width", ValueType::String, true, &text, e);
            }),
            "")
      << "another case is another name";
}

TEST(Properties, ReadAsValueThenDefaultThenNull) {
  const auto properties = NewProperties();
  const auto array = New(Data_CreateArray);
  const Variant seven(7), bytes(array), blue("a blue of more than 16 bytes");
  EXPECT_EQ(TextOf(*properties, "width"), "Null");
  EXPECT_EQ(TextOf(*properties, "colour"), "red");
  EXPECT_EQ(Missing(*properties), "[ \"width\" \"bytes\" ");
  EXPECT_FALSE(properties->HasValue("width", nullptr));
  EXPECT_TRUE(properties->HasValue("colour", nullptr)) << "its default";
  EXPECT_FALSE(properties->HasValue("scale", nullptr)) << "a Null default is none";

  EXPECT_TRUE(properties->Set("width", &seven, nullptr));
  EXPECT_TRUE(properties->Set("bytes", &bytes, nullptr));
  EXPECT_TRUE(properties->Set("colour", &blue, nullptr)) << "long and short texts are one type";
  EXPECT_EQ(ReferencesTo(array), 3u);
  EXPECT_EQ(TextOf(*properties, "width"), "7");
  EXPECT_EQ(TextOf(*properties, "colour"), "a blue of more than 16 bytes");
  EXPECT_EQ(Missing(*properties), "[ ");
  Variant value;
  EXPECT_TRUE(properties->GetDefault("colour", &value, nullptr));
  EXPECT_EQ(value.As<std::string>(), "red");
  EXPECT_TRUE(properties->GetDefault("width", &value, nullptr));
  EXPECT_TRUE(value.IsNull());

  for (const char* name : {"bytes", "colour"}) EXPECT_TRUE(properties->Reset(name, nullptr));
  EXPECT_EQ(ReferencesTo(array), 2u);
  EXPECT_EQ(TextOf(*properties, "colour"), "red");
  EXPECT_EQ(Missing(*properties), "[ \"bytes\" ");
  const Variant nullArray = NullReference(ValueType::Array);
  EXPECT_TRUE(properties->Set("bytes", &nullArray, nullptr));
  EXPECT_EQ(Missing(*properties), "[ ") << "a null reference is a value";
}

TEST(Properties, ChecksTheTypeOfAValue) {
  const auto properties = NewProperties();
  const Variant five(5), wide(std::int64_t{5}), text("5"), null(Null);
  const _VARIANT undefined{200, {0, 0}};
  ASSERT_TRUE(properties->Set("width", &five, nullptr));
  const struct {
    const _VARIANT* value;
    const char* error;
  } cases[] = {
      {&wide,
       "Types of Value and Property don't match! Property [width] is of type Int32, Value is of "
       "type Int64"},
      {&text,
       "Types of Value and Property don't match! Property [width] is of type Int32, Value is of "
       "type String"},
      {&null,
       "Types of Value and Property don't match! Property [width] is of type Int32, Value is of "
       "type Null"},
      {&undefined, kUndefinedRecord},
      {nullptr, kNullRecord},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Failure([&](auto e) { return properties->Set("width", c.value, e); }), c.error);
    EXPECT_EQ(TextOf(*properties, "width"), "5");
  }
}

TEST(Properties, ChecksWhatAValueRefersTo) {
  const Ptr<IObject> text(Core::MakeString("text").Get()), list(New(Data_CreateObjectList).Get());
  const char* const mustBeReference =
      "Must be reference type! Must implement Core::IObject interface!";
  const auto typed = [](const char* name) {
    return "Object does not implement "s + name + " interface!";
  };
  const auto untyped = [](const char* name) {
    return "Cannot cast to desired interface: Interface: struct Core::IObject Implementation: "
           "struct Data::Interfaces::"s +
           name;
  };
  const struct {
    Variant value;
    std::string error;
  } cases[] = {
      {Reference(ValueType::IObject, text), ""},
      {Reference(ValueType::Array, text), untyped("IArray")},
      {Reference(ValueType::String, list), typed("Interfaces::IString")},
      {Reference(ValueType::DateTime, text), typed("Interfaces::IDateTime")},
      {Reference(ValueType::JsonDocument, text), typed("Interfaces::IJsonDocument")},
      {Reference(ValueType::XmlDocument, text), typed("Interfaces::IXmlDocument")},
      {Reference(ValueType::ErrorCode, text), typed("Core::IErrorCode")},
      {Reference(ValueType::ObjectList, text), untyped("IObjectList")},
      {Reference(ValueType::StringList, text), untyped("IObjectList")},
      {Reference(ValueType::Int32, text), "Must be value type!"},
      {Reference(ValueType::Pointer, text), "Must be pointer type!"},
      {Address(ValueType::Pointer, 5), ""},
      {Address(ValueType::Uuid, 5), "Must be value type!"},
      {ByValue(ValueType::Array, 1), mustBeReference},
      {ByValue(ValueType::IObject, 0), mustBeReference},
  };
  for (const auto& c : cases) {
    const auto properties = New(Data_CreateProperties);
    const std::string name(Core::GetValueTypeName(c.value.Type()));
    EXPECT_EQ(Failure([&](auto e) {
                return properties->Register("default", c.value.Type(), true, &c.value, e);
              }),
              c.error)
        << name;
    EXPECT_TRUE(properties->Register("a", c.value.Type(), true, nullptr, nullptr));
    EXPECT_EQ(Failure([&](auto e) { return properties->Set("a", &c.value, e); }), c.error) << name;
    EXPECT_EQ(properties->HasValue("a", nullptr), c.error.empty()) << name;
  }
}

TEST(Properties, ReportsUnknownAndMissingNames) {
  const auto properties = NewProperties();
  auto& p = *properties;
  Variant value(5);
  const struct {
    const char* name;
    const char* error;
  } cases[] = {
      {"height", kUnknownName}, {"", kUnknownName}, {"WIDTH", kUnknownName}, {nullptr, kNullText}};
  for (const auto& c : cases) {
    const char* name = c.name;
    EXPECT_EQ(Failure([&](auto e) { return p.Set(name, &value, e); }), c.error);
    EXPECT_EQ(Failure([&](auto e) { return p.Get(name, &value, e); }), c.error);
    EXPECT_EQ(Failure([&](auto e) { return p.HasValue(name, e); }), c.error);
    EXPECT_EQ(Failure([&](auto e) { return p.Reset(name, e); }), c.error);
    EXPECT_EQ(Failure([&](auto e) { return p.IsRequired(name, e); }), c.error);
    EXPECT_EQ(Failure([&](auto e) { return p.GetDefault(name, &value, e); }), c.error);
    EXPECT_EQ(Failure([&](auto e) { return p.GetType(name, e); }), c.error);
    EXPECT_EQ(p.GetType(name, nullptr), ValueType::Unknown);
    EXPECT_FALSE(p.Contains(name, nullptr));
  }
  EXPECT_EQ(Failure([&](auto e) { return p.Contains(nullptr, e); }), kNullText);
  Ptr<IErrorCode> error;
  EXPECT_FALSE(p.Contains("height", error.Receive()));
  EXPECT_FALSE(error) << "an answer, not a failure";
  EXPECT_EQ(value.As<int>(), 5);
  EXPECT_EQ(Failure([&](auto e) { return p.Get("width", nullptr, e); }), kNullRecord);
  EXPECT_EQ(Failure([&](auto e) { return p.GetDefault("width", nullptr, e); }), kNullRecord);
  EXPECT_EQ(Failure([&](auto e) { return p.GetMissing(nullptr, e); }),
            "Pointer to a pointer of struct Data::Interfaces::IObjectList must not be null! "
            "Address of return must be specified!");
}

TEST(Properties, EnumeratesInOrderOfRegistration) {
  const auto properties = NewProperties();
  const char* names[] = {"width", "colour", "scale", "bytes"};
  const bool required[] = {true, true, false, true};
  ASSERT_EQ(properties->GetCount(), 4u);
  const char* first = properties->GetNameAt(0);
  for (std::uint64_t i = 0; i < 4; ++i) {
    EXPECT_STREQ(properties->GetNameAt(i), names[i]);
    EXPECT_EQ(properties->IsRequired(names[i], nullptr), required[i]);
  }
  for (int i = 0; i < 10'000; ++i)
    EXPECT_TRUE(
        properties->Register(std::to_string(i).c_str(), ValueType::Bool, false, nullptr, nullptr));
  EXPECT_EQ(properties->GetNameAt(0), first) << "valid while the object lives";
  EXPECT_STREQ(properties->GetNameAt(10'003), "9999");
  EXPECT_EQ(properties->GetNameAt(10'004), nullptr);
}

}  // namespace Data::tests
