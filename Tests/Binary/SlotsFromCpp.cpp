// Drives the library as C++ programs do that have none of its headers: exported
// functions by name, operations by their slot number, and exceptions of
// unguarded operations caught on this side.

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace {

struct Object {
  void** slots;
};

struct Variant {
  std::uint32_t type;
  std::uint64_t value[2];
};

enum : std::uint32_t {
  kNull = 2,
  kInt32 = 4,
  kInt64 = 5,
  kDouble = 13,
  kString = 19,
  kUndefined = 200
};

constexpr Variant Int32(std::uint64_t value) { return {kInt32, {value, 0}}; }

}  // namespace

extern "C" {
bool Data_CreateObjectList(Object**);
bool Data_CreateString(Object**);
bool Data_CreateConfiguration(Object**, Object**);
bool Data_CreateEnum(Object*, Object**, Object**);
bool Data_CreateConstrainedValue(const Variant*, const Variant*, const Variant*, Object**,
                                 Object**);
bool Data_CreateAllowedValue(const Variant*, std::uint32_t, const char*, const char*, const char*,
                             const char*, Object**, Object**);
bool Data_CreateTable(Object**, Object**);
bool Data_ParseCsv(const char*, std::uint64_t, Object**, Object**);
bool Data_ParseCsvWithErrors(const char*, Object**, Object**, std::uint64_t, std::int32_t,
                             Object**);
bool Data_ParseCsvWithSeparator(const char*, const char*, Object**, std::uint64_t, Object**);
bool Data_ConvertTableToCsv(Object*, const char*, Object**, bool, Object**);
std::uint32_t Data_DetectValueType(const char*, std::uint64_t);
bool Data_CreateJsonDocument(Object**);
bool Data_CreateXmlDocument(Object**);
bool Data_CreateHtmlDocument(Object**);
bool Data_CreateRtfDocument(Object**);
bool Data_JsonToTable(Object*, Object**, Object**);
bool Data_TableToJson(Object*, Object**, Object**);
bool Data_TableRowToJson(Object*, Object**, Object**);
bool Data_CreateSchema(const void*, const char*, const char*, Object**, Object**);
bool Data_ParseSchema(Object*, Object**, Object**);
}

namespace {

/// Calls the operation in a slot; the argument types must be exactly the
/// operation's.
template <class Result = void, class... Arguments>
Result Call(Object* object, int slot, Arguments... arguments) {
  return reinterpret_cast<Result (*)(Object*, Arguments...)>(object->slots[slot])(object,
                                                                                  arguments...);
}

/// Holds the last reference to an object and finds out if it was not the last.
class Owned {
 public:
  Owned() = default;
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  ~Owned() {
    if (object_) {
      EXPECT_EQ(Call<std::uint32_t>(object_, 1), 0u);
    }
  }
  Object** Out() { return &object_; }
  operator Object*() const { return object_; }

 private:
  Object* object_ = nullptr;
};

std::string TextOf(Object* string) {
  return string ? Call<const char*>(string, 11) : "(no string)";
}

std::string MessageOf(Object* error) { return error ? Call<const char*>(error, 6) : "(no error)"; }

template <class Operation>
std::string ThrownBy(Operation operation) {
  try {
    operation();
  } catch (const std::exception& exception) {
    return exception.what();
  }
  return "(nothing thrown)";
}

constexpr char kUndefinedMessage[] =
    "Variant type is undefined! Did you forget to zero out the VARIANT "
    "structure? It appears uninitialized!";

TEST(SlotsFromCpp, Configuration) {
  Owned settings;
  ASSERT_TRUE(Data_CreateConfiguration(settings.Out(), nullptr));
  const Variant seven = Int32(7), undefined{kUndefined, {}};
  Variant found{};
  Call(settings, 10, "width", &seven);
  EXPECT_TRUE(Call<bool>(settings, 6, "width"));
  EXPECT_EQ(Call<std::uint64_t>(settings, 8), 1u);
  EXPECT_STREQ(Call<const char*>(settings, 7, std::uint64_t{0}), "width");
  EXPECT_TRUE(Call<bool>(settings, 9, "width", &found));
  EXPECT_EQ(found.value[0], 7u);
  EXPECT_EQ(ThrownBy([&] { Call(settings, 10, "width", &undefined); }), kUndefinedMessage);
}

TEST(SlotsFromCpp, Enumeration) {
  Owned list, choice, options, error;
  ASSERT_TRUE(Data_CreateObjectList(list.Out()));
  for (const char* text : {"points", "lines"}) {
    Object* option = nullptr;
    Data_CreateString(&option);
    Call(option, 8, text, std::uint64_t{std::char_traits<char>::length(text)});
    Call(list, 7, option);
    Call<std::uint32_t>(option, 1);
  }
  ASSERT_TRUE(Data_CreateEnum(list, choice.Out(), nullptr));
  EXPECT_TRUE(Call<bool>(choice, 9, "lines", error.Out()));
  EXPECT_EQ(Call<std::uint32_t>(choice, 6), 1u);
  EXPECT_TRUE(Call<bool>(choice, 7, std::uint32_t{0}, error.Out()));
  EXPECT_STREQ(Call<const char*>(choice, 8), "points");
  EXPECT_EQ(Call<std::uint64_t>(choice, 10), 2u);
  EXPECT_TRUE(Call<bool>(choice, 11, options.Out(), error.Out()));
  EXPECT_EQ(Call<std::uint64_t>(options, 10), 2u);
  EXPECT_FALSE(Call<bool>(choice, 9, "areas", error.Out()));
  EXPECT_EQ(MessageOf(error), "Given string is not an available option.");
}

TEST(SlotsFromCpp, ConstrainedValue) {
  const Variant value = Int32(15), min = Int32(0), max = Int32(10), real{kDouble, {}};
  Variant low{}, high{}, now{};
  Owned constrained, error;
  ASSERT_TRUE(Data_CreateConstrainedValue(&value, &min, &max, constrained.Out(), nullptr));
  Call(constrained, 9, &now);
  EXPECT_EQ(now.value[0], 10u);
  EXPECT_TRUE(Call<bool>(constrained, 6, &value, &value, error.Out()));
  Call(constrained, 8, &low, &high);
  EXPECT_EQ(low.value[0] + high.value[0], 30u);
  EXPECT_TRUE(Call<bool>(constrained, 7, &min, error.Out()));
  Call(constrained, 9, &now);
  EXPECT_EQ(now.value[0], 15u);
  EXPECT_FALSE(Call<bool>(constrained, 7, &real, error.Out()));
  EXPECT_EQ(MessageOf(error), "Types of Value and Constraints don't match!");
}

TEST(SlotsFromCpp, AllowedValue) {
  const Variant seven = Int32(7);
  Variant now{};
  Owned allowed, text;
  ASSERT_TRUE(Data_CreateAllowedValue(&seven, 5, "name", "description", "category", "link",
                                      allowed.Out(), nullptr));
  const char* const texts[] = {"name", "description", "category", "link"};
  for (int i = 0; i < 4; ++i) EXPECT_STREQ(Call<const char*>(allowed, 6 + i), texts[i]);
  Call(allowed, 10, &now);
  EXPECT_EQ(now.value[0], 7u);
  EXPECT_EQ(Call<std::uint32_t>(allowed, 11), 5u);
  EXPECT_TRUE(Call<bool>(allowed, 12, text.Out(), static_cast<Object**>(nullptr)));
  EXPECT_EQ(TextOf(text), "7");
}

constexpr char kCsv[] = "name;height;born\nAda;1,5;1815-12-10\nBob;2;\n";

TEST(SlotsFromCpp, TableFromCsv) {
  Owned table;
  ASSERT_TRUE(Data_ParseCsv(kCsv, sizeof kCsv - 1, table.Out(), nullptr));
  EXPECT_EQ(Call<std::int64_t>(table, 11), 3);
  EXPECT_EQ(Call<std::int64_t>(table, 19), 2);
  EXPECT_TRUE(Call<bool>(table, 13, "born"));
  EXPECT_EQ(Call<std::uint64_t>(Call<Object*>(table, 38), 8), 3u);

  Object* column = Call<Object*>(table, 10, "height");
  EXPECT_STREQ(Call<const char*>(column, 6), "height");
  EXPECT_EQ(Call<std::int32_t>(column, 10), 1);
  EXPECT_STREQ(Call<const char*>(Call<Object*>(column, 15), 6), "born");
  EXPECT_STREQ(Call<const char*>(Call<Object*>(column, 16), 6), "name");
  EXPECT_TRUE(Call<bool>(column, 23, static_cast<Object*>(table)));

  Object* row = Call<Object*>(table, 17, std::int64_t{1});
  Variant cell{};
  EXPECT_EQ(Call<std::int32_t>(row, 16), 1);
  EXPECT_TRUE(Call<bool>(row, 8, std::int32_t{1}, &cell));
  EXPECT_EQ(cell.type, kInt64);
  EXPECT_EQ(Call<const Variant*>(row, 26, std::int32_t{2})->type, kNull);
  EXPECT_EQ(Call<Object*>(row, 21), Call<Object*>(table, 17, std::int64_t{0}));
  EXPECT_EQ(Call<Object*>(row, 20), nullptr);
  EXPECT_EQ(ThrownBy([&] { Call<Object*>(table, 17, std::int64_t{2}); }),
            "Row index out of range [2/2]!");
}

TEST(SlotsFromCpp, TableBuiltByHand) {
  Owned table, csv, error;
  ASSERT_TRUE(Data_CreateTable(table.Out(), nullptr));
  Object* column = Call<Object*>(table, 6, "a");
  Object* next = Call<Object*>(table, 7, "b", std::int32_t{1});
  EXPECT_EQ(Call<Object*>(column, 15), next);
  const Variant cells[] = {Int32(1), {kString, {'x', 0}}};
  const Variant three = Int32(3);
  Object* row = Call<Object*>(table, 15, cells, std::uint64_t{2});
  EXPECT_TRUE(Call<bool>(row, 12, "a", &three, error.Out()));
  EXPECT_EQ(Call<std::uint8_t>(row, 22), 1);
  Call(column, 7, "c");
  EXPECT_EQ(Call<std::uint32_t>(column, 17), kInt32);
  EXPECT_TRUE(Data_ConvertTableToCsv(table, ";", csv.Out(), true, nullptr));
  EXPECT_EQ(TextOf(csv), "c;b\n3;\"x\"");
  Call(table, 29);
  EXPECT_EQ(Call<std::int64_t>(table, 19), 0);
}

TEST(SlotsFromCpp, CsvInItsOtherModes) {
  // The number of columns is settled by the first 100 lines.
  std::string text = "a,b\n";
  for (int i = 0; i < 100; ++i) text += "x,y\n";
  text += "1,2,3\n";
  Owned lenient, errors, strict, error, separated;
  EXPECT_TRUE(
      Data_ParseCsvWithErrors(text.data(), lenient.Out(), errors.Out(), text.size(), 1, nullptr));
  EXPECT_EQ(Call<std::uint64_t>(errors, 10), 1u);
  EXPECT_EQ(Call<std::int64_t>(lenient, 19), 101);
  EXPECT_FALSE(Data_ParseCsv(text.data(), text.size(), strict.Out(), error.Out()));
  EXPECT_EQ(MessageOf(error),
            "Csv file does not have consistent usage of "
            "column separator between lines!, Columns 2 vs "
            "Values 3 at line 101");
  EXPECT_TRUE(Data_ParseCsvWithSeparator(text.data(), "|", separated.Out(), text.size(), nullptr));
  EXPECT_EQ(Call<std::int64_t>(separated, 11), 1);
  EXPECT_EQ(Data_DetectValueType("-1e5", 4), kDouble);
}

TEST(SlotsFromCpp, TablesAndJson) {
  Owned table, json, row, back, compact;
  ASSERT_TRUE(Data_ParseCsv(kCsv, sizeof kCsv - 1, table.Out(), nullptr));
  ASSERT_TRUE(Data_TableToJson(table, json.Out(), nullptr));
  EXPECT_TRUE(Call<bool>(json, 10));
  EXPECT_EQ(TextOf(Call<Object*>(json, 7)).substr(0, 24), R"([{"name":"Ada","height":)");
  EXPECT_TRUE(Data_TableRowToJson(Call<Object*>(table, 17, std::int64_t{1}), row.Out(), nullptr));
  EXPECT_TRUE(Call<bool>(row, 8, compact.Out(), static_cast<Object**>(nullptr)));
  EXPECT_EQ(TextOf(compact), R"({"name":"Bob","height":2,"born":null})");
  EXPECT_TRUE(Data_JsonToTable(json, back.Out(), nullptr));
  EXPECT_EQ(Call<std::int64_t>(back, 19), 2);
  EXPECT_FALSE(Call<bool>(json, 9, static_cast<Object*>(row)));
}

TEST(SlotsFromCpp, Documents) {
  const struct {
    bool (*create)(Object**);
    const char *valid, *invalid;
    int equals;
    bool equalsItself;
  } cases[] = {
      {Data_CreateJsonDocument, "[ 1 ]", "[ 1", 9, true},
      {Data_CreateXmlDocument, "<a/>", "<a>", 8, true},
      {Data_CreateHtmlDocument, "<!DOCTYPE html>", "<html>", 8, false},
      {Data_CreateRtfDocument, "{\\rtf1}", "{\\rtf}", 8, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.valid);
    Owned document;
    ASSERT_TRUE(c.create(document.Out()));
    EXPECT_EQ(Call<Object*>(document, 7), nullptr);
    Call(document, 6, c.invalid, std::uint64_t{std::char_traits<char>::length(c.invalid)});
    EXPECT_FALSE(Call<bool>(document, c.equals + 1));
    Call(document, 6, c.valid, std::uint64_t{std::char_traits<char>::length(c.valid)});
    EXPECT_TRUE(Call<bool>(document, c.equals + 1));
    EXPECT_EQ(TextOf(Call<Object*>(document, 7)), c.valid);
    EXPECT_EQ(Call<bool>(document, c.equals, static_cast<Object*>(document)), c.equalsItself);
  }
}

TEST(SlotsFromCpp, Schema) {
  const std::uint8_t uuid[16] = {1, 2, 3};
  std::uint8_t copied[16] = {};
  Owned schema, json, again, names, error;
  ASSERT_TRUE(Data_CreateSchema(uuid, "roads", "of the town", schema.Out(), nullptr));
  EXPECT_STREQ(Call<const char*>(schema, 11), "roads");
  EXPECT_TRUE(Call<bool>(schema, 53, "lanes", std::uint32_t{kInt32}, std::int32_t{2},
                         std::int32_t{0}, error.Out()));
  EXPECT_EQ(Call<std::uint64_t>(schema, 16), 1u);
  EXPECT_TRUE(Call<bool>(schema, 33, "lanes", std::int32_t{3}, error.Out()));
  EXPECT_EQ(Call<std::int32_t>(schema, 34, "lanes", error.Out()), 3);
  EXPECT_STREQ(Call<const char*>(schema, 44, "lanes", error.Out()), "Attribute Properties");
  EXPECT_STREQ(Call<const char*>(schema, 64), "lanes");
  EXPECT_TRUE(Call<bool>(schema, 15, names.Out(), error.Out()));
  EXPECT_TRUE(Call<bool>(schema, 61, copied, error.Out()));
  EXPECT_EQ(copied[2], 3);
  EXPECT_TRUE(Call<bool>(schema, 56, json.Out(), ' ', std::uint32_t{2}, error.Out()));
  EXPECT_TRUE(Data_ParseSchema(json, again.Out(), error.Out())) << MessageOf(error);
  EXPECT_EQ(Call<std::int32_t>(again, 34, "lanes", error.Out()), 3);
  EXPECT_EQ(Call<std::int32_t>(again, 34, "other", error.Out()), 0);
  EXPECT_EQ(MessageOf(error), "invalid unordered_map<K, T> key");
}

}  // namespace
