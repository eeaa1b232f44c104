#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Core/VariantNumbers.h"
#include "Core/VariantRecord.h"
#include "Data/Interfaces/IArray.h"

/// Conversions of values that lose nothing, or say so.
namespace Data::c {

/// Whether a cell has a value: its type is one that values have, and it is no null reference.
inline bool HasValue(const Structures::_VARIANT& cell) {
  return Core::IsConcrete(Core::TypeOf(cell)) && !Core::IsNullAddress(cell);
}

/// An integer of up to 128 bits as sign and magnitude. Zero is not negative.
struct Integer {
  std::uint64_t high = 0, low = 0;
  bool isNegative = false;

  static Integer Of(std::int64_t value);
  /// The value of a signed or unsigned integer type of up to 128 bits; nothing for any other
  /// record, also for Bool and Uuid.
  static std::optional<Integer> Of(const Structures::_VARIANT& cell);

  std::optional<std::int64_t> ExactInt64() const;
  std::optional<double> ExactDouble() const;
  /// Rounded to the nearest, half to even.
  double NearestDouble() const;
  std::string Text() const;
};

/// The decimal digits of an unsigned integer.
/// @param parts  the lowest 32 bits first; 0 afterwards
std::string DecimalDigits(std::span<std::uint32_t> parts);

/// Whether a double holds an integer exactly.
inline bool IsExactDouble(std::int64_t value) {
  constexpr std::uint64_t kConsecutive = std::uint64_t{1} << 53;
  return static_cast<std::uint64_t>(value) + kConsecutive <= 2 * kConsecutive ||
         Integer::Of(value).ExactDouble().has_value();
}

/// The value of a Double or Float; nothing for any other record.
inline std::optional<double> RealOf(const Structures::_VARIANT& cell) {
  using Core::ValueType;
  if (!HasForm(cell, Core::StorageForm::Value)) return std::nullopt;
  if (Core::TypeOf(cell) == ValueType::Double) return Core::detail::StoredDouble(cell);
  if (Core::TypeOf(cell) == ValueType::Float) return Core::detail::StoredFloat(cell);
  return std::nullopt;
}

/// An integer of any type, or a real number without a fraction, that 64 bits hold. Nothing for any
/// other record, also for -0.0, which has no integer of its own.
std::optional<std::int64_t> ExactInt64(const Structures::_VARIANT& cell);
/// A real number, or an integer that a double holds. Nothing for any other record.
std::optional<double> ExactDouble(const Structures::_VARIANT& cell);
/// As `ExactDouble`, but an integer that no double holds is rounded to the nearest.
std::optional<double> NearestDouble(const Structures::_VARIANT& cell);

/// The ticks of a DateTime that is no null reference.
/// @throws what `Core::GetDateTime` throws
std::uint64_t TicksOf(const Structures::_VARIANT& cell);

/// A point in time.
struct Microseconds {
  std::int64_t value;  ///< since 1970-01-01T00:00:00Z, rounded down
  bool isExact;
};
/// @param ticks  of 100 nanoseconds since 1601, in two's complement
Microseconds MicrosecondsOf(std::uint64_t ticks);
/// The ticks of a number of microseconds since 1970; nothing if 64 bits do not hold them or if they
/// are before year 1.
std::optional<std::uint64_t> TicksOfMicroseconds(std::int64_t value);
/// Whether the time of day is noon, as that of a date that was read without a time.
bool IsNoon(std::uint64_t ticks);

/// All bytes of an array, while it is held and unchanged. Nothing if it does not know how many it
/// has, because bytes were appended to elements of several bytes.
std::optional<std::string_view> BytesOf(Interfaces::IArray& array);

/// The text of a value: its display text, except that the text of a number is exact. Doubles have
/// the fewest digits that read back as the same double.
/// @throws what `Core::ToText` throws for a record whose contents do not fit its type
std::string ExactText(const Structures::_VARIANT& cell);

}  // namespace Data::c
