#pragma once

#include <cstdint>
#include <string_view>

#include "Core/ValueTypes.h"

namespace Data::impl {

/// A text read as a number.
struct ParsedNumber {
  /// What the text looks like: Int64, Double, or String for no number at all.
  Core::ValueType type = Core::ValueType::String;
  /// Whether a 64-bit integer or a finite double holds it. "1e", "1e999" and an
  /// integer of 30 digits look like numbers but have no value.
  bool hasValue = false;
  /// The value as a record keeps it: the integer, or the bits of the double.
  std::uint64_t word = 0;
};

/// Type and value of a trimmed text from one scan: an optional minus sign,
/// digits with at most one dot, an exponent without a plus sign. Never depends
/// on the locale; doubles are the nearest ones.
ParsedNumber ParseNumber(std::string_view text) noexcept;

}  // namespace Data::impl
