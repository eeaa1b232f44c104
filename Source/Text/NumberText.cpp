#include "Text/NumberText.h"

#include <bit>
#include <charconv>
#include <cmath>

namespace Data::impl {

namespace {

/// A number with six decimals.
struct Fixed {
  std::uint64_t whole;
  std::uint32_t millionths;
};

constexpr int kLeastShift = 7, kMostShift = 60;

/// Rounds mantissa / 2^shift to millionths.
///
/// Every step is exact. Let f / 2^s be the fraction of the number: f < 2^s, and f < 2^53. Its first
/// three decimals are the whole part of f * 1000 / 2^s = f * 125 / 2^(s-3), whose numerator is
/// below 2^53 * 2^7 = 2^60. They leave a rest below 2^(s-3), at most 2^57, so the numerator for the
/// next three, rest * 125 / 2^(s-6), is below 2^64. What these leave is compared with one half,
/// which is an integer, 2^(s-7), since s is at least 7.
/// @param mantissa  below 2^53
/// @param shift     `kLeastShift` to `kMostShift`
Fixed RoundToMillionths(std::uint64_t mantissa, int shift) {
  const auto below = [](std::uint64_t value, int bit) {
    return value & ((std::uint64_t{1} << bit) - 1);
  };
  const std::uint64_t first = below(mantissa, shift) * 125;
  const std::uint64_t second = below(first, shift - 3) * 125;
  const std::uint64_t rest = below(second, shift - 6), half = std::uint64_t{1} << (shift - 7);
  Fixed number{mantissa >> shift,
               static_cast<std::uint32_t>((first >> (shift - 3)) * 1000 + (second >> (shift - 6)))};
  // Without a branch, which would be mispredicted half the time.
  number.millionths += rest + number.millionths % 2 > half ? 1 : 0;
  if (number.millionths == 1'000'000) number = {number.whole + 1, 0};
  return number;
}

/// Writes a number from 2^-8 up to 2^46, or zero.
/// @return the end of the text; null for any other number
char* PutFixed(char* to, double magnitude) {
  constexpr int kMantissaBits = 52, kExponentOfOne = 1023;
  constexpr std::uint64_t kImplicitBit = std::uint64_t{1} << kMantissaBits;
  const auto bits = std::bit_cast<std::uint64_t>(magnitude);
  const int shift = kMantissaBits + kExponentOfOne - static_cast<int>(bits >> kMantissaBits);
  Fixed number{0, 0};
  if (kLeastShift <= shift && shift <= kMostShift) {
    number = RoundToMillionths((bits & (kImplicitBit - 1)) | kImplicitBit, shift);
  } else if (magnitude != 0) {
    return nullptr;
  }
  char* const point = PutInteger(to, number.whole);
  // Two digits more than needed, and the first one gives way to the point.
  PutEightDigits(point, EightDigits(number.millionths) >> 8);
  *point = '.';
  return point + 7;
}

}  // namespace

void AppendFixed(TextBuffer& buffer, double value) {
  constexpr std::size_t kMostBytes = 400;
  char* begin = PutSign(buffer.Tail(kIntegerRoom + 8), std::signbit(value));
  if (char* const end = PutFixed(begin, std::fabs(value))) return buffer.EndAt(end);
  begin = buffer.Tail(kMostBytes);
  buffer.EndAt(std::to_chars(begin, begin + kMostBytes, value, std::chars_format::fixed, 6).ptr);
}

}  // namespace Data::impl
