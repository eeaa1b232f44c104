#include "Arrow.h"

#include <cmath>
#include <functional>

#include "Support.h"

using namespace c_tests;

namespace {

/// The type of a cell and its text; bytes in hexadecimal.
std::string Describe(const ld_variant& cell) {
  constexpr const char* kNames[] = {
      "Unknown", "Invalid", "Null",    "Int16",  "Int32",    "Int64",  "Int128", "UInt16",
      "UInt32",  "UInt64",  "UInt128", "Byte",   "SByte",    "Double", "Float",  "Bool",
      "Pointer", "IObject", "Array",   "String", "DateTime", "Json"};
  const ld_value_type type = ld_variant_type(&cell);
  if (type == LD_VALUE_TYPE_NULL) return "Null";
  if (type != LD_VALUE_TYPE_ARRAY) return std::string(kNames[type]) + " " + TextOf(cell);
  const auto object = Received<ld_object>(
      [&](ld_object** out, ld_error** error) { return ld_variant_to_object(&cell, out, error); });
  auto* const array = reinterpret_cast<ld_array*>(object.get());
  std::uint64_t size = 0;
  void* data = nullptr;
  EXPECT_TRUE(ld_array_get_size(array, &size, nullptr));
  EXPECT_TRUE(ld_array_get_data(array, &data, nullptr));
  std::string text = "Array ";
  for (std::uint64_t i = 0; i < size; ++i) {
    const auto byte = static_cast<const unsigned char*>(data)[i];
    text += "0123456789abcdef"[byte >> 4];
    text += "0123456789abcdef"[byte & 15];
  }
  return text;
}

/// The cells of a column, with " | " between them.
std::string Describe(ld_table* table, std::int32_t column) {
  std::string text;
  std::int64_t rows = 0;
  EXPECT_TRUE(ld_table_get_row_count(table, &rows, nullptr));
  ld_variant cell{};
  for (std::int64_t row = 0; row < rows; ++row) {
    EXPECT_TRUE(ld_table_get_cell(table, row, column, &cell, nullptr));
    text.append(row > 0 ? " | " : "").append(Describe(cell));
  }
  ld_variant_clear(&cell);
  return text;
}

bool Import(const Arrow& batch, ld_table** out, ld_error** error) {
  ArrowSchema schema = SchemaOf(batch);
  ArrowArray array = ArrayOf(batch);
  return ld_table_from_arrow_array(&schema, &array, nullptr, out, error);
}

Held<ld_table> Imported(const Arrow& batch) {
  return Received<ld_table>(
      [&](ld_table** out, ld_error** error) { return Import(batch, out, error); });
}

std::string ImportFailure(const Arrow& batch) {
  ld_table* table = nullptr;
  return Failure([&](ld_error** error) { return Import(batch, &table, error); });
}

/// The values 0, 1 and 3 of four: the third is null.
const std::string kThirdIsNull = Bytes<std::uint8_t>({0b1011});

/// Four integers or alike, of which the third is null.
template <class T>
Arrow Numbers(std::string format, T a, T b, T d) {
  return {std::move(format), 4, {kThirdIsNull, Bytes<T>({a, b, T(99), d})}};
}

Arrow Texts(std::string format) {
  const bool isLarge = format == "U" || format == "Z";
  return {std::move(format),
          4,
          {kThirdIsNull,
           isLarge ? Bytes<std::int64_t>({0, 1, 1, 3, 23}) : Bytes<std::int32_t>({0, 1, 1, 3, 23}),
           "a??longer than 16 bytes"}};
}

/// "short", a long text in the second buffer, null, and a long one in the first.
Arrow Views(std::string format) {
  std::string views = Bytes<std::int32_t>({5}) + std::string("short\0\0\0\0\0\0\0", 12) +
                      Bytes<std::int32_t>({14}) + "seco" + Bytes<std::int32_t>({1, 2}) +
                      std::string(16, '\xFF') + Bytes<std::int32_t>({13}) + "firs" +
                      Bytes<std::int32_t>({0, 0});
  return {std::move(format),
          4,
          {kThirdIsNull, std::move(views), "first is long", "..second is long",
           Bytes<std::int64_t>({13, 16})}};
}

Arrow Decimals(std::string format, std::initializer_list<std::int64_t> words) {
  Arrow arrow{std::move(format), 0, {kNoBuffer, Bytes<std::int64_t>(words)}};
  arrow.length = 1;
  return arrow;
}

Arrow List(std::string format, std::string offsets, Arrow items) {
  return {std::move(format), 2, {kNoBuffer, std::move(offsets)}, {std::move(items)}};
}

Arrow Integers(std::initializer_list<std::int32_t> values) {
  return {"i", static_cast<std::int64_t>(values.size()), {kNoBuffer, Bytes(values)}};
}

constexpr std::int64_t kDay = 86'400;

}  // namespace

TEST(Arrow, ReadsEveryFormat) {
  const Arrow pair{"+s",
                   2,
                   {Bytes<std::uint8_t>({0b10})},
                   {Integers({7, 8}).Named("a"), Arrow{"b", 2, {kNoBuffer, "\x01"}}.Named("b\"")}};
  const struct {
    const char* what;
    Arrow column;
    const char* cells;
  } cases[] = {
      {"nothing but nulls", {"n", 2}, "Null | Null"},
      {"bits", {"b", 4, {kThirdIsNull, "\x09"}}, "Bool true | Bool false | Null | Bool true"},
      {"no validity", {"b", 2, {kNoBuffer, "\x02"}}, "Bool false | Bool true"},
      {"int8", Numbers<std::int8_t>("c", 1, -128, 127), "SByte 1 | SByte -128 | Null | SByte 127"},
      {"uint8", Numbers<std::uint8_t>("C", 1, 128, 255), "Byte 1 | Byte 128 | Null | Byte 255"},
      {"int16", Numbers<std::int16_t>("s", 1, -2, 3), "Int16 1 | Int16 -2 | Null | Int16 3"},
      {"uint16", Numbers<std::uint16_t>("S", 1, 2, 65535),
       "UInt16 1 | UInt16 2 | Null | UInt16 65535"},
      {"int32", Numbers<std::int32_t>("i", 1, -2, 3), "Int32 1 | Int32 -2 | Null | Int32 3"},
      {"uint32", Numbers<std::uint32_t>("I", 1, 2, UINT32_MAX),
       "UInt32 1 | UInt32 2 | Null | UInt32 4294967295"},
      {"int64", Numbers<std::int64_t>("l", 1, INT64_MIN, 3),
       "Int64 1 | Int64 -9223372036854775808 | Null | Int64 3"},
      {"uint64", Numbers<std::uint64_t>("L", 1, 2, UINT64_MAX),
       "UInt64 1 | UInt64 2 | Null | UInt64 18446744073709551615"},
      {"float16", Numbers<std::uint16_t>("e", 0x3E00, 0x8400, 0x7C00),
       "Float 1.500000 | Float -0.000061 | Null | Float inf"},
      {"float16 below the normal range",
       {"e", 2, {kNoBuffer, Bytes<std::uint16_t>({0x0200, 0xFFFF})}},
       "Float 0.000031 | Float -nan"},
      {"float32", Numbers<float>("f", 1.5F, -2, 3),
       "Float 1.500000 | Float -2.000000 | Null | Float 3.000000"},
      {"float64", Numbers<double>("g", 1.5, -2, 3),
       "Double 1.500000 | Double -2.000000 | Null | Double 3.000000"},
      {"utf8", Texts("u"), "String a | String  | Null | String longer than 16 bytes"},
      {"large utf8", Texts("U"), "String a | String  | Null | String longer than 16 bytes"},
      {"utf8 view", Views("vu"),
       "String short | String second is long | Null | "
       "String first is long"},
      {"binary", Texts("z"),
       "Array 61 | Array  | Null | "
       "Array 6c6f6e676572207468616e203136206279746573"},
      {"large binary", Texts("Z").Sliced(0, 2), "Array 61 | Array "},
      {"binary view", Views("vz").Sliced(0, 1), "Array 73686f7274"},
      {"fixed-size binary", {"w:2", 2, {kNoBuffer, "abcd"}}, "Array 6162 | Array 6364"},
      {"fixed-size binary without bytes", {"w:0", 1, {kNoBuffer, kNoBuffer}}, "Array "},
      {"date32", Numbers<std::int32_t>("tdD", 0, 20041, -719162),
       "DateTime 1970-01-01T12:00:00.000000000Z | DateTime 2024-11-14T12:00:00.000000000Z | Null | "
       "DateTime 0001-01-01T12:00:00.000000000Z"},
      {"date64", Numbers<std::int64_t>("tdm", 0, 1000 * kDay, -1),
       "DateTime 1970-01-01T12:00:00.000000000Z | DateTime 1970-01-02T12:00:00.000000000Z | Null | "
       "DateTime 1969-12-31T23:59:59.999000000Z"},
      {"time32 in seconds", Numbers<std::int32_t>("tts", 0, 37230, 86400),
       "String 00:00:00 | String 10:20:30 | Null | String 24:00:00"},
      {"time32 in milliseconds",
       {"ttm", 1, {kNoBuffer, Bytes<std::int32_t>({37230005})}},
       "String 10:20:30.005"},
      {"time64 in microseconds",
       {"ttu", 1, {kNoBuffer, Bytes<std::int64_t>({37230000125})}},
       "String 10:20:30.000125"},
      {"time64 in nanoseconds",
       {"ttn", 1, {kNoBuffer, Bytes<std::int64_t>({37230000000001})}},
       "String 10:20:30.000000001"},
      {"timestamp in seconds, the first and the last",
       Numbers<std::int64_t>("tss:", -62135596800, 0, 910'692'730'084),
       "DateTime 0001-01-01T00:00:00.000000000Z | DateTime 1970-01-01T00:00:00.000000000Z | Null | "
       "DateTime 30828-09-14T02:48:04.000000000Z"},
      {"timestamp in milliseconds",
       {"tsm:Europe/Berlin", 1, {kNoBuffer, Bytes<std::int64_t>({-1})}},
       "DateTime 1969-12-31T23:59:59.999000000Z"},
      {"timestamp in microseconds",
       {"tsu:UTC", 1, {kNoBuffer, Bytes<std::int64_t>({1'002'000})}},
       "DateTime 1970-01-01T00:00:01.002000000Z"},
      {"timestamp in nanoseconds",
       {"tsn:", 1, {kNoBuffer, Bytes<std::int64_t>({1'002'000'099})}},
       "DateTime 1970-01-01T00:00:01.002000000Z"},
      {"duration",
       {"tDm", 2, {kNoBuffer, Bytes<std::int64_t>({-3500, INT64_MIN})}},
       "String PT-3.500S | String PT-9223372036854775.808S"},
      {"duration in seconds", {"tDs", 1, {kNoBuffer, Bytes<std::int64_t>({5})}}, "String PT5S"},
      {"interval of months",
       {"tiM", 2, {kNoBuffer, Bytes<std::int32_t>({14, 0})}},
       "String P14M | String PT0S"},
      {"interval of days and milliseconds",
       {"tiD", 1, {kNoBuffer, Bytes<std::int32_t>({-1, 5})}},
       "String P-1DT0.005S"},
      {"interval of months, days and nanoseconds",
       {"tin", 1, {kNoBuffer, Bytes<std::int32_t>({1, 2}) + Bytes<std::int64_t>({3})}},
       "String P1M2DT0.000000003S"},
      {"decimal128", Decimals("d:5,2", {-50, -1}), "String -0.50"},
      {"decimal128 without scale", Decimals("d:38,0", {0, 1}), "String 18446744073709551616"},
      {"decimal128 with a negative scale", Decimals("d:5,-3", {12, 0}), "String 12000"},
      {"decimal256", Decimals("d:76,10,256", {-1, -1, -1, INT64_MAX}),
       "String 5789604461865809771178549250434395392663499233282028201972879200395."
       "6564819967"},
      {"decimal256, the least", Decimals("d:76,0,256", {0, 0, 0, INT64_MIN}),
       "String -5789604461865809771178549250434395392663499233282028201972879200395656481996"
       "8"},
      {"decimal64", Decimals("d:18,1,64", {-15}), "String -1.5"},
      {"decimal32",
       {"d:9,2,32", 2, {kNoBuffer, Bytes<std::int32_t>({5, 0})}},
       "String 0.05 | String 0.00"},
      {"dictionary of texts",
       Arrow{"c", 4, {kThirdIsNull, Bytes<std::int8_t>({3, 0, 99, 2})}}.With(Texts("u")),
       "String longer than 16 bytes | String a | Null | Null"},
      {"dictionary with indexes of 16 bits",
       Arrow{"s", 2, {kNoBuffer, Bytes<std::int16_t>({1, 0})}}.With(Integers({4, 5})),
       "Int32 5 | Int32 4"},
      {"dictionary with unsigned indexes of 16 bits",
       Arrow{"S", 2, {kNoBuffer, Bytes<std::uint16_t>({0, 1})}}.With(Integers({4, 5})),
       "Int32 4 | Int32 5"},
      {"dictionary with wide indexes, both sliced",
       Arrow{"L", 2, {kNoBuffer, Bytes<std::uint64_t>({9, 0, 1})}, {}, 1}.With(
           Integers({1, 2, 3}).Sliced(1, 2)),
       "Int32 2 | Int32 3"},
      {"sliced", Numbers<std::int32_t>("i", 1, 2, 4).Sliced(1, 3), "Int32 2 | Null | Int32 4"},
      {"sliced bits", Arrow{"b", 2, {kThirdIsNull, "\x08"}, {}, 2}, "Null | Bool true"},
      {"sliced texts", Texts("u").Sliced(3, 1), "String longer than 16 bytes"},
      {"list", List("+l", Bytes<std::int32_t>({0, 2, 2}), Integers({1, 2})),
       "Json [1,2] | Json []"},
      {"large list of texts", List("+L", Bytes<std::int64_t>({0, 3, 4}), Texts("u")),
       "Json [\"a\",\"\",null] | Json [\"longer than 16 bytes\"]"},
      {"list view",
       {"+vl",
        2,
        {kNoBuffer, Bytes<std::int32_t>({1, 0}), Bytes<std::int32_t>({1, 2})},
        {Integers({1, 2})}},
       "Json [2] | Json [1,2]"},
      {"large list view",
       {"+vL",
        1,
        {kNoBuffer, Bytes<std::int64_t>({1}), Bytes<std::int64_t>({1})},
        {Integers({1, 2})}},
       "Json [2]"},
      {"fixed-size list",
       {"+w:2", 2, {kNoBuffer}, {Integers({1, 2, 3, 4})}},
       "Json [1,2] | Json [3,4]"},
      {"struct", pair, "Null | Json {\"a\":8,\"b\\\"\":false}"},
      {"list of structs", List("+l", Bytes<std::int32_t>({0, 1, 2}), pair),
       "Json [null] | Json [{\"a\":8,\"b\\\"\":false}]"},
      {"map", List("+m", Bytes<std::int32_t>({0, 0, 1}), pair), "Json [] | Json [null]"},
      {"list of what JSON has no type for",
       List("+l", Bytes<std::int32_t>({0, 3, 3}),
            {"g", 3, {kNoBuffer, Bytes<double>({0.1, -INFINITY, NAN})}}),
       "Json [0.1,\"-Infinity\",\"NaN\"] | Json []"},
      {"list of bytes", List("+l", Bytes<std::int32_t>({0, 1, 1}), Texts("z")),
       "Json [\"YQ==\"] | Json []"},
      {"list of dates",
       List("+l", Bytes<std::int32_t>({0, 1, 1}),
            {"tdD", 1, {kNoBuffer, Bytes<std::int32_t>({0})}}),
       "Json [\"1970-01-01T12:00:00.000000000Z\"] | Json []"},
  };
  for (const auto& c : cases) {
    const auto table = Imported(Batch({c.column}));
    EXPECT_EQ(Describe(table.get(), 0), c.cells) << c.what;
    EXPECT_EQ(unreleased, 0) << c.what;
  }
}

TEST(Arrow, ReadsSlicedAndNullRows) {
  Arrow batch = Batch({Integers({1, 2, 3, 4, 5}).Sliced(1, 4), Texts("u")});
  batch.buffers = {Bytes<std::uint8_t>({0b1010})};
  const auto table = Imported(std::move(batch).Sliced(1, 3));
  EXPECT_EQ(Describe(table.get(), 0), "Int32 3 | Null | Int32 5");
  EXPECT_EQ(Describe(table.get(), 1), "String  | Null | String longer than 16 bytes");
}

TEST(Arrow, NamesColumnsOnce) {
  const auto table = Imported(Batch({Integers({1}).Named("id"), Integers({2}).Named("id"),
                                     Integers({3}).Named("id_1"), Integers({4}).Named("")}));
  std::string names;
  for (std::int32_t i = 0; i < 4; ++i) {
    const auto column = Received<ld_column>([&](ld_column** out, ld_error** error) {
      return ld_table_get_column(table.get(), i, out, error);
    });
    const char* name = nullptr;
    EXPECT_TRUE(ld_column_get_name(column.get(), &name, nullptr));
    names += std::string(name) + ";";
  }
  EXPECT_EQ(names, "id;id_1;id_1_1;;");
}

TEST(Arrow, NotesTypesAndNulls) {
  const auto table = Imported(Batch({Numbers<std::int32_t>("i", 1, 2, 3), Arrow{"n", 4},
                                     Arrow{"g", 4, {kNoBuffer, std::string(32, '\0')}}}));
  const struct {
    ld_value_type type;
    std::uint8_t hasNull;
  } expected[] = {{LD_VALUE_TYPE_INT32, 1}, {LD_VALUE_TYPE_NULL, 1}, {LD_VALUE_TYPE_DOUBLE, 0}};
  for (std::int32_t i = 0; i < 3; ++i) {
    const auto column = Received<ld_column>([&](ld_column** out, ld_error** error) {
      return ld_table_get_column(table.get(), i, out, error);
    });
    ld_value_type type = 0;
    std::uint8_t hasNull = 0;
    EXPECT_TRUE(ld_column_get_type(column.get(), &type, nullptr));
    EXPECT_TRUE(ld_column_has_seen_null(column.get(), &hasNull, nullptr));
    EXPECT_EQ(type, expected[i].type) << i;
    EXPECT_EQ(hasNull, expected[i].hasNull) << i;
  }
}

TEST(Arrow, RefusesWhatIsBroken) {
  const auto wrong = [](Arrow arrow, auto change) {
    change(arrow);
    return arrow;
  };
  const Arrow number = Integers({1, 2}), text = Texts("u");
  const Arrow list = List("+l", Bytes<std::int32_t>({0, 1, 2}), Integers({1, 2}));
  const Arrow views = Views("vu");
  Arrow deep = Integers({1});
  for (int i = 0; i < 70; ++i) deep = Arrow{"+s", 1, {kNoBuffer}, {deep}};
  const struct {
    Arrow column;
    const char* failure;
  } cases[] = {
      {{"+ud:0,1", 1, {kNoBuffer}}, "the format cannot be read"},
      {{"+r", 1, {}, {Integers({1}), Integers({1})}}, "the format cannot be read"},
      {{"", 1, {kNoBuffer, "abcd"}}, "the format cannot be read"},
      {{"w:", 1, {kNoBuffer, "abcd"}}, "the format cannot be read"},
      {{"w:-1", 1, {kNoBuffer, "abcd"}}, "the format cannot be read"},
      {{"+w:x", 1, {kNoBuffer}}, "the format cannot be read"},
      {{"d:5", 1, {kNoBuffer, "abcd"}}, "the format cannot be read"},
      {{"d:5,2,17", 1, {kNoBuffer, "abcd"}}, "the format cannot be read"},
      {{"d:5,2000000000", 1, {kNoBuffer, "abcd"}}, "the format cannot be read"},
      {{"tsx:", 1, {kNoBuffer, "abcdefgh"}}, "the format cannot be read"},
      {deep, "the types are nested too deep"},
      {wrong(list, [](Arrow& a) { a.children.clear(); }),
       "the schema has a wrong number of children"},
      {wrong(number, [](Arrow& a) { a.children.push_back(a); }),
       "the schema has a wrong number of children"},
      {wrong(text, [](Arrow& a) { a.dictionary.push_back(a); }),
       "the indexes into a dictionary must be integers"},
      {wrong(number, [](Arrow& a) { a.length = -1; }), "the array has a wrong length"},
      {wrong(number, [](Arrow& a) { a.offset = -1; }), "the array has a wrong length"},
      {wrong(number, [](Arrow& a) { a.offset = INT64_MAX; }), "the array has a wrong length"},
      {wrong(number, [](Arrow& a) { a.offset = INT64_MAX / 4; }), "the array has a wrong length"},
      {wrong(number, [](Arrow& a) { a.nullCount = -2; }), "the array has a wrong number of nulls"},
      {wrong(number, [](Arrow& a) { a.nullCount = 3; }), "the array has a wrong number of nulls"},
      {wrong(number, [](Arrow& a) { a.nullCount = 1; }), "a buffer is missing"},
      {wrong(number, [](Arrow& a) { a.buffers[1] = kNoBuffer; }), "a buffer is missing"},
      {wrong(number, [](Arrow& a) { a.buffers.pop_back(); }),
       "the array has a wrong number of buffers"},
      {wrong(number, [](Arrow& a) { a.buffers.push_back(kNoBuffer); }),
       "the array has a wrong number of buffers"},
      {wrong(text, [](Arrow& a) { a.buffers[1] = kNoBuffer; }), "a buffer is missing"},
      {wrong(text, [](Arrow& a) { a.buffers[2] = kNoBuffer; }), "a buffer is missing"},
      {wrong(text,
             [](Arrow& a) {
               a.buffers[1] = Bytes<std::int32_t>({0, 1, 0, 3, 4});
             }),
       "the offsets do not ascend"},
      {wrong(text,
             [](Arrow& a) {
               a.buffers[1] = Bytes<std::int32_t>({-1, 1, 1, 3, 4});
             }),
       "the offsets do not ascend"},
      {wrong(views, [](Arrow& a) { a.buffers.resize(2); }),
       "the array has a wrong number of buffers"},
      {wrong(views, [](Arrow& a) { (*a.buffers[1])[3] = '\x80'; }), "a value is beyond its buffer"},
      {wrong(views, [](Arrow& a) { (*a.buffers[1])[16 + 8] = 2; }), "a value is beyond its buffer"},
      {wrong(views, [](Arrow& a) { (*a.buffers[1])[16 + 12] = 3; }),
       "a value is beyond its buffer"},
      {wrong(views, [](Arrow& a) { a.buffers[3] = kNoBuffer; }), "a value is beyond its buffer"},
      {wrong(views, [](Arrow& a) { a.buffers[4] = kNoBuffer; }), "a value is beyond its buffer"},
      {wrong(list,
             [](Arrow& a) {
               a.buffers[1] = Bytes<std::int32_t>({0, 2, 1});
             }),
       "the offsets do not ascend"},
      {wrong(list,
             [](Arrow& a) {
               a.buffers[1] = Bytes<std::int32_t>({0, 2, 3});
             }),
       "the array is too short"},
      {{"+vl", 2, {kNoBuffer, Bytes<std::int32_t>({0, 1}), Bytes<std::int32_t>({1, -1})}, {number}},
       "the offsets do not ascend"},
      {{"+vl", 2, {kNoBuffer, Bytes<std::int32_t>({0, 1}), kNoBuffer}, {number}},
       "a buffer is missing"},
      {{"+w:2", 2, {kNoBuffer}, {number}}, "the array is too short"},
      {{"+w:2147483647", INT64_MAX / 9, {kNoBuffer}, {number}}, "the array has a wrong length"},
      {{"+s", 2, {kNoBuffer}, {Integers({1})}}, "the array is too short"},
      {Arrow{"c", 2, {kNoBuffer, Bytes<std::int8_t>({0, 2})}}.With(number),
       "an index is beyond the dictionary"},
      {Arrow{"c", 2, {kNoBuffer, Bytes<std::int8_t>({0, -1})}}.With(number),
       "an index is beyond the dictionary"},
      {{"tts", 2, {kNoBuffer, Bytes<std::int32_t>({0, -1})}}, "the time -1 is longer than a day"},
      {{"tts", 2, {kNoBuffer, Bytes<std::int32_t>({0, 172800})}},
       "the time 172800 is longer than a day"},
      {{"tsu:", 2, {kNoBuffer, Bytes<std::int64_t>({0, INT64_MAX})}},
       "the time 9223372036854775807 is beyond what a date-time holds"},
      {{"tss:", 2, {kNoBuffer, Bytes<std::int64_t>({0, -62135596801})}},
       "the time -62135596801 is beyond what a date-time holds"},
  };
  for (const auto& c : cases) {
    const std::string failure = ImportFailure(Batch({c.column}));
    EXPECT_TRUE(failure.starts_with("Column \"x\" of Arrow format \"") &&
                failure.ends_with(std::string("\": ") + c.failure + "! 2"))
        << c.column.format << ": " << c.failure << ": " << failure;
    EXPECT_EQ(unreleased, 0) << c.failure;
  }
}

/// Structures whose parts do not fit together, as no honest producer makes them.
TEST(Arrow, RefusesInconsistentStructures) {
  const Arrow batch = Batch(
      {Integers({1, 2}), Arrow{"c", 2, {kNoBuffer, std::string(2, '\0')}}.With(Integers({1}))});
  using Change = std::function<void(ArrowSchema&, ArrowArray&)>;
  const auto releaseChild = [](auto& structure) {
    structure.children[0]->release(structure.children[0]);
  };
  const struct {
    const char* failure;
    Change change;
  } cases[] = {
      {"The Arrow schema has been released!", [](ArrowSchema& s, ArrowArray&) { s.release(&s); }},
      {"The Arrow array has been released!", [](ArrowSchema&, ArrowArray& a) { a.release(&a); }},
      {"The Arrow schema is not that of a table, a struct of columns!",
       [](ArrowSchema& s, ArrowArray&) { s.format = "+w:2", s.n_children = 1; }},
      {"the schema has been released", [](ArrowSchema& s, ArrowArray&) { s.format = nullptr; }},
      {"the schema has been released", [&](ArrowSchema& s, ArrowArray&) { releaseChild(s); }},
      {"the array has been released", [&](ArrowSchema&, ArrowArray& a) { releaseChild(a); }},
      {"the schema has no children", [](ArrowSchema& s, ArrowArray&) { s.children = nullptr; }},
      {"the schema has no children", [](ArrowSchema& s, ArrowArray&) { s.children[1] = nullptr; }},
      {"the schema has no children", [](ArrowSchema& s, ArrowArray&) { s.n_children = -1; }},
      {"the array has a wrong number of children",
       [](ArrowSchema&, ArrowArray& a) { a.n_children = 1; }},
      {"the array has a wrong number of children",
       [](ArrowSchema&, ArrowArray& a) { a.children = nullptr; }},
      {"the array has a wrong number of children",
       [](ArrowSchema&, ArrowArray& a) { a.children[1] = nullptr; }},
      {"a buffer is missing",
       [](ArrowSchema&, ArrowArray& a) { a.children[0]->buffers = nullptr; }},
      {"the array has a wrong number of buffers",
       [](ArrowSchema&, ArrowArray& a) { a.n_buffers = -1; }},
      {"the dictionary is missing",
       [](ArrowSchema&, ArrowArray& a) { a.children[1]->dictionary = nullptr; }},
      {"The Arrow data has more rows than a table can have!",
       [](ArrowSchema&, ArrowArray& a) {
         a.length = INT64_C(1) << 40;
         for (int i : {0, 1}) a.children[i]->length = a.length;
       }},
  };
  for (const auto& c : cases) {
    ArrowSchema schema = SchemaOf(batch);
    ArrowArray array = ArrayOf(batch);
    c.change(schema, array);
    ld_table* table = nullptr;
    const std::string failure = Failure([&](ld_error** error) {
      return ld_table_from_arrow_array(&schema, &array, nullptr, &table, error);
    });
    EXPECT_NE(failure.find(c.failure), failure.npos) << c.failure << ": " << failure;
    EXPECT_EQ(schema.release, nullptr) << c.failure;
    EXPECT_EQ(array.release, nullptr) << c.failure;
    EXPECT_EQ(unreleased, 0) << c.failure;
  }
}

// -- Writing --

namespace {

using Stream = ArrowArrayStream;

/// Releases a structure that a test has received.
template <class Structure>
struct Own : Structure {
  Own() : Structure{} {}
  Own(const Own&) = delete;
  Own& operator=(const Own&) = delete;
  ~Own() {
    if (this->release) this->release(this);
  }
};

void Export(ld_table* table, const ld_arrow_options* options, Stream* out) {
  ld_error* error = nullptr;
  EXPECT_TRUE(ld_table_to_arrow_stream(table, options, out, &error)) << ld_error_message(error);
  ld_release(error);
}

Held<ld_table> Imported(Stream& stream) {
  return Received<ld_table>([&](ld_table** out, ld_error** error) {
    return ld_table_from_arrow_stream(&stream, nullptr, out, error);
  });
}

/// The formats of a stream's columns.
std::string Formats(Stream& stream) {
  Own<ArrowSchema> schema;
  EXPECT_EQ(stream.get_schema(&stream, &schema), 0);
  std::string formats;
  for (std::int64_t i = 0; i < schema.n_children; ++i)
    formats.append(i > 0 ? " " : "").append(schema.children[i]->format);
  return formats;
}

ld_arrow_options Options() {
  ld_arrow_options options{};
  options.size = sizeof options;
  return options;
}

/// Pseudo-random numbers, the same on every system.
struct Random {
  std::uint64_t state = 1;
  std::uint64_t Below(std::uint64_t limit) {
    state = state * 6364136223846793005 + 1442695040888963407;
    return (state >> 33) % limit;
  }
};

ld_variant Plain(ld_value_type type, std::uint64_t word) {
  ld_variant value{};
  value.type = type;
  value.value[0] = word;
  return value;
}

ld_variant Text(const std::string& text) {
  ld_variant value{};
  EXPECT_TRUE(ld_variant_from_text(text.data(), text.size(), &value, nullptr));
  return value;
}

template <class Handle>
ld_variant OfObject(const Held<Handle>& object) {
  ld_variant value{};
  EXPECT_TRUE(ld_variant_from_object(object.get(), &value, nullptr));
  return value;
}

ld_variant Date(std::uint64_t ticks) {
  return OfObject(Received<ld_date_time>([&](ld_date_time** out, ld_error** error) {
    return ld_create_date_time_from_file_time(ticks, out, error);
  }));
}

ld_variant BytesOf(const std::string& bytes) {
  const auto array = Received<ld_array>(ld_create_array);
  EXPECT_TRUE(ld_array_set_data(array.get(), bytes.data(), 1, bytes.size(), nullptr));
  return OfObject(array);
}

ld_variant Json(const std::string& text) {
  const auto document = Received<ld_json_document>(ld_create_json_document);
  EXPECT_TRUE(ld_json_document_set_content(document.get(), text.data(), text.size(), nullptr));
  return OfObject(document);
}

ld_variant Real(double number) {
  ld_variant value{};
  EXPECT_TRUE(ld_variant_from_double(number, &value, nullptr));
  return value;
}

constexpr std::uint64_t kTicksPerDay = 864'000'000'000, kEpoch = 116'444'736'000'000'000;

/// A kind of column: its cells, and what becomes of them on the way.
struct Kind {
  const char* format;
  ld_variant (*make)(Random& random);
  /// Null: the cell stays as it is.
  std::string (*expected)(const ld_variant& cell) = nullptr;
};

const Kind kKinds[] = {
    {"b", [](Random& r) { return Plain(LD_VALUE_TYPE_BOOL, r.Below(2)); }},
    {"c",
     [](Random& r) {
       return Plain(LD_VALUE_TYPE_SBYTE, static_cast<std::uint64_t>(-1) - r.Below(128));
     }},
    {"C", [](Random& r) { return Plain(LD_VALUE_TYPE_BYTE, r.Below(256)); }},
    {"s",
     [](Random& r) {
       return Plain(LD_VALUE_TYPE_INT16, static_cast<std::uint64_t>(-1) - r.Below(32768));
     }},
    {"S", [](Random& r) { return Plain(LD_VALUE_TYPE_UINT16, r.Below(65536)); }},
    {"i", [](Random& r) { return Plain(LD_VALUE_TYPE_INT32, r.Below(INT32_MAX)); }},
    {"I", [](Random& r) { return Plain(LD_VALUE_TYPE_UINT32, r.Below(UINT32_MAX)); }},
    {"l", [](Random& r) { return Plain(LD_VALUE_TYPE_INT64, r.Below(INT32_MAX) << 33); }},
    {"L", [](Random& r) { return Plain(LD_VALUE_TYPE_UINT64, UINT64_MAX - r.Below(9)); }},
    {"f", [](Random& r) { return Plain(LD_VALUE_TYPE_FLOAT, 0x3F800000 + r.Below(99)); }},
    {"g", [](Random& r) { return Real(static_cast<double>(r.Below(99)) / 8); }},
    {"g", [](Random& r) { return r.Below(2) ? Plain(LD_VALUE_TYPE_INT64, r.Below(9)) : Real(0.5); },
     [](const ld_variant& cell) {
       double number = 0;
       EXPECT_TRUE(ld_variant_to_double(&cell, &number, nullptr));
       return "Double " + std::to_string(number);
     }},
    {"u",
     [](Random& r) {
       const auto size = static_cast<std::size_t>(r.Below(40));
       return Text(std::string(size, "ab"[r.Below(2)]) + (r.Below(2) ? "\xC3\xA9" : ""));
     }},
    {"u",
     [](Random& r) {
       const ld_uuid uuid{static_cast<std::uint32_t>(r.Below(UINT32_MAX)), 1, 2, {3}};
       ld_variant value{};
       EXPECT_TRUE(ld_variant_from_uuid(&uuid, &value, nullptr));
       return value;
     },
     [](const ld_variant& cell) { return "String " + TextOf(cell); }},
    {"u",
     [](Random& r) { return r.Below(2) ? Text("text") : Plain(LD_VALUE_TYPE_BYTE, r.Below(256)); },
     [](const ld_variant& cell) { return "String " + TextOf(cell); }},
    {"tdD",
     [](Random& r) { return Date(kEpoch - kTicksPerDay / 2 - kTicksPerDay * r.Below(99'999)); }},
    {"tsu:UTC", [](Random& r) { return Date(kEpoch - 10 * r.Below(INT32_MAX) - 20); }},
    {"tsn:UTC", [](Random& r) { return Date(kEpoch + 2 * r.Below(INT32_MAX) - 1); }},
    {"z", [](Random& r) { return BytesOf(std::string(r.Below(20), '\xFF')); }},
    {"U", [](Random& r) { return Json("[" + std::to_string(r.Below(9)) + "]"); },
     [](const ld_variant& cell) { return "String " + TextOf(cell); }},
    {"u", [](Random&) { return Plain(LD_VALUE_TYPE_NULL, 0); }},
};
constexpr std::size_t kKindCount = std::size(kKinds);

/// A table with a column of each kind, and what is expected of its cells.
struct Sample {
  Sample(std::int64_t rows, std::uint64_t seed) {
    Random random{seed};
    for (std::size_t i = 0; i < kKindCount; ++i)
      Received<ld_column>([&](ld_column** out, ld_error** error) {
        return ld_table_add_column(table.get(), std::to_string(i).c_str(), out, error);
      });
    for (std::int64_t row = 0; row < rows; ++row) AddRow(random, row);
  }

  void AddRow(Random& random, std::int64_t row) {
    std::vector<ld_variant> cells;
    for (std::size_t i = 0; i < kKindCount; ++i) {
      // The first row has no nulls, so that every column has its type.
      const bool isNull = row > 0 && random.Below(4) == 0;
      cells.push_back(isNull ? Plain(LD_VALUE_TYPE_NULL, 0) : kKinds[i].make(random));
      const bool isChanged = !isNull && kKinds[i].expected;
      expected[i]
          .append(row > 0 ? " | " : "")
          .append(isChanged ? kKinds[i].expected(cells[i]) : Describe(cells[i]));
    }
    Received<ld_row>([&](ld_row** out, ld_error** error) {
      return ld_table_add_row(table.get(), cells.data(), cells.size(), out, error);
    });
    for (ld_variant& cell : cells) ld_variant_clear(&cell);
  }

  Held<ld_table> table = Received<ld_table>(ld_create_table);
  std::string expected[kKindCount];
};

}  // namespace

TEST(Arrow, TablesComeBackFromStreams) {
  for (const std::int64_t rows : {0, 9, 64, 65, 200}) {
    const Sample sample(rows, static_cast<std::uint64_t>(rows));
    for (const unsigned batch : {0u, 1u, 7u, 8u, 64u, 1000u}) {
      ld_arrow_options options = Options();
      options.batch_rows = batch;
      Stream stream{};
      Export(sample.table.get(), &options, &stream);
      std::string formats;
      for (const Kind& kind : kKinds)
        formats.append(&kind == kKinds ? "" : " ").append(kind.format);
      if (rows > 8) {
        EXPECT_EQ(Formats(stream), formats);
      }
      const auto back = Imported(stream);
      for (std::size_t i = 0; i < kKindCount; ++i)
        EXPECT_EQ(Describe(back.get(), static_cast<std::int32_t>(i)), sample.expected[i])
            << rows << " rows, " << batch << " in a batch, column " << i;
    }
    Own<ArrowSchema> schema;
    Own<ArrowArray> array;
    ASSERT_TRUE(ld_table_to_arrow_array(sample.table.get(), nullptr, &schema, &array, nullptr));
    EXPECT_EQ(array.length, rows);
    const auto back = Received<ld_table>([&](ld_table** out, ld_error** error) {
      return ld_table_from_arrow_array(&schema, &array, nullptr, out, error);
    });
    for (std::size_t i = 0; i < kKindCount; ++i)
      EXPECT_EQ(Describe(back.get(), static_cast<std::int32_t>(i)), sample.expected[i]);
  }
}

TEST(Arrow, BatchesHaveTheWantedSize) {
  const Sample sample(200, 5);
  ld_arrow_options options = Options();
  options.batch_rows = 64;
  Own<Stream> stream;
  Export(sample.table.get(), &options, &stream);
  std::string lengths;
  for (bool more = true; more;) {
    Own<ArrowArray> batch;
    ASSERT_EQ(stream.get_next(&stream, &batch), 0);
    more = batch.release != nullptr;
    if (more) lengths += std::to_string(batch.length) + " ";
  }
  EXPECT_EQ(lengths, "64 64 64 8 ");
  EXPECT_EQ(stream.get_last_error(&stream), nullptr);
}

/// Each format for the cells of a CSV column, and what the cells are when they are read back.
TEST(Arrow, WritesTheFormatThatFitsOrIsRequested) {
  const struct {
    const char* cells;
    const char* requested;  ///< null: none
    const char* result;     ///< the format and the cells, or the failure
    bool lossy = false;
  } cases[] = {
      {"1\n-2", nullptr, "l: Int64 1 | Int64 -2"},
      {"1\n0.5\n\n3", nullptr, "g: Double 1.000000 | Double 0.500000 | Null | Double 3.000000"},
      {"0.5\n1", nullptr, "g: Double 0.500000 | Double 1.000000"},
      {"0.1\n9007199254740993", nullptr, "u: String 0.1 | String 9007199254740993"},
      {"9007199254740993\n0.1", nullptr, "u: String 9007199254740993 | String 0.1"},
      {"1\nx\n2024-11-14", nullptr,
       "u: String 1 | String x | String 2024-11-14T12:00:00.000000000Z"},
      {"2024-11-14\n1969-01-01", nullptr,
       "tdD: DateTime 2024-11-14T12:00:00.000000000Z | DateTime 1969-01-01T12:00:00.000000000Z"},
      {"2024-11-14\n1969-01-01T10:00:00Z", nullptr,
       "tsu:UTC: DateTime 2024-11-14T12:00:00.000000000Z | "
       "DateTime 1969-01-01T10:00:00.000000000Z"},
      {"1\n-2", "c", "c: SByte 1 | SByte -2"},
      {"1\n2", "C", "C: Byte 1 | Byte 2"},
      {"1\n2", "s", "s: Int16 1 | Int16 2"},
      {"1\n2", "S", "S: UInt16 1 | UInt16 2"},
      {"1\n2", "i", "i: Int32 1 | Int32 2"},
      {"1\n2", "I", "I: UInt32 1 | UInt32 2"},
      {"1\n2.0", "L", "L: UInt64 1 | UInt64 2"},
      {"1\n-2", "g", "g: Double 1.000000 | Double -2.000000"},
      {"1\n-2", "f", "f: Float 1.000000 | Float -2.000000"},
      {"1\n-2", "u", "u: String 1 | String -2"},
      {"1\n-2", "U", "U: String 1 | String -2"},
      {"ab\n\nc", "z", "z: Array 6162 | Null | Array 63"},
      {"ab\nc", "Z", "Z: Array 6162 | Array 63"},
      {"1969-12-31T23:59:59Z\n\n1970-01-01", "tss:",
       "tss:: DateTime 1969-12-31T23:59:59.000000000Z"
       " | Null | DateTime 1970-01-01T12:00:00.000000000Z"},
      {"1969-12-31T23:59:59Z", "tsm:X", "tsm:X: DateTime 1969-12-31T23:59:59.000000000Z"},
      {"1969-12-31", "tsn:", "tsn:: DateTime 1969-12-31T12:00:00.000000000Z"},
      {"1969-12-31T00:00:00Z", "tdD", "tdD: DateTime 1969-12-31T12:00:00.000000000Z"},
      {"1\n-129", "c", "row 1: -129 cannot be stored in the Arrow format \"c\" without loss!"},
      {"1\n256", "C", "row 1: 256 cannot be stored in the Arrow format \"C\" without loss!"},
      {"1\n-1", "L", "row 1: Int64 cannot be stored in the Arrow format \"L\" without loss!"},
      {"1\n0.5", "l", "row 1: Double cannot be stored as Int64 without loss!"},
      {"1\nx", "g", "row 1: String cannot be stored as Double without loss!"},
      {"1\n0.1", "f", "row 1: 0.100000 cannot be stored in the Arrow format \"f\" without loss!"},
      {"1\n0.1", "f", "f: Float 1.000000 | Float 0.100000", true},
      {"1\nx", "tdD", "row 0: Int64 cannot be stored in the Arrow format \"tdD\" without loss!"},
      {"1970-01-01T10:00:00Z", "tdD",
       "row 0: DateTime cannot be stored in the Arrow format \"tdD\" without loss!"},
      {"1970-01-01T10:00:00.5Z",
       "tss:", "row 0: DateTime cannot be stored in the Arrow format \"tss:\" without loss!"},
      {"1969-12-31T10:00:00.5Z", "tss:", "tss:: DateTime 1969-12-31T10:00:00.000000000Z", true},
      {"3000-01-01",
       "tsn:", "row 0: DateTime cannot be stored in the Arrow format \"tsn:\" without loss!"},
      {"caf\xE9", nullptr, "row 0: String cannot be stored as Text without loss!"},
      {"caf\xE9", nullptr, "u: String caf\xEF\xBF\xBD", true},
      {"1\n\nx", "b", "row 0: Int64 cannot be stored as Bool without loss!"},
      {"1", "e", "Column \"x\" of Arrow format \"e\": the format cannot be written!"},
      {"1", "tdm", "Column \"x\" of Arrow format \"tdm\": the format cannot be written!"},
      {"1", "d:5,2", "Column \"x\" of Arrow format \"d:5,2\": the format cannot be written!"},
  };
  for (const auto& c : cases) {
    const auto table =
        Table((std::string("x,end\n") +
               [&] {
                 std::string rows = c.cells;
                 for (std::size_t at = 0; (at = rows.find('\n', at)) != rows.npos; at += 3)
                   rows.replace(at, 1, ",e\n");
                 return rows;
               }() +
               ",e\n")
                  .c_str());
    ld_arrow_options options = Options();
    options.lossy = c.lossy;
    Own<ArrowSchema> requested;
    static_cast<ArrowSchema&>(requested) = SchemaOf(Batch({Arrow{c.requested ? c.requested : ""}}));
    if (c.requested) options.schema = &requested;
    Stream stream{};
    ld_error* error = nullptr;
    std::string result;
    if (ld_table_to_arrow_stream(table.get(), &options, &stream, &error)) {
      const std::string formats = Formats(stream);
      const auto back = Imported(stream);
      result = formats.substr(0, formats.rfind(' ')) + ": " + Describe(back.get(), 0);
    } else {
      result = ld_error_message(error);
      if (result.starts_with("Column x, ")) result.erase(0, 10);
    }
    ld_release(error);
    EXPECT_EQ(result, c.result) << c.cells;
  }
  EXPECT_EQ(unreleased, 0);
}

TEST(Arrow, EmptyColumnsHaveTheirDeclaredType) {
  const struct {
    ld_value_type type;
    const char* format;
  } kDeclared[] = {
      {LD_VALUE_TYPE_INT64, "l"}, {LD_VALUE_TYPE_DOUBLE, "g"}, {LD_VALUE_TYPE_BOOL, "b"},
      {LD_VALUE_TYPE_ARRAY, "z"}, {LD_VALUE_TYPE_INT16, "s"},  {LD_VALUE_TYPE_STRING, "u"},
  };
  const auto table = Received<ld_table>(ld_create_table);
  std::string formats;
  for (const auto& declared : kDeclared) {
    const auto column = Received<ld_column>([&](ld_column** out, ld_error** error) {
      return ld_table_add_column(table.get(), declared.format, out, error);
    });
    EXPECT_TRUE(ld_column_set_type(column.get(), declared.type, nullptr));
    formats.append(formats.empty() ? "" : " ").append(declared.format);
  }
  for (const std::int64_t rows : {0, 1}) {
    if (rows > 0)
      Received<ld_row>([&](ld_row** out, ld_error** error) {
        return ld_table_add_row(table.get(), nullptr, 0, out, error);
      });
    Stream stream{};
    Export(table.get(), nullptr, &stream);
    EXPECT_EQ(Formats(stream), formats);
    const auto back = Imported(stream);
    for (std::int32_t i = 0; i < 6; ++i) EXPECT_EQ(Describe(back.get(), i), rows > 0 ? "Null" : "");
  }
}

TEST(Arrow, RefusesDatesThatNoTimestampHolds) {
  // A fraction of a microsecond asks for nanoseconds, whose 64 bits end in 2262.
  ld_variant cells[] = {Date(kEpoch + 1), Date(kEpoch + 365'000 * kTicksPerDay)};
  const auto table = c_tests::Table("x\n1\n2\n");
  for (std::int64_t row : {0, 1}) {
    EXPECT_TRUE(ld_table_set_cell(table.get(), row, 0, &cells[row], nullptr));
    ld_variant_clear(&cells[row]);
  }
  Own<Stream> stream;
  EXPECT_EQ(Failure([&](ld_error** error) {
              return ld_table_to_arrow_stream(table.get(), nullptr, &stream, error);
            }),
            "Column x, row 1: DateTime cannot be stored in the Arrow format \"tsn:UTC\" without "
            "loss! 2");
}

TEST(Arrow, RefusesAWrongRequest) {
  const auto table = Table("x\n1\n");
  const auto failure = [&](const Arrow& schema) {
    Own<ArrowSchema> requested;
    static_cast<ArrowSchema&>(requested) = SchemaOf(schema);
    ld_arrow_options options = Options();
    options.schema = &requested;
    Stream stream{};
    return Failure([&](ld_error** error) {
      return ld_table_to_arrow_stream(table.get(), &options, &stream, error);
    });
  };
  EXPECT_EQ(failure(Batch({Arrow{"l"}.Named("y")})),
            "The Arrow schema names a column that the table does not have! 2");
  EXPECT_EQ(failure({"l"}), "The Arrow schema is not that of a table, a struct of columns! 2");
}

TEST(Arrow, PartsAreReleasedOnTheirOwn) {
  const Sample sample(10, 3);
  Own<ArrowArray> first, second, child;
  Own<ArrowSchema> schema, field;
  {
    ld_arrow_options options = Options();
    options.batch_rows = 5;
    Own<Stream> original, stream;
    Export(sample.table.get(), &options, &original);
    static_cast<Stream&>(stream) = original;  // moved
    original.release = nullptr;
    ASSERT_EQ(stream.get_next(&stream, &first), 0);
    ASSERT_EQ(stream.get_next(&stream, &second), 0);
    ASSERT_EQ(stream.get_schema(&stream, &schema), 0);
    const auto release = stream.release;
    release(&stream);
    EXPECT_EQ(stream.release, nullptr);
    release(&stream);
  }
  ASSERT_EQ(first.length, 5);
  static_cast<ArrowArray&>(child) = *first.children[7];
  first.children[7]->release = nullptr;
  static_cast<ArrowSchema&>(field) = *schema.children[7];
  schema.children[7]->release = nullptr;
  second.children[3]->release(second.children[3]);
  for (ArrowArray* array : {static_cast<ArrowArray*>(&first), static_cast<ArrowArray*>(&second)})
    array->release(array);
  schema.release(&schema);
  EXPECT_STREQ(field.format, "l");
  EXPECT_STREQ(field.name, "7");
  std::int64_t value = 0;
  std::memcpy(&value, child.buffers[1], sizeof value);
  EXPECT_EQ("Int64 " + std::to_string(value),
            sample.expected[7].substr(0, sample.expected[7].find(" |")));
}

TEST(Arrow, StreamsOutliveTheirTables) {
  auto table = Table("x\n1\n2\n");
  Stream stream{};
  Export(table.get(), nullptr, &stream);
  table.reset();
  EXPECT_EQ(Describe(Imported(stream).get(), 0), "Int64 1 | Int64 2");
}

// -- Streams that fail --

namespace {

/// A stream of batches that fails or ends after some.
struct Source {
  std::vector<Arrow> batches;
  int schemaCode = 0, nextCode = 0;
  const char* message = nullptr;
  std::size_t next = 0;
  int releases = 0;

  Stream Make() {
    Stream stream{};
    stream.private_data = this;
    stream.get_schema = [](Stream* self, ArrowSchema* out) {
      Source& source = Of(self);
      if (source.schemaCode == 0) *out = SchemaOf(source.batches[0]);
      return source.schemaCode;
    };
    stream.get_next = [](Stream* self, ArrowArray* out) {
      Source& source = Of(self);
      const bool isEnd = source.next == source.batches.size();
      *out = isEnd ? ArrowArray{} : ArrayOf(source.batches[source.next++]);
      return isEnd ? source.nextCode : 0;
    };
    stream.get_last_error = [](Stream* self) { return Of(self).message; };
    stream.release = [](Stream* self) {
      ++Of(self).releases;
      self->release = nullptr;
    };
    return stream;
  }
  static Source& Of(Stream* stream) { return *static_cast<Source*>(stream->private_data); }
};

}  // namespace

TEST(Arrow, TellsWhyAStreamFails) {
  const struct {
    const char* failure;
    Source source;
  } cases[] = {
      {"The Arrow stream failed: no disk 2", {{}, 5, 0, "no disk"}},
      {"The Arrow stream failed with code 5! 2", {{}, 5}},
      {"The Arrow stream failed with code 7! 2", {{Batch({Integers({1})})}, 0, 7}},
      {"Column \"x\" of Arrow format \"i\": the array has a wrong number of buffers! 2",
       {{Batch({Integers({1})}), Batch({Texts("u")})}}},
  };
  for (auto c : cases) {
    Stream stream = c.source.Make();
    ld_table* table = nullptr;
    EXPECT_EQ(Failure([&](ld_error** error) {
                return ld_table_from_arrow_stream(&stream, nullptr, &table, error);
              }),
              c.failure);
    EXPECT_EQ(stream.release, nullptr);
    EXPECT_EQ(c.source.releases, 1);
    EXPECT_EQ(unreleased, 0);
  }
  Stream released{};
  ld_table* table = nullptr;
  EXPECT_EQ(Failure([&](ld_error** error) {
              return ld_table_from_arrow_stream(&released, nullptr, &table, error);
            }),
            "The Arrow stream has been released! 2");
  Source source{{Batch({Integers({1})})}};
  Stream stream = source.Make();
  EXPECT_EQ(Failure([&](ld_error** error) {
              return ld_table_from_arrow_stream(&stream, nullptr, nullptr, error);
            }),
            "The address of the result must not be null! 2");
  EXPECT_EQ(source.releases, 1) << "also if the result cannot be given";
}

TEST(Arrow, ReadsTheBatchesOfAStream) {
  Source source{{Batch({Integers({1, 2})}), Batch({Integers({})}), Batch({Integers({3})})}};
  Stream stream = source.Make();
  EXPECT_EQ(Describe(Imported(stream).get(), 0), "Int32 1 | Int32 2 | Int32 3");
  EXPECT_EQ(source.releases, 1);
  EXPECT_EQ(unreleased, 0);
}

TEST(Arrow, CanBeCancelled) {
  struct Calls {
    int left = 0;
    std::vector<std::uint64_t> done, total;
    static bool Count(void* context, std::uint64_t done, std::uint64_t total) {
      auto& calls = *static_cast<Calls*>(context);
      calls.done.push_back(done);
      calls.total.push_back(total);
      return calls.left-- > 0;
    }
  };
  const Sample sample(1000, 9);
  int cancelledCount = 0;
  const auto call = [&](int left, auto&& function) {
    Calls calls{left, {}, {}};
    ld_arrow_options options = Options();
    options.progress = Calls::Count;
    options.progress_context = &calls;
    ld_error* error = nullptr;
    if (function(&options, &error)) {
      EXPECT_EQ(calls.done.back(), calls.total.back());
    } else {
      EXPECT_STREQ(ld_error_message(error), "The operation was cancelled!");
      ++cancelledCount;
    }
    ld_release(error);
  };
  const auto write = [&](const ld_arrow_options* options, ld_error** error) {
    Own<Stream> stream;
    return ld_table_to_arrow_stream(sample.table.get(), options, &stream, error);
  };
  const auto read = [&](const ld_arrow_options* options, ld_error** error) {
    Stream stream{};
    Export(sample.table.get(), nullptr, &stream);
    ld_table* table = nullptr;
    const bool isRead = ld_table_from_arrow_stream(&stream, options, &table, error);
    ld_release(table);
    return isRead;
  };
  for (int left = 0; left < 100; ++left) call(left, write);
  EXPECT_GT(std::exchange(cancelledCount, 0), 10);
  for (int left = 0; left < 10; ++left) call(left, read);
  EXPECT_EQ(cancelledCount, 5) << "at the beginning, after 256, 512 and 768 rows, at the end";
}

/// The progress function may call the library: also to change the table.
TEST(Arrow, TablesMayChangeBetweenSteps) {
  struct Change {
    ld_table* table;
    int callsLeft;
    static bool Apply(void* context, std::uint64_t, std::uint64_t) {
      auto& change = *static_cast<Change*>(context);
      return change.callsLeft-- != 0 || ld_table_clear_rows(change.table, nullptr);
    }
  };
  int failures = 0;
  for (int calls = 0; calls < 12; ++calls) {
    const Sample sample(200, 2);
    Change change{sample.table.get(), calls};
    ld_arrow_options options = Options();
    options.progress = Change::Apply;
    options.progress_context = &change;
    Own<Stream> stream;
    const auto failure = Failure([&](ld_error** error) {
      return ld_table_to_arrow_stream(sample.table.get(), &options, &stream, error);
    });
    if (failure == "did not fail") continue;
    EXPECT_EQ(failure, "The table has changed while it was read! 2") << calls;
    ++failures;
  }
  EXPECT_GT(failures, 4);
}
