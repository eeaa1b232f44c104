#include "Tables/ParsedNumber.h"

#include <bit>
#include <charconv>

#include "Text/Characters.h"

namespace Data::impl {

using Core::ValueType;

namespace {

/// The digits read so far. With more than `kExactDigits` of them the value may have overflowed.
struct Digits {
  std::uint64_t value = 0;
  std::ptrdiff_t count = 0;
};

/// 10^19 - 1 fits into 64 bits.
constexpr std::ptrdiff_t kExactDigits = 19;

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kLargestExactPower = 22;
constexpr std::uint64_t kLargestExactInteger = 1ull << 53;

const char* ReadDigits(const char* p, const char* end, Digits& digits) {
  const char* const first = p;
  std::uint64_t value = digits.value;
  for (; p != end && IsDigit(*p); ++p) value = value * 10 + static_cast<unsigned char>(*p - '0');
  digits.value = value;
  digits.count += p - first;
  return p;
}

ParsedNumber WithoutValue(ValueType type) { return {type, false, 0}; }

ParsedNumber LongInteger(std::string_view text) {
  std::int64_t value = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (failure != std::errc()) return WithoutValue(ValueType::Int64);
  return {ValueType::Int64, true, static_cast<std::uint64_t>(value)};
}

ParsedNumber Integer(std::string_view text, bool isNegative, Digits digits) {
  if (digits.count >= kExactDigits) return LongInteger(text);
  return {ValueType::Int64, true, isNegative ? 0 - digits.value : digits.value};
}

ParsedNumber LongReal(std::string_view text) {
  double value = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (failure != std::errc()) return WithoutValue(ValueType::Double);
  return {ValueType::Double, true, std::bit_cast<std::uint64_t>(value)};
}

/// If both factors are exact, a single multiplication or division rounds correctly.
ParsedNumber Real(std::string_view text, bool isNegative, Digits digits, std::ptrdiff_t exponent) {
  if (digits.count > kExactDigits || digits.value > kLargestExactInteger ||
      exponent < -kLargestExactPower || exponent > kLargestExactPower)
    return LongReal(text);
  auto value = static_cast<double>(digits.value);
  value = exponent < 0 ? value / kPowersOfTen[-exponent] : value * kPowersOfTen[exponent];
  return {ValueType::Double, true, std::bit_cast<std::uint64_t>(isNegative ? -value : value)};
}

/// An exponent that is not an integer. The text still looks like a number if the rest consists of
/// digits, at most one dot in the whole text, and at most one minus sign in the exponent.
ParsedNumber OddExponent(const char* p, const char* end, bool hasDot, bool hasSign) {
  for (; p != end; ++p) {
    if (IsDigit(*p)) continue;
    if (*p == '.' && !hasDot) {
      hasDot = true;
    } else if (*p == '-' && !hasSign) {
      hasSign = true;
    } else {
      return {};
    }
  }
  return WithoutValue(ValueType::Double);
}

/// @param p         after the `e`
/// @param fraction  number of digits after the dot, or -1 without a dot
ParsedNumber WithExponent(std::string_view text, bool isNegative, Digits digits,
                          std::ptrdiff_t fraction, const char* p) {
  const char* const end = text.data() + text.size();
  const bool hasSign = p != end && *p == '-';
  p += hasSign;
  Digits exponent;
  const char* const rest = ReadDigits(p, end, exponent);
  if (rest != end || rest == p) return OddExponent(rest, end, fraction >= 0, hasSign);
  if (exponent.count > 4) return LongReal(text);
  const auto power = static_cast<std::ptrdiff_t>(exponent.value);
  return Real(text, isNegative, digits, (hasSign ? -power : power) - (fraction > 0 ? fraction : 0));
}

}  // namespace

ParsedNumber ParseNumber(std::string_view text) noexcept {
  const char* p = text.data();
  const char* const end = p + text.size();
  const bool isNegative = p != end && *p == '-';
  Digits digits;
  p = ReadDigits(p + isNegative, end, digits);
  if (p == end) return digits.count > 0 ? Integer(text, isNegative, digits) : ParsedNumber();
  std::ptrdiff_t fraction = -1;
  if (*p == '.') {
    const std::ptrdiff_t whole = digits.count;
    p = ReadDigits(p + 1, end, digits);
    fraction = digits.count - whole;
  }
  if (digits.count == 0) return {};
  if (p == end) return Real(text, isNegative, digits, -fraction);
  if (*p != 'e' && *p != 'E') return {};
  return WithExponent(text, isNegative, digits, fraction, p + 1);
}

}  // namespace Data::impl
