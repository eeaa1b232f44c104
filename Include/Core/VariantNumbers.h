#pragma once

#include <bit>
#include <compare>
#include <cstdint>
#include <stdexcept>

#include "Core/VariantRecord.h"

/// Converts a `_VARIANT` to a number. All failures are std::runtime_error.
namespace Core {

/// The failure of reading a number that is not stored in the record.
[[noreturn]] inline void ThrowMustBeValue() { throw std::runtime_error("Must be value type!"); }

namespace detail {

inline void CheckHoldsNumber(const _VARIANT& variant) {
  if (!HasForm(variant, StorageForm::Value)) ThrowMustBeValue();
  if (TypeOf(variant) == ValueType::String)
    throw std::runtime_error("String cannot be converted to the primitive type!");
}

inline double StoredDouble(const _VARIANT& variant) {
  return std::bit_cast<double>(variant.value[0]);
}
inline float StoredFloat(const _VARIANT& variant) {
  return std::bit_cast<float>(static_cast<std::uint32_t>(variant.value[0]));
}

/// Rounded toward zero; INT64_MIN for NaN and for values out of range.
inline std::int64_t Truncate(double value) {
  return value >= -0x1p63 && value < 0x1p63 ? static_cast<std::int64_t>(value) : INT64_MIN;
}

/// The integer, sign- or zero-extended from the width of its type.
inline std::int64_t StoredInteger(const _VARIANT& variant) {
  const std::uint64_t word = variant.value[0];
  switch (TypeOf(variant)) {
    case ValueType::Int16:
      return static_cast<std::int16_t>(word);
    case ValueType::UInt16:
      return static_cast<std::uint16_t>(word);
    case ValueType::Int32:
      return static_cast<std::int32_t>(word);
    case ValueType::UInt32:
      return static_cast<std::uint32_t>(word);
    case ValueType::Byte:
      return static_cast<std::uint8_t>(word);
    case ValueType::SByte:
    case ValueType::Bool:
      return static_cast<std::int8_t>(word);
    default:
      return static_cast<std::int64_t>(word);
  }
}

}  // namespace detail

/// The value as a 64-bit integer. Double and Float are rounded toward zero; NaN and values out of
/// range give INT64_MIN. Every other type gives the first word of the payload as stored.
/// @throws "Must be value type!", "String cannot be converted to the primitive type!"
inline std::int64_t ToInt64(const _VARIANT& variant) {
  detail::CheckHoldsNumber(variant);
  if (TypeOf(variant) == ValueType::Double) return detail::Truncate(detail::StoredDouble(variant));
  if (TypeOf(variant) == ValueType::Float) return detail::Truncate(detail::StoredFloat(variant));
  return static_cast<std::int64_t>(variant.value[0]);
}

/// The value as a double. An Int128's low word is read as a signed number.
/// @throws as `ToInt64`, and "Invalid value!" for a value that is not a number
inline double ToDouble(const _VARIANT& variant) {
  detail::CheckHoldsNumber(variant);
  const std::uint64_t low = variant.value[0], high = variant.value[1];
  switch (TypeOf(variant)) {
    case ValueType::UInt64:
      return static_cast<double>(low);
    case ValueType::Int16:
    case ValueType::Int32:
    case ValueType::Int64:
    case ValueType::UInt16:
    case ValueType::UInt32:
    case ValueType::Byte:
    case ValueType::SByte:
    case ValueType::Bool:
      return static_cast<double>(detail::StoredInteger(variant));
    case ValueType::Double:
      return detail::StoredDouble(variant);
    case ValueType::Float:
      return detail::StoredFloat(variant);
    case ValueType::Int128:
      return static_cast<double>(static_cast<std::int64_t>(high)) * 0x1p64 +
             static_cast<double>(static_cast<std::int64_t>(low));
    case ValueType::UInt128:
      return static_cast<double>(high) * 0x1p64 + static_cast<double>(low);
    default:
      throw std::runtime_error("Invalid value!");
  }
}

/// A signed 128-bit integer as two words.
struct WideInteger {
  std::int64_t high;  ///< the upper half, with the sign
  std::uint64_t low;  ///< the lower half
  auto operator<=>(const WideInteger&) const = default;
};

/// The 16 bytes of the payload as stored.
/// @throws "Must be value type!", "Cannot cast double to Int128! Not implemented", "Cannot cast
///         float to Int128! Not implemented"
inline WideInteger ToWideInteger(const _VARIANT& variant) {
  if (!HasForm(variant, StorageForm::Value)) ThrowMustBeValue();
  if (TypeOf(variant) == ValueType::Double)
    throw std::runtime_error("Cannot cast double to Int128! Not implemented");
  if (TypeOf(variant) == ValueType::Float)
    throw std::runtime_error("Cannot cast float to Int128! Not implemented");
  return {static_cast<std::int64_t>(variant.value[1]), variant.value[0]};
}

/// Whether a Bool is true, which means that its byte is not zero.
/// @throws "Must be value type!"
inline bool ToBool(const _VARIANT& variant) {
  if (!HasForm(variant, StorageForm::Value)) ThrowMustBeValue();
  return (variant.value[0] & 0xFF) != 0;
}

}  // namespace Core
