#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "Text/TextOrder.h"

namespace Data::impl {

/// The part of a text that is read as JSON: up to the first zero byte, without the byte-order mark.
/// Each byte of the mark is skipped on its own, so an incomplete mark does no harm either.
/// @param text  followed by a zero byte, as the result is
inline std::string_view JsonTextOf(std::string_view text) {
  text = UpToFirstZero(text);
  for (const char byte : {'\xEF', '\xBB', '\xBF'})
    if (text.starts_with(byte)) text.remove_prefix(1);
  return text;
}

/// Whether a byte ends a plain run within a JSON string: a quote, a backslash or a control
/// character.
constexpr bool EndsPlainRun(char byte) {
  return byte == '"' || byte == '\\' || static_cast<unsigned char>(byte) < 0x20;
}

/// The first byte from `begin` on that must be escaped in a JSON string; `end` if there is none.
inline const char* EndOfPlainRun(const char* begin, const char* end) {
  static_assert(std::endian::native == std::endian::little, "the first byte is the lowest");
  constexpr std::uint64_t kOnes = 0x0101010101010101, kHighBits = kOnes * 0x80;
  // These set the high bit of the first (lowest) byte that is below a limit, or equal to a byte;
  // higher bits may be wrong, since the subtraction borrows from them.
  const auto less = [](std::uint64_t word, std::uint64_t limit) {
    return (word - kOnes * limit) & ~word & kHighBits;
  };
  const auto equal = [less](std::uint64_t word, char byte) {
    return less(word ^ kOnes * static_cast<unsigned char>(byte), 1);
  };
  for (; end - begin >= 8; begin += 8) {
    std::uint64_t word;
    std::memcpy(&word, begin, sizeof word);
    const std::uint64_t marks = less(word, 0x20) | equal(word, '"') | equal(word, '\\');
    if (marks != 0) return begin + std::countr_zero(marks) / 8;
  }
  while (begin != end && !EndsPlainRun(*begin)) ++begin;
  return begin;
}

}  // namespace Data::impl
