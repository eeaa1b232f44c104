#include "Prelude.h"

#include "Records.h"

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
    EXPECT_EQ(properties->GetType(name.c_str(), nullptr), isConcrete ? type : ValueType::Unknown);
  }
  EXPECT_EQ(properties->GetCount(), 24u);
}

TEST(Properties, FailuresChangeNothing) {
  const auto properties = NewProperties();
  const Variant five(5), undefined = RecordOf("28");
  const auto add = [&](const char* name, ValueType type, const _VARIANT* defaultValue) {
    return Failure([&](auto e) { return properties->Register(name, type, true, defaultValue, e); });
  };
  const auto set = [&](const _VARIANT* value) {
    return Failure([&](auto e) { return properties->Set("width", value, e); });
  };
  const std::string mismatch = "Types of Value and Property don't match! Property ";
  EXPECT_EQ(add("width", ValueType::Int32, nullptr), "Property with name [width] already exists!");
  EXPECT_EQ(add(nullptr, ValueType::Int32, nullptr), kNullText);
  EXPECT_EQ(add("new", ValueType::Int64, &five),
            mismatch + "[new] is of type Int64, Value is of type Int32");
  EXPECT_EQ(add("new", ValueType::String, &undefined), kUndefinedRecord);
  EXPECT_EQ(properties->GetCount(), 4u);
  ASSERT_TRUE(properties->Set("width", &five, nullptr));
  for (const std::string type : {"Int64", "String", "Null"}) {
    const Variant value = RecordOf(type);
    EXPECT_EQ(set(&value), mismatch + "[width] is of type Int32, Value is of type " + type);
  }
  EXPECT_EQ(set(&undefined), kUndefinedRecord);
  EXPECT_EQ(set(nullptr), kNullRecord);
  EXPECT_EQ(TextOf(*properties, "width"), "5");
  EXPECT_EQ(add("Width", ValueType::Int32, nullptr), "") << "another case is another name";
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
}

TEST(Properties, ChecksWhatAValueRefersTo) {
  const auto check = [](const Variant& value, std::string_view error, const std::string& what) {
    const auto properties = New(Data_CreateProperties);
    EXPECT_EQ(Failure([&](auto e) {
                return properties->Register("default", value.Type(), true, &value, e);
              }),
              error)
        << what;
    EXPECT_TRUE(properties->Register("a", value.Type(), true, nullptr, nullptr)) << what;
    EXPECT_EQ(Failure([&](auto e) { return properties->Set("a", &value, e); }), error) << what;
    EXPECT_EQ(properties->HasValue("a", nullptr), error.empty()) << what;
  };
  for (const Case& c : Cases("Settings.txt", "property")) check(RecordOf(c[0]), c[1], c.where);

  const Ptr<IObject> encoding(New(Data_CreateEncodingInstanceBase64).Get());
  const std::string cannotCast =
      "Cannot cast to desired interface: Interface: struct Core::IObject Implementation: struct "
      "Data::Interfaces::";
  const std::string doesNot = "Object does not implement ";
  const std::pair<const char*, std::string> types[] = {
      {"IObject", ""},
      {"Array", cannotCast + "IArray"},
      {"ObjectList", cannotCast + "IObjectList"},
      {"StringList", cannotCast + "IObjectList"},
      {"String", doesNot + "Interfaces::IString interface!"},
      {"DateTime", doesNot + "Interfaces::IDateTime interface!"},
      {"JsonDocument", doesNot + "Interfaces::IJsonDocument interface!"},
      {"XmlDocument", doesNot + "Interfaces::IXmlDocument interface!"},
      {"ErrorCode", doesNot + "Core::IErrorCode interface!"},
      {"Int32", "Must be value type!"},
  };
  for (const auto& [type, error] : types) check(Reference(TypeNamed(type), encoding), error, type);
}

TEST(Properties, ReportsUnknownAndMissingNames) {
  const auto properties = NewProperties();
  auto& p = *properties;
  Variant value(5);
  const std::pair<const char*, const char*> cases[] = {
      {"height", kUnknownName}, {"", kUnknownName}, {"WIDTH", kUnknownName}, {nullptr, kNullText}};
  for (const auto& [name, error] : cases) {
    const std::function<bool(IErrorCode**)> operations[] = {
        [&, n = name](auto e) { return p.Set(n, &value, e); },
        [&, n = name](auto e) { return p.Get(n, &value, e); },
        [&, n = name](auto e) { return p.GetDefault(n, &value, e); },
        [&, n = name](auto e) { return p.HasValue(n, e); },
        [&, n = name](auto e) { return p.Reset(n, e); },
        [&, n = name](auto e) { return p.IsRequired(n, e); },
        [&, n = name](auto e) { return p.GetType(n, e) != ValueType::Unknown; },
    };
    for (const auto& operation : operations) EXPECT_EQ(Failure(operation), error);
    EXPECT_FALSE(p.Contains(name, nullptr));
  }
  EXPECT_EQ(Failure([&](auto e) { return p.Contains(nullptr, e); }), kNullText);
  Ptr<IErrorCode> error;
  EXPECT_FALSE(p.Contains("height", error.Receive()));
  EXPECT_FALSE(error) << "an answer, not a failure";
  EXPECT_EQ(value.As<int>(), 5);
  EXPECT_EQ(Failure([&](auto e) { return p.Get("width", nullptr, e); }), kNullRecord);
  EXPECT_EQ(Failure([&](auto e) { return p.GetDefault("width", nullptr, e); }), kNullRecord);
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
