#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Core/Failures.h"
#include "Data/Structures/Variant.h"

/// The failures that several classes of the table model raise.
namespace Data::impl {

[[noreturn]] inline void ThrowColumnOutOfRange(std::int64_t index, std::int64_t count) {
  throw std::runtime_error("Column index out of range [" + std::to_string(index) + "/" +
                           std::to_string(count) + "]!");
}

[[noreturn]] inline void ThrowRowOutOfRange(std::int64_t index, std::int64_t count) {
  throw std::runtime_error("Row index out of range [" + std::to_string(index) + "/" +
                           std::to_string(count) + "]!");
}

[[noreturn]] inline void ThrowCannotSetCell() {
  throw std::runtime_error("Error while setting cell value");
}

/// Rejects a null array of values, unless it is empty.
inline void CheckValues(const Structures::_VARIANT* values, std::uint64_t count) {
  if (count != 0) Core::CheckArgument(values);
}

/// Whether `index` is a position below `count`; a negative one wraps to a huge one.
constexpr bool IsPosition(std::int64_t index, std::size_t count) {
  return static_cast<std::uint64_t>(index) < count;
}

}  // namespace Data::impl
