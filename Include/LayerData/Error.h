#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "LayerData/layerdata.h"

namespace layerdata {

/// The one exception of this layer. Its message names what it is about: "Column 'height', row 12:
/// the value 'tall' is not a number". Lack of memory in the library is an `Error` of code 2, too.
class Error : public std::runtime_error {
 public:
  /// A failure with its message.
  explicit Error(const std::string& message, std::uint32_t code = 2)
      : runtime_error(message), code_(code) {}

  /// 0 if there is nothing to return, 2 for a failure.
  std::uint32_t Code() const noexcept { return code_; }
  /// The column of the value that could not be used; empty if none is known.
  const std::string& Column() const noexcept { return column_; }
  /// The index of its row.
  std::optional<std::int64_t> Row() const noexcept { return row_; }
  /// Its text.
  const std::string& Value() const noexcept { return value_; }

  /// What could not be done with a value, before its cell is known.
  static Error OfValue(std::string value, std::string_view problem) {
    Error error("the value '" + value + "' " + std::string(problem));
    error.value_ = std::move(value);
    return error;
  }
  /// The same failure with the cell that it is about.
  Error InCell(std::string column, std::int64_t row) const {
    Error error("Column '" + column + "', row " + std::to_string(row) + ": " + what(), code_);
    error.column_ = std::move(column);
    error.row_ = row;
    error.value_ = value_;
    return error;
  }

 private:
  std::uint32_t code_;
  std::string column_;
  std::optional<std::int64_t> row_;
  std::string value_;
};

}  // namespace layerdata
