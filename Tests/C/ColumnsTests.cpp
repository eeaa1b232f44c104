// Columns as arrays, compared with the same cells read and written one at a time.

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <vector>

#include "Values.h"

using namespace c_tests;

namespace {

/// The arrays of a column, and what owns them.
struct Read {
  const ld_column_data* data = nullptr;
  Held<ld_object> owner;
};

bool Get(ld_table* table, std::int32_t column, std::int64_t first, std::int64_t count,
         ld_column_format format, bool isLossy, Read& read, ld_error** error) {
  const ld_column_options options{sizeof options, format, isLossy};
  ld_object* owner = nullptr;
  const bool isRead =
      ld_table_get_column_data(table, column, first, count, &options, &read.data, &owner, error);
  read.owner.reset(owner);
  return isRead;
}

ld_column_data Data(ld_column_format format, std::int64_t length, const void* values) {
  ld_column_data data{};
  data.size = sizeof data;
  data.format = format;
  data.length = length;
  data.values = values;
  return data;
}

bool IsValid(const ld_column_data& data, std::int64_t i) {
  return !data.validity || (data.validity[i / 8] >> i % 8 & 1) != 0;
}

std::string ValueAt(const ld_column_data& data, std::int64_t i) {
  if (!IsValid(data, i)) return "null";
  switch (data.format) {
    case LD_COLUMN_FORMAT_INT64:
    case LD_COLUMN_FORMAT_DATE_TIME:
      return std::to_string(static_cast<const std::int64_t*>(data.values)[i]);
    case LD_COLUMN_FORMAT_DOUBLE:
      return Shortest(static_cast<const double*>(data.values)[i]);
    case LD_COLUMN_FORMAT_BOOL:
      return static_cast<const std::uint8_t*>(data.values)[i] == 1 ? "true" : "false";
    default:
      return {data.bytes + data.offsets[i], data.bytes + data.offsets[i + 1]};
  }
}

constexpr const char* kFormats[] = {"automatic", "int64", "double", "bool",
                                    "date",      "text",  "binary"};

/// What reading a column gives: "int64: 1 null 3", or the failure.
std::string Reading(ld_table* table, ld_column_format format, bool isLossy = false) {
  Read read;
  ld_error* error = nullptr;
  if (!Get(table, 0, 0, -1, format, isLossy, read, &error)) {
    const Held<ld_error> held(error);
    return ld_error_message(error);
  }
  std::string text = std::string(kFormats[read.data->format]) + ":";
  std::int64_t nulls = 0;
  for (std::int64_t i = 0; i < read.data->length; ++i) {
    text += " " + ValueAt(*read.data, i);
    nulls += !IsValid(*read.data, i);
  }
  EXPECT_EQ(nulls, read.data->null_count) << text;
  return text;
}

TEST(Columns, HoldWhatTheyCanWithoutLoss) {
  const struct {
    const char* cells;
    ld_column_format format;
    const char* read;
    const char* lossy = nullptr;
  } cases[] = {
      {"1 null -9223372036854775808 9223372036854775807", LD_COLUMN_FORMAT_AUTOMATIC,
       "int64: 1 null -9223372036854775808 9223372036854775807"},
      {"5u 1w 7", LD_COLUMN_FORMAT_AUTOMATIC, "int64: 5 1 7"},
      {"5 18446744073709551615u", LD_COLUMN_FORMAT_AUTOMATIC, "text: 5 18446744073709551615"},
      {"-170141183460469231731687303715884105728w 0w 1000000000000000000000w",
       LD_COLUMN_FORMAT_AUTOMATIC,
       "text: -170141183460469231731687303715884105728 0 1000000000000000000000"},
      {"0.5 -0.0 nan inf null", LD_COLUMN_FORMAT_AUTOMATIC, "double: 0.5 -0 nan inf null"},
      {"0.5 9007199254740992 -9223372036854775808 9223372036854775808u 36893488147419103232w 1.5f",
       LD_COLUMN_FORMAT_AUTOMATIC,
       "double: 0.5 9007199254740992 -9223372036854775808 9223372036854775808 "
       "36893488147419103232 1.5"},
      {"0.1 9007199254740993 0.1f 1e300", LD_COLUMN_FORMAT_AUTOMATIC,
       "text: 0.1 9007199254740993 0.1 1e+300"},
      {"0.5 9223372036854775807", LD_COLUMN_FORMAT_DOUBLE,
       "Column c, row 1: Int64 cannot be stored as Double without loss!",
       "double: 0.5 9223372036854775808"},
      {"9007199254740993 -9007199254740993 -36893488147419103233w", LD_COLUMN_FORMAT_DOUBLE,
       "Column c, row 0: Int64 cannot be stored as Double without loss!",
       "double: 9007199254740992 -9007199254740992 -36893488147419103232"},
      {"147573952589676429313w 147573952589676428288w", LD_COLUMN_FORMAT_DOUBLE,
       "Column c, row 0: Int128 cannot be stored as Double without loss!",
       "double: 147573952589676445696 147573952589676412928"},
      {"5.0 -3.0f", LD_COLUMN_FORMAT_INT64, "int64: 5 -3"},
      {"5.5", LD_COLUMN_FORMAT_INT64,
       "Column c, row 0: Double cannot be stored as Int64 without loss!",
       "Column c, row 0: Double cannot be stored as Int64 without loss!"},
      {"-0.0", LD_COLUMN_FORMAT_INT64,
       "Column c, row 0: Double cannot be stored as Int64 without loss!"},
      {"9223372036854775808.0", LD_COLUMN_FORMAT_INT64,
       "Column c, row 0: Double cannot be stored as Int64 without loss!"},
      {"nan", LD_COLUMN_FORMAT_INT64,
       "Column c, row 0: Double cannot be stored as Int64 without loss!"},
      {"9223372036854775808u", LD_COLUMN_FORMAT_INT64,
       "Column c, row 0: UInt64 cannot be stored as Int64 without loss!"},
      {"true false null", LD_COLUMN_FORMAT_AUTOMATIC, "bool: true false null"},
      {"true 1", LD_COLUMN_FORMAT_AUTOMATIC, "text: true 1"},
      {"1", LD_COLUMN_FORMAT_BOOL, "Column c, row 0: Int64 cannot be stored as Bool without loss!"},
      {"true", LD_COLUMN_FORMAT_INT64,
       "Column c, row 0: Bool cannot be stored as Int64 without loss!"},
      {"'a' 'longer_than_sixteen_bytes' '' null 'é'", LD_COLUMN_FORMAT_AUTOMATIC,
       "text: a longer_than_sixteen_bytes  null é"},
      {"'a' 1 0.25 true", LD_COLUMN_FORMAT_AUTOMATIC, "text: a 1 0.25 true"},
      {"'a' 'longer_than_sixteen_bytes'", LD_COLUMN_FORMAT_BINARY,
       "binary: a longer_than_sixteen_bytes"},
      {"1", LD_COLUMN_FORMAT_BINARY,
       "Column c, row 0: Int64 cannot be stored as Binary without loss!"},
      {"'a\xff' 'longer_than_sixteen_bytes\xed\xa0\x80'", LD_COLUMN_FORMAT_AUTOMATIC,
       "Column c, row 0: String cannot be stored as Text without loss!",
       "text: a\uFFFD longer_than_sixteen_bytes\uFFFD\uFFFD\uFFFD"},
      {"'a\xff'", LD_COLUMN_FORMAT_BINARY, "binary: a\xff"},
      {"0@ -10@ 116444735999999990@ null", LD_COLUMN_FORMAT_AUTOMATIC,
       "date: -11644473600000000 -11644473600000001 -1 null"},
      {"116444736000000001@", LD_COLUMN_FORMAT_AUTOMATIC, "text: 1970-01-01T00:00:00.000000000Z"},
      {"116444736000000019@ 116444735999999999@ -1@", LD_COLUMN_FORMAT_DATE_TIME,
       "Column c, row 0: DateTime cannot be stored as DateTime without loss!",
       "date: 1 -1 -11644473600000001"},
      {"1", LD_COLUMN_FORMAT_DATE_TIME,
       "Column c, row 0: Int64 cannot be stored as DateTime without loss!"},
      {"null null", LD_COLUMN_FORMAT_AUTOMATIC, "text: null null"},
      {"null null", LD_COLUMN_FORMAT_BOOL, "bool: null null"},
      {"", LD_COLUMN_FORMAT_AUTOMATIC, "text:"},
  };
  for (const auto& c : cases) {
    const auto table = OneColumn(c.cells);
    EXPECT_EQ(Reading(table.get(), c.format), c.read) << c.cells;
    if (c.lossy) {
      EXPECT_EQ(Reading(table.get(), c.format, true), c.lossy) << c.cells;
    }
  }
}

TEST(Columns, OfNullsFollowTheDeclaredType) {
  const auto table = OneColumn("0.5");
  ld_variant null{LD_VALUE_TYPE_NULL, {}};
  ASSERT_TRUE(ld_table_set_cell(table.get(), 0, 0, &null, nullptr));
  EXPECT_EQ(Reading(table.get(), LD_COLUMN_FORMAT_AUTOMATIC), "double: null");
}

TEST(Columns, HoldObjectsAsTextOrBytes) {
  const auto table = OneColumn("null null");
  const auto bytes = Received<ld_array>(ld_create_array);
  ASSERT_TRUE(ld_array_set_data(bytes.get(), "\0\1\2", 1, 3, nullptr));
  ld_variant value{};
  ASSERT_TRUE(ld_variant_from_object(bytes.get(), &value, nullptr));
  ASSERT_TRUE(ld_table_set_cell(table.get(), 0, 0, &value, nullptr));
  EXPECT_EQ(Reading(table.get(), LD_COLUMN_FORMAT_AUTOMATIC),
            "binary: " + std::string("\0\1\2", 3) + " null");
  const auto document = Received<ld_json_document>(ld_create_json_document);
  ASSERT_TRUE(ld_json_document_set_content(document.get(), "[1]", 3, nullptr));
  ASSERT_TRUE(ld_variant_from_object(document.get(), &value, nullptr));
  ASSERT_TRUE(ld_table_set_cell(table.get(), 0, 0, &value, nullptr));
  ld_variant_clear(&value);
  EXPECT_EQ(Reading(table.get(), LD_COLUMN_FORMAT_AUTOMATIC), "text: [1] null");
}

// -- Random columns --

/// A column of a random kind: of one type, or mixed; with or without Nulls.
std::string RandomCells(std::mt19937& random, std::size_t count) {
  static const std::vector<std::vector<const char*>> kinds = {
      {"1", "-5", "9223372036854775807", "9007199254740993"},
      {"0.5", "nan", "-0.0", "1e300", "3.0"},
      {"true", "false"},
      {"'a'", "''", "'sixteen_bytes_16'", "'seventeen_bytes17'", "'é'"},
      {"0@", "116444736000000000@", "133801032301230000@"},
      {"1", "0.5", "9007199254740992", "7u"},
      {"1", "0.5", "9007199254740993", "true", "'a'", "0@", "18446744073709551615u"},
      {"null"},
  };
  const auto& kind = kinds[random() % kinds.size()];
  const unsigned nullsIn8 = random() % 4 == 0 ? 0 : random() % 8;
  std::string cells;
  for (std::size_t i = 0; i < count; ++i)
    cells += std::string(random() % 8 < nullsIn8 ? "null" : kind[random() % kind.size()]) + " ";
  return cells;
}

TEST(Columns, EqualTheCellsOneByOne) {
  std::mt19937 random(20);
  for (const int count : {0, 1, 7, 8, 9, 63, 64, 65, 255, 256, 257, 600}) {
    for (int repeat = 0; repeat < 12; ++repeat) {
      const std::string cells = RandomCells(random, static_cast<std::size_t>(count));
      const auto table = OneColumn(cells);
      const auto upTo = [&](std::int64_t most) {
        return static_cast<std::int64_t>(random()) % (most + 1);
      };
      const std::int64_t first = upTo(count), size = upTo(count - first);
      Read read;
      ASSERT_TRUE(
          Get(table.get(), 0, first, size, LD_COLUMN_FORMAT_AUTOMATIC, false, read, nullptr));
      ASSERT_EQ(read.data->length, size);
      std::int64_t nulls = 0;
      for (std::int64_t i = 0; i < size; ++i) {
        Value cell;
        ASSERT_TRUE(ld_table_get_cell(table.get(), first + i, 0, cell.out(), nullptr));
        ASSERT_EQ(ValueAt(*read.data, i), cell.Model(read.data->format)) << cells << i;
        nulls += cell.Model(read.data->format) == "null";
      }
      ASSERT_EQ(read.data->null_count, nulls);
      ASSERT_EQ(read.data->validity == nullptr, nulls == 0);
    }
  }
}

/// The types, flags and cells of a table.
std::string Everything(ld_table* table) {
  std::ostringstream text;
  std::int64_t columns = 0, rows = 0;
  EXPECT_TRUE(ld_table_get_column_count(table, &columns, nullptr));
  EXPECT_TRUE(ld_table_get_row_count(table, &rows, nullptr));
  for (std::int32_t i = 0; i < columns; ++i) {
    const auto column = Received<ld_column>([&](ld_column** out, ld_error** error) {
      return ld_table_get_column(table, i, out, error);
    });
    const char* name = nullptr;
    ld_value_type type{};
    std::uint8_t hasSeenNull = 0;
    EXPECT_TRUE(ld_column_get_name(column.get(), &name, nullptr));
    EXPECT_TRUE(ld_column_get_type(column.get(), &type, nullptr));
    EXPECT_TRUE(ld_column_has_seen_null(column.get(), &hasSeenNull, nullptr));
    text << name << " " << type << " " << int{hasSeenNull} << "\n";
  }
  for (std::int64_t i = 0; i < rows; ++i) {
    const auto row = Received<ld_row>(
        [&](ld_row** out, ld_error** error) { return ld_table_get_row(table, i, out, error); });
    std::uint8_t isModified = 0;
    EXPECT_TRUE(ld_row_is_modified(row.get(), &isModified, nullptr));
    text << int{isModified};
    for (std::int32_t j = 0; j < columns; ++j) {
      Value cell;
      EXPECT_TRUE(ld_table_get_cell(table, i, j, cell.out(), nullptr));
      text << " " << ld_variant_type(cell.get()) << ":" << TextOf(*cell.get());
    }
    text << "\n";
  }
  return text.str();
}

TEST(Columns, AreWrittenAsTheCellsOneByOne) {
  std::mt19937 random(21);
  for (const std::size_t count : {1u, 7u, 8u, 9u, 64u, 300u}) {
    for (int repeat = 0; repeat < 10; ++repeat) {
      const std::string cells = RandomCells(random, count);
      const auto source = OneColumn(cells);
      Read read;
      ASSERT_TRUE(Get(source.get(), 0, 0, -1, LD_COLUMN_FORMAT_AUTOMATIC, false, read, nullptr));
      // What one cell at a time makes of the same values.
      const std::string before = RandomCells(random, count + 5);
      const auto bulk = OneColumn(before), single = OneColumn(before);
      const auto added = Received<ld_column>([&](ld_column** out, ld_error** error) {
        return ld_table_add_column(single.get(), "added", out, error);
      });
      ld_column_data part = *read.data;
      std::int64_t first = static_cast<std::int64_t>(random() % 6);
      ASSERT_TRUE(ld_table_set_column_data(bulk.get(), 0, first, &part, nullptr));
      for (std::int64_t i = 0; i < part.length; ++i) {
        const Value value = FromArray(part, i);
        ASSERT_TRUE(ld_table_set_cell(single.get(), first + i, 0, value.get(), nullptr));
      }
      const std::string rest = RandomCells(random, count + 5);
      Read whole;
      ASSERT_TRUE(
          Get(OneColumn(rest).get(), 0, 0, -1, LD_COLUMN_FORMAT_AUTOMATIC, false, whole, nullptr));
      ASSERT_TRUE(ld_table_add_column_data(bulk.get(), "added", whole.data, nullptr));
      for (std::int64_t i = 0; i < whole.data->length; ++i) {
        const Value value = FromArray(*whole.data, i);
        ASSERT_TRUE(ld_table_set_cell(single.get(), i, 1, value.get(), nullptr));
      }
      ASSERT_EQ(Everything(bulk.get()), Everything(single.get())) << cells << "\n" << before;
    }
  }
}

TEST(Columns, MakeATableLikeRowsAdded) {
  std::mt19937 random(22);
  for (const std::size_t count : {0u, 1u, 9u, 255u, 256u, 257u, 513u}) {
    Read reads[5];
    std::vector<std::string> names;
    std::vector<const char*> nameTexts;
    std::vector<const ld_column_data*> columns;
    for (Read& read : reads) {
      const auto source = OneColumn(RandomCells(random, count));
      ASSERT_TRUE(Get(source.get(), 0, 0, -1, LD_COLUMN_FORMAT_AUTOMATIC, false, read, nullptr));
      names.push_back("column" + std::to_string(names.size()));
      columns.push_back(read.data);
    }
    for (const auto& name : names) nameTexts.push_back(name.c_str());
    const auto bulk = Received<ld_table>([&](ld_table** out, ld_error** error) {
      return ld_create_table_from_columns(nameTexts.data(), columns.data(), columns.size(), out,
                                          error);
    });
    const auto single = Received<ld_table>(ld_create_table);
    for (const auto& name : names)
      Received<ld_column>([&](ld_column** out, ld_error** error) {
        return ld_table_add_column(single.get(), name.c_str(), out, error);
      });
    for (std::size_t i = 0; i < count; ++i) {
      ld_variant cells[5]{};
      for (std::size_t j = 0; j < 5; ++j)
        cells[j] = FromArray(*columns[j], static_cast<std::int64_t>(i)).Take();
      Received<ld_row>([&](ld_row** out, ld_error** error) {
        return ld_table_add_row(single.get(), cells, 5, out, error);
      });
      for (auto& cell : cells) ld_variant_clear(&cell);
    }
    ASSERT_EQ(Everything(bulk.get()), Everything(single.get()));
  }
}

TEST(Columns, KeepAnIndexWhoseValuesStayUnique) {
  const auto table = OneColumn("1 2 3 null");
  const auto column = Received<ld_column>([&](ld_column** out, ld_error** error) {
    return ld_table_get_column(table.get(), 0, out, error);
  });
  ASSERT_TRUE(ld_table_build_index(table.get(), 1, column.get(), nullptr));
  const auto indexOf = [&](const char* key) {
    const auto row = Received<ld_row>([&](ld_row** out, ld_error** error) {
      return ld_table_find_row(table.get(), Value(key).get(), out, error);
    });
    std::int32_t index = -1;
    if (row) {
      EXPECT_TRUE(ld_row_get_index(row.get(), &index, nullptr));
    }
    return index;
  };
  const std::int64_t turned[] = {2, 1}, repeated[] = {3};
  ld_column_data data = Data(LD_COLUMN_FORMAT_INT64, 2, turned);
  ASSERT_TRUE(ld_table_set_column_data(table.get(), 0, 0, &data, nullptr));
  EXPECT_EQ(indexOf("1"), 1);
  EXPECT_EQ(indexOf("2"), 0);
  EXPECT_EQ(indexOf("7"), -1);
  data.length = 1;
  data.values = repeated;
  ASSERT_TRUE(ld_table_set_column_data(table.get(), 0, 0, &data, nullptr));
  EXPECT_EQ(Failure([&](ld_error** error) {
              ld_row* row = nullptr;
              return ld_table_find_row(table.get(), Value("3").get(), &row, error);
            }),
            "Table  does not have an index! 2");
}

TEST(Columns, RefuseWrongArraysAndChangeNothing) {
  const std::int64_t numbers[] = {1, 2, 3};
  const std::int64_t offsets[] = {0, 1, 1, 3};
  const std::int64_t far[] = {0, 1, INT64_MAX, 3}, back[] = {0, 2, 1, 3}, low[] = {-1, 1, 1, 3};
  const std::int64_t inside[] = {0, 1, 2, 2};
  const std::int64_t dates[] = {0, -62135596800000000, -62135596800000001};
  const std::int64_t late[] = {0, 0, 910'692'730'085'477'581};
  const struct {
    ld_column_format format;
    std::int64_t length;
    const void* values;
    const std::int64_t* offsets;
    const char* bytes;
    std::uint64_t byteCount;
    const char* failure;
  } cases[] = {
      {LD_COLUMN_FORMAT_AUTOMATIC, 3, numbers, nullptr, nullptr, 0,
       "Invalid value 4294967295 of ld_column_format! 2"},
      {7, 3, numbers, nullptr, nullptr, 0, "Invalid value 7 of ld_column_format! 2"},
      {LD_COLUMN_FORMAT_INT64, -1, numbers, nullptr, nullptr, 0,
       "Column c: the length is wrong! 2"},
      {LD_COLUMN_FORMAT_INT64, INT64_MAX, numbers, nullptr, nullptr, 0,
       "Column c: the length is wrong! 2"},
      {LD_COLUMN_FORMAT_DOUBLE, 3, nullptr, nullptr, nullptr, 0,
       "Column c: the values are missing! 2"},
      {LD_COLUMN_FORMAT_TEXT, 3, nullptr, nullptr, "abc", 3, "Column c: the values are missing! 2"},
      {LD_COLUMN_FORMAT_TEXT, 3, nullptr, offsets, nullptr, 3,
       "Column c: the values are missing! 2"},
      {LD_COLUMN_FORMAT_TEXT, 3, nullptr, offsets, nullptr, 0,
       "Column c, row 0: the offsets are wrong! 2"},
      {LD_COLUMN_FORMAT_TEXT, 3, nullptr, offsets, "abc", 2,
       "Column c, row 2: the offsets are wrong! 2"},
      {LD_COLUMN_FORMAT_BINARY, 3, nullptr, far, "abc", 3,
       "Column c, row 1: the offsets are wrong! 2"},
      {LD_COLUMN_FORMAT_TEXT, 3, nullptr, back, "abc", 3,
       "Column c, row 1: the offsets are wrong! 2"},
      {LD_COLUMN_FORMAT_TEXT, 3, nullptr, low, "abc", 3,
       "Column c, row 0: the offsets are wrong! 2"},
      {LD_COLUMN_FORMAT_TEXT, 3, nullptr, inside, "a\xC3\xA9", 3,
       "Column c, row 1: the text is not UTF-8! 2"},
      {LD_COLUMN_FORMAT_DATE_TIME, 3, dates, nullptr, nullptr, 0,
       "Column c, row 2: the date is out of range! 2"},
      {LD_COLUMN_FORMAT_DATE_TIME, 3, late, nullptr, nullptr, 0,
       "Column c, row 2: the date is out of range! 2"},
  };
  const auto table = OneColumn("1 2 3");
  const std::string before = Everything(table.get());
  const char* const names[] = {"c", "c"};
  for (const auto& c : cases) {
    ld_column_data data = Data(c.format, c.length, c.values);
    data.offsets = c.offsets;
    data.bytes = c.bytes;
    data.byte_count = c.byteCount;
    const ld_column_data* const columns[] = {&data};
    ld_table* made = nullptr;
    EXPECT_EQ(Failure([&](ld_error** error) {
                return ld_create_table_from_columns(names, columns, 1, &made, error);
              }),
              c.failure);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(Failure([&](ld_error** error) {
                return ld_table_set_column_data(table.get(), 0, 0, &data, error);
              }),
              c.failure);
    EXPECT_EQ(Everything(table.get()), before) << c.failure;
  }

  const auto three = Data(LD_COLUMN_FORMAT_INT64, 3, numbers);
  const auto two = Data(LD_COLUMN_FORMAT_INT64, 2, numbers);
  auto wrong = three;
  wrong.size = 4;
  const auto add = [&](const char* name, const ld_column_data* data) {
    return Failure(
        [&](ld_error** e) { return ld_table_add_column_data(table.get(), name, data, e); });
  };
  EXPECT_EQ(add("d", &two), "Column d has 2 cells instead of 3! 2");
  EXPECT_EQ(add("c", &three), "Column with name [c] already exists! 2");
  EXPECT_EQ(add("d", &wrong), "The size of the options is wrong! 2");
  const auto set = [&](std::int32_t column, std::int64_t first) {
    return Failure([&](ld_error** error) {
      return ld_table_set_column_data(table.get(), column, first, &two, error);
    });
  };
  EXPECT_EQ(set(1, 0), "Column index out of range [1/1]! 2");
  EXPECT_EQ(set(0, 2), "Row index out of range [3/3]! 2");
  EXPECT_EQ(set(0, 4), "Row index out of range [4/3]! 2");
  EXPECT_EQ(set(0, INT64_MIN), "Row index out of range [-9223372036854775808/3]! 2");
  const auto create = [&](const ld_column_data* second, const char* name) {
    const char* const both[] = {"c", name};
    const ld_column_data* const columns[] = {&three, second};
    return Failure([&](ld_error** error) {
      ld_table* made = nullptr;
      return ld_create_table_from_columns(both, columns, 2, &made, error);
    });
  };
  EXPECT_EQ(create(&two, "d"), "Column d has 2 cells instead of 3! 2");
  EXPECT_EQ(create(&three, "c"), "Column with name [c] already exists! 2");
  EXPECT_EQ(create(nullptr, "d"), "Pointer of struct ld_column_data must not be null! 2");
  EXPECT_EQ(create(&three, nullptr), "Pointer of char must not be null! 2");
  EXPECT_EQ(Everything(table.get()), before);

  Read read;
  const auto get = [&](std::int32_t column, std::int64_t first, std::int64_t count,
                       ld_column_format format) {
    return Failure([&](ld_error** e) {
      return Get(table.get(), column, first, count, format, false, read, e);
    });
  };
  EXPECT_EQ(get(-1, 0, 0, LD_COLUMN_FORMAT_TEXT), "Column index out of range [-1/1]! 2");
  EXPECT_EQ(get(0, -1, -1, LD_COLUMN_FORMAT_TEXT), "Row index out of range [-1/3]! 2");
  EXPECT_EQ(get(0, 1, 3, LD_COLUMN_FORMAT_TEXT), "Row index out of range [3/3]! 2");
  EXPECT_EQ(get(0, 1, -2, LD_COLUMN_FORMAT_TEXT), "Row index out of range [3/3]! 2");
  EXPECT_EQ(get(0, 0, -1, 7), "Invalid value 7 of ld_column_format! 2");
}

}  // namespace

TEST(Columns, HoldValuesThatOnlyCallersMake) {
  const auto table = Received<ld_table>(ld_create_table);
  const auto column = Received<ld_column>([&](ld_column** out, ld_error** error) {
    return ld_table_add_column(table.get(), "c", out, error);
  });
  for (const ld_variant& value :
       {ld_variant{LD_VALUE_TYPE_UINT128, {5, 0}}, ld_variant{LD_VALUE_TYPE_UINT128, {0, 1}}}) {
    ld_row* row = nullptr;
    ASSERT_TRUE(ld_table_add_row(table.get(), &value, 1, &row, nullptr));
    ld_release(row);
  }
  EXPECT_EQ(Reading(table.get(), LD_COLUMN_FORMAT_AUTOMATIC), "text: 5 18446744073709551616");
}
