#pragma once

#include <charconv>
#include <chrono>
#include <cmath>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "LayerData/DateTime.h"
#include "LayerData/Handle.h"
#include "LayerData/Json.h"

/// How the records of the C interface are read.
namespace layerdata::detail {

// -- Numbers --

/// A number of a record: an integer by its sign, or a real number.
struct Number {
  enum class Kind { None, Signed, Unsigned, Real } kind = Kind::None;
  std::int64_t integer = 0;  ///< the 64 bits, also of Unsigned, which is above every Signed
  double real = 0;

  std::uint64_t Bits() const noexcept { return static_cast<std::uint64_t>(integer); }
};

inline Number UnsignedNumber(std::uint64_t bits) noexcept {
  const auto integer = static_cast<std::int64_t>(bits);
  return {integer >= 0 ? Number::Kind::Signed : Number::Kind::Unsigned, integer};
}

template <class Real>
Number RealNumber(const ld_variant& record) noexcept {
  Real real;
  std::memcpy(&real, record.value, sizeof real);
  return {Number::Kind::Real, 0, real};
}

inline std::uint32_t TypeOf(const ld_variant& record) noexcept { return record.type & 0xFFFF; }

inline Number NumberOf(const ld_variant& record) noexcept {
  const auto low = static_cast<std::int64_t>(record.value[0]);
  const auto high = static_cast<std::int64_t>(record.value[1]);
  switch (TypeOf(record)) {
    case LD_VALUE_TYPE_SBYTE:
    case LD_VALUE_TYPE_INT16:
    case LD_VALUE_TYPE_INT32:
    case LD_VALUE_TYPE_INT64:
      return {Number::Kind::Signed, low};
    case LD_VALUE_TYPE_BYTE:
    case LD_VALUE_TYPE_UINT16:
    case LD_VALUE_TYPE_UINT32:
    case LD_VALUE_TYPE_UINT64:
      return UnsignedNumber(record.value[0]);
    case LD_VALUE_TYPE_INT128:
      return high == (low < 0 ? -1 : 0) ? Number{Number::Kind::Signed, low} : Number{};
    case LD_VALUE_TYPE_UINT128:
      return high == 0 ? UnsignedNumber(record.value[0]) : Number{};
    case LD_VALUE_TYPE_DOUBLE:
      return RealNumber<double>(record);
    case LD_VALUE_TYPE_FLOAT:
      return RealNumber<float>(record);
    default:
      return {};
  }
}

/// The integer that a real number is.
inline Number WholeNumber(double real) noexcept {
  if (std::floor(real) != real) return {};
  if (real >= -0x1p63 && real < 0x1p63)
    return {Number::Kind::Signed, static_cast<std::int64_t>(real)};
  if (real >= 0 && real < 0x1p64) return UnsignedNumber(static_cast<std::uint64_t>(real));
  return {};
}

inline std::partial_ordering CompareIntegers(const Number& left, const Number& right) noexcept {
  if (left.kind != right.kind) return left.kind <=> right.kind;
  return left.kind == Number::Kind::Signed ? left.integer <=> right.integer
                                           : left.Bits() <=> right.Bits();
}

/// Exact, where a conversion of the integer would round.
inline std::partial_ordering CompareWithReal(const Number& integer, double real) noexcept {
  if (std::isnan(real)) return std::partial_ordering::unordered;
  const Number whole = WholeNumber(std::floor(real));
  if (whole.kind == Number::Kind::None) return 0.0 <=> real;  // beyond all integers
  const std::partial_ordering order = CompareIntegers(integer, whole);
  return order == 0 && std::floor(real) != real ? std::partial_ordering::less : order;
}

inline std::partial_ordering CompareNumbers(const Number& left, const Number& right) noexcept {
  const bool isLeftReal = left.kind == Number::Kind::Real;
  const bool isRightReal = right.kind == Number::Kind::Real;
  if (isLeftReal && isRightReal) return left.real <=> right.real;
  if (isRightReal) return CompareWithReal(left, right.real);
  if (isLeftReal) return 0 <=> CompareWithReal(right, left.real);
  return CompareIntegers(left, right);
}

// -- Texts, objects and bits --

inline bool IsNull(const ld_variant& record) noexcept {
  return TypeOf(record) == LD_VALUE_TYPE_NULL || TypeOf(record) == LD_VALUE_TYPE_UNKNOWN;
}

inline bool IsText(const ld_variant& record) noexcept {
  return TypeOf(record) == LD_VALUE_TYPE_STRING;
}

inline bool HoldsObject(const ld_variant& record) noexcept { return record.type >> 16 == 1; }

template <class Object>
Object* ObjectOf(const ld_variant& record) noexcept {
  return reinterpret_cast<Object*>(static_cast<std::uintptr_t>(record.value[0]));
}

/// The text of a String, valid until the record or its string changes.
inline std::string_view TextOf(const ld_variant& record) {
  if (!HoldsObject(record)) {
    const auto* text = reinterpret_cast<const char*>(record.value);
    const void* end = std::memchr(text, 0, sizeof record.value);
    return {text, end ? static_cast<std::size_t>(static_cast<const char*>(end) - text)
                      : sizeof record.value};
  }
  auto* const string = ObjectOf<ld_string>(record);
  if (!string) return {};
  const auto* text = Ask<const char*>(ld_string_get_utf8, string);
  return {text, Ask<std::uint64_t>(ld_string_get_length, string)};
}

inline DateTime DateTimeOf(const ld_variant& record) {
  return DateTime::FromObject(ObjectOf<ld_date_time>(record));
}

template <class Value>
std::string Digits(Value value) {
  char digits[32];
  return {digits, std::to_chars(digits, std::end(digits), value).ptr};
}

/// The text of a value of any type: "" for Null, real numbers in the shortest form that reads back
/// as the same number, everything else as the library displays it.
inline std::string DisplayText(const ld_variant& record) {
  if (IsNull(record)) return {};
  if (IsText(record)) return std::string(TextOf(record));
  if (TypeOf(record) == LD_VALUE_TYPE_FLOAT)
    return Digits(static_cast<float>(RealNumber<float>(record).real));
  if (TypeOf(record) == LD_VALUE_TYPE_DATE_TIME && HoldsObject(record))
    return DateTimeOf(record).ToText();
  const Number number = NumberOf(record);
  switch (number.kind) {
    case Number::Kind::Signed:
      return Digits(number.integer);
    case Number::Kind::Unsigned:
      return Digits(number.Bits());
    case Number::Kind::Real:
      return Digits(number.real);
    case Number::Kind::None:
      break;
  }
  return Text(Receive<ld_string>(ld_variant_to_text, &record)).ToString();
}

// -- Conversions: exact, or an error --

[[noreturn]] inline void Refuse(const ld_variant& record, std::string_view problem) {
  if (IsNull(record)) throw Error("there is no value");
  throw Error::OfValue(DisplayText(record), problem);
}

template <class Integer>
Integer IntegerOf(const ld_variant& record) {
  Number number = NumberOf(record);
  if (number.kind == Number::Kind::Real) {
    number = WholeNumber(number.real);
    if (number.kind == Number::Kind::None) Refuse(record, "is not a whole number in range");
  }
  if (number.kind == Number::Kind::None) Refuse(record, "is not a number");
  const bool isUnsigned = number.kind == Number::Kind::Unsigned;
  if (isUnsigned ? !std::in_range<Integer>(number.Bits()) : !std::in_range<Integer>(number.integer))
    Refuse(record, "is out of range");
  return static_cast<Integer>(number.integer);
}

template <class Real>
Real RealOf(const ld_variant& record) {
  const Number number = NumberOf(record);
  if (number.kind == Number::Kind::None) Refuse(record, "is not a number");
  if (number.kind == Number::Kind::Real && std::isnan(number.real))
    return std::numeric_limits<Real>::quiet_NaN();
  const auto real = number.kind == Number::Kind::Real     ? static_cast<Real>(number.real)
                    : number.kind == Number::Kind::Signed ? static_cast<Real>(number.integer)
                                                          : static_cast<Real>(number.Bits());
  const Number again{Number::Kind::Real, 0, static_cast<double>(real)};
  if (CompareNumbers(number, again) != 0) Refuse(record, "would be rounded");
  return real;
}

template <class Type>
inline constexpr bool kIsOptional = false;
template <class Type>
inline constexpr bool kIsOptional<std::optional<Type>> = true;
template <class Type>
inline constexpr bool kIsSysTime = false;
template <class Duration>
inline constexpr bool kIsSysTime<std::chrono::sys_time<Duration>> = true;

/// What numbers may be read as and made of: not bool, not characters.
template <class Type>
concept Integer = std::integral<Type> && !std::same_as<Type, bool> && !std::same_as<Type, char> &&
                  !std::same_as<Type, wchar_t> && !std::same_as<Type, char8_t> &&
                  !std::same_as<Type, char16_t> && !std::same_as<Type, char32_t>;

template <class Type>
Type Convert(const ld_variant& record);

template <class Type>
Type SysTimeOf(const ld_variant& record) {
  const DateTime::Time time = Convert<DateTime>(record);
  const auto converted = std::chrono::time_point_cast<typename Type::duration>(time);
  if (converted != time) Refuse(record, "would be rounded");
  return converted;
}

/// @throws Error without a cell, also for a conversion that would lose something
template <class Type>
Type Convert(const ld_variant& record) {
  if constexpr (kIsOptional<Type>) {
    if (IsNull(record)) return std::nullopt;
    return Convert<typename Type::value_type>(record);
  } else if constexpr (std::same_as<Type, bool>) {
    if (TypeOf(record) != LD_VALUE_TYPE_BOOL) Refuse(record, "is neither true nor false");
    return record.value[0] != 0;
  } else if constexpr (Integer<Type>) {
    return IntegerOf<Type>(record);
  } else if constexpr (std::floating_point<Type>) {
    return RealOf<Type>(record);
  } else if constexpr (std::same_as<Type, std::string>) {
    return DisplayText(record);
  } else if constexpr (std::same_as<Type, std::string_view>) {
    if (!IsText(record)) Refuse(record, "is not a text");
    return TextOf(record);
  } else if constexpr (std::same_as<Type, DateTime>) {
    if (TypeOf(record) != LD_VALUE_TYPE_DATE_TIME) Refuse(record, "is not a date");
    return DateTimeOf(record);
  } else if constexpr (kIsSysTime<Type>) {
    return SysTimeOf<Type>(record);
  } else if constexpr (std::same_as<Type, Json>) {
    if (TypeOf(record) != LD_VALUE_TYPE_JSON_DOCUMENT) Refuse(record, "is not a JSON document");
    return Json(Handle<ld_json_document>::Share(ObjectOf<ld_json_document>(record)));
  } else if constexpr (std::same_as<Type, ld_uuid>) {
    if (TypeOf(record) != LD_VALUE_TYPE_UUID) Refuse(record, "is not a UUID");
    ld_uuid uuid;
    std::memcpy(&uuid, record.value, sizeof uuid);
    return uuid;
  } else {
    static_assert(sizeof(Type) == 0, "A value cannot be read as this type.");
  }
}

// -- Comparison --

inline std::partial_ordering CompareRecords(const ld_variant& left, const ld_variant& right) {
  const bool isLeftNumber = NumberOf(left).kind != Number::Kind::None;
  const bool isRightNumber = NumberOf(right).kind != Number::Kind::None;
  if (isLeftNumber && isRightNumber) return CompareNumbers(NumberOf(left), NumberOf(right));
  if (IsNull(left) && IsNull(right)) return std::partial_ordering::equivalent;
  if (TypeOf(left) != TypeOf(right)) return std::partial_ordering::unordered;
  if (IsText(left)) return TextOf(left) <=> TextOf(right);
  std::int32_t order = 0;
  if (!ld_variant_compare(&left, &right, &order, nullptr)) return std::partial_ordering::unordered;
  return order <=> 0;
}

/// Equal for values that are equal.
inline std::size_t HashRecord(const ld_variant& record) {
  if (IsNull(record)) return 0;
  if (IsText(record)) return std::hash<std::string_view>()(TextOf(record));
  Number number = NumberOf(record);
  if (number.kind == Number::Kind::Real) {
    const Number whole = WholeNumber(number.real);
    if (whole.kind == Number::Kind::None) return std::hash<double>()(number.real);
    number = whole;
  }
  if (number.kind != Number::Kind::None) return std::hash<std::int64_t>()(number.integer);
  return std::hash<std::string>()(DisplayText(record));
}

}  // namespace layerdata::detail
