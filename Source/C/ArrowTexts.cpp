#include "C/ArrowTexts.h"

#include <array>
#include <cstring>

#include "C/ExactValues.h"
#include "Core/StringFormat.h"

namespace Data::c {

namespace {

/// ".000125" of 125 millionths; nothing for whole seconds.
std::string FractionText(std::uint64_t fraction, std::int64_t unitsPerSecond) {
  if (unitsPerSecond == 1) return {};
  std::string digits;  // from the last to the first
  for (; unitsPerSecond > 1; unitsPerSecond /= 10, fraction /= 10)
    digits += static_cast<char>('0' + fraction % 10);
  digits += '.';
  return {digits.rbegin(), digits.rend()};
}

}  // namespace

std::string DecimalText(std::string_view bytes, std::int64_t scale) {
  std::array<std::uint32_t, 8> parts{};
  const bool isNegative = static_cast<signed char>(bytes.back()) < 0;
  if (isNegative) parts.fill(UINT32_MAX);
  std::memcpy(parts.data(), bytes.data(), bytes.size());
  if (isNegative) {
    std::uint64_t carry = 1;
    for (std::uint32_t& part : parts) {
      carry += static_cast<std::uint32_t>(~part);
      part = static_cast<std::uint32_t>(carry);
      carry >>= 32;
    }
  }
  const std::string digits = DecimalDigits(parts);
  std::string text = isNegative ? "-" : "";
  if (scale <= 0) {
    text += digits;
    if (digits != "0") text.append(static_cast<std::size_t>(-scale), '0');
    return text;
  }
  const auto after = static_cast<std::size_t>(scale);
  if (digits.size() <= after) {
    text.append("0.").append(after - digits.size(), '0').append(digits);
  } else {
    text.append(digits, 0, digits.size() - after).append(".");
    text.append(digits, digits.size() - after);
  }
  return text;
}

std::string TimeText(std::int64_t value, std::int64_t unitsPerSecond) {
  const auto seconds = static_cast<int>(value / unitsPerSecond);
  return Core::StringFormat("%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60) +
         FractionText(static_cast<std::uint64_t>(value % unitsPerSecond), unitsPerSecond);
}

std::string DurationText(std::int64_t months, std::int64_t days, std::int64_t units,
                         std::int64_t unitsPerSecond) {
  std::string text = "P";
  if (months != 0) text += std::to_string(months) + "M";
  if (days != 0) text += std::to_string(days) + "D";
  if (units != 0 || text.size() == 1) {
    const auto per = static_cast<std::uint64_t>(unitsPerSecond);
    const auto bits = static_cast<std::uint64_t>(units);
    const std::uint64_t size = units < 0 ? 0 - bits : bits;
    text.append(units < 0 ? "T-" : "T").append(std::to_string(size / per));
    text.append(FractionText(size % per, unitsPerSecond)).append("S");
  }
  return text;
}

}  // namespace Data::c
