#include "C/ExactValues.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>

#include "Core/ExactCast.h"
#include "Core/VariantConversions.h"
#include "DateTime/Calendar.h"
#include "DateTime/DateTimeImpl.h"

namespace Data::c {

using Core::KindOf;
using Core::TypeOf;
using Core::ValueKind;
using Core::ValueType;
using Structures::_VARIANT;

// -- Integers --

Integer Integer::Of(std::int64_t value) {
  const auto word = static_cast<std::uint64_t>(value);
  return {0, value < 0 ? 0 - word : word, value < 0};
}

std::optional<Integer> Integer::Of(const _VARIANT& cell) {
  if (!HasForm(cell, Core::StorageForm::Value)) return std::nullopt;
  const std::uint64_t low = cell.value[0], high = cell.value[1];
  switch (TypeOf(cell)) {
    case ValueType::UInt64:
      return Integer{0, low, false};
    case ValueType::UInt128:
      return Integer{high, low, false};
    case ValueType::Int128:
      if (high >> 63 == 0) return Integer{high, low, false};
      return Integer{~high + (low == 0 ? 1 : 0), 0 - low, true};
    default:
      break;
  }
  const ValueKind kind = KindOf(TypeOf(cell));
  if (kind != ValueKind::SignedInteger && kind != ValueKind::UnsignedInteger) return std::nullopt;
  return Of(Core::detail::StoredInteger(cell));
}

std::optional<std::int64_t> Integer::ExactInt64() const {
  const std::uint64_t most = std::uint64_t{INT64_MAX} + (isNegative ? 1 : 0);
  if (high != 0 || low > most) return std::nullopt;
  return static_cast<std::int64_t>(isNegative ? 0 - low : low);
}

std::optional<double> Integer::ExactDouble() const {
  if (high == 0 && low == 0) return 0.0;
  const int width = high != 0 ? 64 + static_cast<int>(std::bit_width(high))
                              : static_cast<int>(std::bit_width(low));
  const int zeros = low != 0 ? std::countr_zero(low) : 64 + std::countr_zero(high);
  if (width - zeros > 53) return std::nullopt;
  return NearestDouble();
}

double Integer::NearestDouble() const {
  auto magnitude = static_cast<double>(low);
  if (high != 0) {
    // The 64 leading bits; the last one also stands for any bit that is cut off, so that rounding
    // goes the right way.
    const int shift = std::countl_zero(high) % 64, cut = 64 - shift;  // below 64: high is not 0
    const std::uint64_t kept = shift == 0 ? high : high << shift | low >> (64 - shift);
    const std::uint64_t rest = low << shift;
    magnitude = std::ldexp(static_cast<double>(kept | (rest != 0 ? 1 : 0)), cut);
  }
  return isNegative ? -magnitude : magnitude;
}

std::string Integer::Text() const {
  const auto part = [](std::uint64_t bits) { return static_cast<std::uint32_t>(bits); };
  std::uint32_t parts[] = {part(low), part(low >> 32), part(high), part(high >> 32)};
  std::string text = DecimalDigits(parts);
  if (isNegative) text.insert(0, 1, '-');
  return text;
}

std::string DecimalDigits(std::span<std::uint32_t> parts) {
  constexpr std::uint32_t kBillion = 1'000'000'000;
  std::string digits;  // from the last to the first
  while (std::ranges::any_of(parts, [](std::uint32_t part) { return part != 0; })) {
    std::uint64_t rest = 0;
    for (std::size_t i = parts.size(); i-- > 0;) {
      const std::uint64_t part = rest << 32 | parts[i];
      parts[i] = static_cast<std::uint32_t>(part / kBillion);
      rest = part % kBillion;
    }
    for (int i = 0; i < 9; ++i, rest /= 10) digits += static_cast<char>('0' + rest % 10);
  }
  digits.erase(digits.find_last_not_of('0') + 1);
  return digits.empty() ? "0" : std::string(digits.rbegin(), digits.rend());
}

// -- Numbers --

std::optional<std::int64_t> ExactInt64(const _VARIANT& cell) {
  if (const auto integer = Integer::Of(cell)) return integer->ExactInt64();
  const auto real = RealOf(cell);
  if (!real || !(*real >= -0x1p63 && *real < 0x1p63)) return std::nullopt;
  const auto value = static_cast<std::int64_t>(*real);
  const bool isSame = std::bit_cast<std::uint64_t>(static_cast<double>(value)) ==
                      std::bit_cast<std::uint64_t>(*real);
  return isSame ? std::optional(value) : std::nullopt;
}

std::optional<double> ExactDouble(const _VARIANT& cell) {
  const auto integer = Integer::Of(cell);
  return integer ? integer->ExactDouble() : RealOf(cell);
}

std::optional<double> NearestDouble(const _VARIANT& cell) {
  const auto integer = Integer::Of(cell);
  return integer ? integer->NearestDouble() : RealOf(cell);
}

// -- Dates --

namespace {

constexpr std::int64_t kTicksPerMicrosecond = 10;
constexpr auto kEpoch = static_cast<std::int64_t>(impl::kTicksAtPosixEpoch) / kTicksPerMicrosecond;

constexpr std::int64_t FloorRest(std::int64_t value, std::int64_t divisor) {
  const std::int64_t rest = value % divisor;
  return rest < 0 ? rest + divisor : rest;
}

}  // namespace

std::uint64_t TicksOf(const _VARIANT& cell) {
  if (auto* const own = Core::ExactCast<impl::DateTimeImpl>(Core::ReferencedObject(cell)))
    return own->GetFileTime();
  return Core::GetDateTime(cell)->GetFileTime();
}

Microseconds MicrosecondsOf(std::uint64_t ticks) {
  const auto count = static_cast<std::int64_t>(ticks);
  const std::int64_t rest = FloorRest(count, kTicksPerMicrosecond);
  const std::int64_t quotient = count / kTicksPerMicrosecond;
  const bool isRoundedUp = count < 0 && rest != 0;  // by the division, toward zero
  return {quotient - (isRoundedUp ? 1 : 0) - kEpoch, rest == 0};
}

std::optional<std::uint64_t> TicksOfMicroseconds(std::int64_t value) {
  constexpr std::int64_t kFirst = -584'388 * impl::kTicksPerDay;  // 0001-01-01
  if (value < kFirst / kTicksPerMicrosecond - kEpoch ||
      value > INT64_MAX / kTicksPerMicrosecond - kEpoch)
    return std::nullopt;
  return static_cast<std::uint64_t>((value + kEpoch) * kTicksPerMicrosecond);
}

bool IsNoon(std::uint64_t ticks) {
  return FloorRest(static_cast<std::int64_t>(ticks), impl::kTicksPerDay) == impl::kTicksPerDay / 2;
}

// -- Bytes and texts --

std::optional<std::string_view> BytesOf(Interfaces::IArray& array) {
  const std::uint64_t size = array.GetSize();
  // Null also for a range that is not within the bytes.
  const void* const data = array.GetPointer(0, size, nullptr);
  if (!data && size != 0) return std::nullopt;
  return std::string_view(static_cast<const char*>(data), static_cast<std::size_t>(size));
}

std::string ExactText(const _VARIANT& cell) {
  if (const auto integer = Integer::Of(cell)) return integer->Text();
  char digits[32];
  const auto shortest = [&](auto real) {
    if (std::isnan(real)) return std::string("nan");  // whatever its sign
    return std::string(digits, std::to_chars(digits, digits + sizeof digits, real).ptr);
  };
  if (TypeOf(cell) == ValueType::Float && HasForm(cell, Core::StorageForm::Value))
    return shortest(Core::detail::StoredFloat(cell));
  if (const auto real = RealOf(cell)) return shortest(*real);
  return Core::ToText(cell);
}

}  // namespace Data::c
