#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// Decimal digits, several at a time in the bytes of a word. The functions write where the caller
/// has room, and return the end of what they wrote.
namespace Data::impl {

static_assert(std::endian::native == std::endian::little, "the first digit is the lowest byte");

/// The eight digits of a number below 10^8, leading zeros included, one per byte.
constexpr std::uint64_t EightDigits(std::uint32_t value) {
  // Halves, quarters and eighths of the digits, each in its own lane of the word. For numbers as
  // small as these the products with rounded reciprocals, shifted right, are the exact quotients.
  const std::uint64_t fours = value / 10'000 | std::uint64_t{value % 10'000} << 32;
  const std::uint64_t hundreds = fours * 10'486 >> 20 & 0x7F'0000'007F;
  const std::uint64_t twos = hundreds | (fours - hundreds * 100) << 16;
  const std::uint64_t tens = twos * 103 >> 10 & 0x000F'000F'000F'000F;
  return tens | (twos - tens * 10) << 8;
}

/// Writes the digits as text.
inline char* PutEightDigits(char* to, std::uint64_t digits) {
  constexpr std::uint64_t kZeros = 0x3030303030303030;
  digits += kZeros;
  std::memcpy(to, &digits, sizeof digits);
  return to + sizeof digits;
}

/// Writes a number below 100.
inline char* PutTwoDigits(char* to, std::uint32_t value) {
  const std::uint32_t tens = value * 103 >> 10;
  const auto text = static_cast<std::uint16_t>(0x3030 | tens | (value - tens * 10) << 8);
  std::memcpy(to, &text, sizeof text);
  return to + sizeof text;
}

/// What `PutInteger` may write, beyond the end of the text too.
constexpr std::size_t kIntegerRoom = 24;

/// Writes a number without leading zeros.
inline char* PutInteger(char* to, std::uint64_t value) {
  constexpr std::uint64_t kUnit = 100'000'000;
  if (value >= kUnit) {
    to = PutInteger(to, value / kUnit);
    return PutEightDigits(to, EightDigits(static_cast<std::uint32_t>(value % kUnit)));
  }
  const std::uint64_t digits = EightDigits(static_cast<std::uint32_t>(value));
  constexpr std::uint64_t kLastDigit = std::uint64_t{1} << 56;  // stands even if it is zero
  const int zeros = std::countr_zero(digits | kLastDigit) / 8;
  return PutEightDigits(to, digits >> 8 * zeros) - zeros;
}

/// Writes the sign of a negative number, without a branch.
inline char* PutSign(char* to, bool isNegative) {
  *to = '-';
  return to + isNegative;
}

inline char* PutInteger(char* to, std::int64_t value) {
  const auto word = static_cast<std::uint64_t>(value);
  return PutInteger(PutSign(to, value < 0), value < 0 ? 0 - word : word);
}

}  // namespace Data::impl
