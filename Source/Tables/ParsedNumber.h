#pragma once

#include <cstdint>
#include <string_view>

#include "Core/ValueTypes.h"

namespace Data::impl {

/// The result of parsing a text as a number.
struct ParsedNumber {
  /// What the text looks like: Int64, Double, or String if it is not a number.
  Core::ValueType type = Core::ValueType::String;
  /// Whether a 64-bit integer or a finite double can hold it. "1e", "1e999" and an integer of 30
  /// digits look like numbers but have no value.
  bool hasValue = false;
  /// The first payload word of a record: the integer, or the bits of the double.
  std::uint64_t word = 0;
};

/// Parses a trimmed text in one scan: an optional minus sign, digits with at most one dot, an
/// exponent without a plus sign. Independent of the locale; doubles are the nearest ones.
ParsedNumber ParseNumber(std::string_view text) noexcept;

}  // namespace Data::impl
