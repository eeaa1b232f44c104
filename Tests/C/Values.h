#pragma once

#include <charconv>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Support.h"

/// Values written as text, for the tests of columns and rows.
namespace c_tests {

/// The fewest digits that read back as the same double.
inline std::string Shortest(double value) {
  char digits[32];
  return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

/// A value, and its object if it has one.
///
/// 5 is an Int64, 5u a UInt64, 5w an Int128, 0.5 a Double (also nan, inf, 1e9), 0.5f a Float, 'a'
/// a String, 5@ a DateTime of so many ticks since 1601; true, false and null are themselves.
class Value {
 public:
  Value() = default;
  explicit Value(std::string_view text) { Parse(std::string(text)); }
  Value(Value&& other) noexcept : value_(other.Take()) {}
  Value& operator=(Value&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Value() { ld_variant_clear(&value_); }

  const ld_variant* get() const { return &value_; }
  ld_variant* out() { return &value_; }
  ld_variant Take() { return std::exchange(value_, ld_variant{}); }

  /// The value as it is written in tests.
  /// @param exact  its text, with all digits of a number
  std::string Literal(const std::string& exact) const {
    switch (ld_variant_type(&value_)) {
      case LD_VALUE_TYPE_NULL:
        return "null";
      case LD_VALUE_TYPE_STRING:
        return "'" + exact + "'";
      case LD_VALUE_TYPE_DATE_TIME:
        return std::to_string(static_cast<std::int64_t>(Ticks())) + "@";
      case LD_VALUE_TYPE_UINT64:
        return exact + "u";
      case LD_VALUE_TYPE_INT128:
        return exact + "w";
      case LD_VALUE_TYPE_FLOAT:
        return exact + "f";
      case LD_VALUE_TYPE_DOUBLE:
        return exact.find_first_of(".ein") == std::string::npos ? exact + ".0" : exact;
      default:
        return exact;
    }
  }

  /// The value as an array of the format must hold it.
  std::string Model(ld_column_format format) const {
    double real = 0;
    std::memcpy(&real, value_.value, sizeof real);
    switch (ld_variant_type(&value_)) {
      case LD_VALUE_TYPE_UNKNOWN:
      case LD_VALUE_TYPE_NULL:
        return "null";
      case LD_VALUE_TYPE_DOUBLE:
        return Shortest(real);
      case LD_VALUE_TYPE_DATE_TIME:
        return format == LD_COLUMN_FORMAT_TEXT ? TextOf(value_) : Microseconds();
      default:
        return TextOf(value_);
    }
  }

 private:
  void Parse(const std::string& text) {
    const auto number = [&](auto value) {
      std::from_chars(text.data(), text.data() + text.size(), value);
      return value;
    };
    if (text == "null") {
      value_.type = LD_VALUE_TYPE_NULL;
    } else if (text == "true" || text == "false") {
      EXPECT_TRUE(ld_variant_from_bool(text == "true", &value_, nullptr));
    } else if (text[0] == '\'') {
      EXPECT_TRUE(ld_variant_from_text(text.data() + 1, text.size() - 2, &value_, nullptr));
    } else if (text.back() == '@') {
      const auto ticks = static_cast<std::uint64_t>(number(std::int64_t{}));
      const auto date = Received<ld_date_time>([&](ld_date_time** out, ld_error** error) {
        return ld_create_date_time_from_posix_time(0, out, error) &&
               ld_date_time_add_ticks(*out, static_cast<std::int64_t>(ticks - TicksOf(*out)),
                                      error);
      });
      EXPECT_TRUE(ld_variant_from_object(date.get(), &value_, nullptr));
    } else if (text.back() == 'u') {
      value_ = {LD_VALUE_TYPE_UINT64, {number(std::uint64_t{}), 0}};
    } else if (text.back() == 'w') {
      value_ = Wide(text);
    } else if (text.find_first_of(".ean") == std::string::npos) {
      EXPECT_TRUE(ld_variant_from_int64(number(std::int64_t{}), &value_, nullptr));
    } else if (text.back() == 'f' && !text.ends_with("inf")) {
      const float real = number(float{});
      value_.type = LD_VALUE_TYPE_FLOAT;
      std::memcpy(value_.value, &real, sizeof real);
    } else {
      EXPECT_TRUE(ld_variant_from_double(number(double{}), &value_, nullptr));
    }
  }

  std::uint64_t Ticks() const {
    ld_object* object = nullptr;
    EXPECT_TRUE(ld_variant_to_object(&value_, &object, nullptr));
    const Held<ld_object> held(object);
    return TicksOf(reinterpret_cast<ld_date_time*>(object));
  }
  static std::uint64_t TicksOf(ld_date_time* date) {
    std::uint64_t ticks = 0;
    EXPECT_TRUE(ld_date_time_get_file_time(date, &ticks, nullptr));
    return ticks;
  }

  std::string Microseconds() const {
    const auto ticks = static_cast<std::int64_t>(Ticks());
    EXPECT_EQ(ticks % 10, 0);
    return std::to_string((ticks - 116444736000000000) / 10);
  }

  static ld_variant Wide(const std::string& digits) {
    std::uint64_t low = 0, high = 0;
    for (const char digit : digits) {
      if (digit < '0' || digit > '9') continue;
      // Ten times the number, in halves of 32 bits.
      std::uint64_t carry = static_cast<std::uint64_t>(digit - '0');
      std::uint64_t parts[] = {low & UINT32_MAX, low >> 32, high & UINT32_MAX, high >> 32};
      for (std::uint64_t& part : parts) {
        part = part * 10 + carry;
        carry = part >> 32;
        part &= UINT32_MAX;
      }
      low = parts[0] | parts[1] << 32;
      high = parts[2] | parts[3] << 32;
    }
    if (digits[0] == '-') {
      high = ~high + (low == 0);
      low = 0 - low;
    }
    return {LD_VALUE_TYPE_INT128, {low, high}};
  }

  ld_variant value_{};
};

/// The value at a position of arrays.
inline Value FromArray(const ld_column_data& data, std::int64_t i) {
  Value value;
  const auto at = static_cast<std::size_t>(i);
  if (data.validity && (data.validity[at / 8] >> at % 8 & 1) == 0) return Value("null");
  bool isMade = true;
  switch (data.format) {
    case LD_COLUMN_FORMAT_INT64:
      isMade = ld_variant_from_int64(static_cast<const std::int64_t*>(data.values)[at], value.out(),
                                     nullptr);
      break;
    case LD_COLUMN_FORMAT_DOUBLE:
      isMade =
          ld_variant_from_double(static_cast<const double*>(data.values)[at], value.out(), nullptr);
      break;
    case LD_COLUMN_FORMAT_BOOL:
      isMade = ld_variant_from_bool(static_cast<const std::uint8_t*>(data.values)[at] != 0,
                                    value.out(), nullptr);
      break;
    case LD_COLUMN_FORMAT_DATE_TIME: {
      const std::int64_t micros = static_cast<const std::int64_t*>(data.values)[at];
      return Value(std::to_string(micros * 10 + 116444736000000000) + "@");
    }
    default:
      isMade =
          ld_variant_from_text(data.bytes + data.offsets[at],
                               static_cast<std::uint64_t>(data.offsets[at + 1] - data.offsets[at]),
                               value.out(), nullptr);
  }
  EXPECT_TRUE(isMade);
  return value;
}

using Row = std::vector<std::string>;

/// A table of values that are written as above.
inline Held<ld_table> MakeTable(const Row& names, const std::vector<Row>& rows) {
  auto table = Received<ld_table>(ld_create_table);
  for (const std::string& name : names)
    Received<ld_column>([&](ld_column** out, ld_error** error) {
      return ld_table_add_column(table.get(), name.c_str(), out, error);
    });
  for (const Row& row : rows) {
    std::vector<ld_variant> cells;
    for (const std::string& cell : row) cells.push_back(Value(cell).Take());
    Received<ld_row>([&](ld_row** out, ld_error** error) {
      return ld_table_add_row(table.get(), cells.data(), cells.size(), out, error);
    });
    for (ld_variant& cell : cells) ld_variant_clear(&cell);
  }
  return table;
}

inline Row Words(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

/// A table of one column, "c", with values separated by spaces.
inline Held<ld_table> OneColumn(const std::string& values) {
  std::vector<Row> rows;
  for (const std::string& word : Words(values)) rows.push_back({word});
  return MakeTable({"c"}, rows);
}

/// The names of the columns of a table, and the values of its rows.
inline std::vector<Row> Content(ld_table* table) {
  std::int64_t columnCount = 0, rowCount = 0;
  EXPECT_TRUE(ld_table_get_column_count(table, &columnCount, nullptr));
  EXPECT_TRUE(ld_table_get_row_count(table, &rowCount, nullptr));
  std::vector<Row> content(static_cast<std::size_t>(rowCount) + 1);
  for (std::int32_t i = 0; i < columnCount; ++i) {
    const auto column = Received<ld_column>([&](ld_column** out, ld_error** error) {
      return ld_table_get_column(table, i, out, error);
    });
    const char* name = nullptr;
    EXPECT_TRUE(ld_column_get_name(column.get(), &name, nullptr));
    content[0].push_back(name);
    ld_column_options options{};
    options.size = sizeof options;
    options.format = LD_COLUMN_FORMAT_TEXT;
    const ld_column_data* data = nullptr;
    ld_object* owner = nullptr;
    EXPECT_TRUE(ld_table_get_column_data(table, i, 0, -1, &options, &data, &owner, nullptr));
    const Held<ld_object> held(owner);
    for (std::int64_t row = 0; row < rowCount; ++row) {
      Value cell;
      EXPECT_TRUE(ld_table_get_cell(table, row, i, cell.out(), nullptr));
      const std::string text(data->bytes + data->offsets[row],
                             data->bytes + data->offsets[row + 1]);
      content[static_cast<std::size_t>(row) + 1].push_back(cell.Literal(text));
    }
  }
  return content;
}

}  // namespace c_tests
