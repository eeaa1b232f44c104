#pragma once

#include <chrono>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <version>
#if defined(__cpp_lib_format)
#include <format>
#endif

#include "LayerData/Record.h"

namespace layerdata {

/// What can be read of a value and of a cell: the base class of both.
///
/// Conversions are exact or throw `Error`: 1.5 is no `int`, 2^53 + 1 no `double`. Values compare by
/// what they are, so Int64 1 equals Double 1.0; Null equals Null; values of different kinds, such
/// as numbers and texts, are unordered. Equal values have equal hashes.
template <class Self>
class Readable {
 public:
  /// The type of the value.
  ld_value_type Type() const { return static_cast<ld_value_type>(detail::TypeOf(Read())); }
  /// Whether there is no value: Null, or Unknown.
  bool IsNull() const { return detail::IsNull(Read()); }
  /// Whether it is a String.
  bool IsText() const { return detail::IsText(Read()); }
  /// Whether it is an integer that 64 bits hold, or a real number.
  bool IsNumber() const { return detail::NumberOf(Read()).kind != detail::Number::Kind::None; }
  /// Whether there is a value.
  explicit operator bool() const { return !IsNull(); }

  /// The value as a C++ value: an integer, a real number, bool, std::string (the display text of
  /// any value), std::string_view (of a text, valid as long as it), DateTime,
  /// std::chrono::sys_time, Json, ld_uuid, or std::optional of one of them, which is empty for
  /// Null.
  /// @throws Error for Null, for a value of another kind, and where the conversion would lose
  ///         something
  template <class T>
  T As() const {
    return static_cast<const Self*>(this)->template Converted<T>();
  }
  /// As `As`, but with another value for Null.
  template <class T>
  T Or(T forNull) const {
    return IsNull() ? std::move(forNull) : As<T>();
  }
  /// The display text: "" for Null, real numbers in the shortest form that reads back.
  std::string ToText() const { return detail::DisplayText(Read()); }

  friend std::ostream& operator<<(std::ostream& out, const Self& value) {
    return out << value.ToText();
  }

  /// The record of the C interface, valid until the value changes.
  const ld_variant& Read() const { return static_cast<const Self*>(this)->Record(); }
};

/// An owned value of any type of the library.
class Value : public Readable<Value> {
 public:
  /// Null.
  Value() noexcept : record_{LD_VALUE_TYPE_NULL, {0, 0}} {}
  /// Null.
  Value(std::nullopt_t) noexcept : Value() {}
  /// Null.
  Value(std::nullptr_t) noexcept : Value() {}
  /// Bool.
  Value(std::same_as<bool> auto truth) noexcept : record_{LD_VALUE_TYPE_BOOL, {truth, 0}} {}
  /// Int64; UInt64 above its range.
  template <detail::Integer Integer>
  Value(Integer number) noexcept
      : record_{std::in_range<std::int64_t>(number) ? std::uint32_t{LD_VALUE_TYPE_INT64}
                                                    : std::uint32_t{LD_VALUE_TYPE_UINT64},
                {static_cast<std::uint64_t>(number), 0}} {}
  /// Double.
  Value(std::floating_point auto number) noexcept : record_{LD_VALUE_TYPE_DOUBLE, {0, 0}} {
    const auto real = static_cast<double>(number);
    std::memcpy(record_.value, &real, sizeof real);
  }
  /// UTF-8, which ends at its first zero byte.
  Value(std::string_view text) : record_{} {
    detail::Call(ld_variant_from_text, text.data(), std::uint64_t{text.size()}, &record_);
  }
  Value(const std::string& text) : Value(std::string_view(text)) {}
  Value(const char* text) : Value(std::string_view(text ? text : "")) {}
  /// DateTime.
  Value(const DateTime& time) : record_{} { TakeObject(time.ToObject().Get()); }
  /// DateTime.
  template <class Duration>
  requires std::convertible_to<Duration, DateTime::Ticks> Value(
      std::chrono::sys_time<Duration> time)
      : Value(DateTime(time)) {}
  /// JsonDocument, which is shared.
  Value(const Json& json) : record_{} { TakeObject(json.Get()); }
  /// Uuid.
  Value(const ld_uuid& uuid) : record_{} { detail::Call(ld_variant_from_uuid, &uuid, &record_); }
  /// Null if there is no value.
  template <class T>
  Value(const std::optional<T>& value) : Value() {
    if (value) *this = Value(*value);
  }
  /// A copy of a record of the C interface.
  explicit Value(const ld_variant& record) : record_{} {
    detail::Call(ld_variant_copy, &record, &record_);
  }
  /// The value of a cell.
  template <class Other>
  requires(!std::same_as<Other, Value>) Value(const Readable<Other>& other) : Value(other.Read()) {}

  Value(const Value& other) : Value(other.record_) {}
  Value(Value&& other) noexcept : record_(std::exchange(other.record_, Value::NullRecord())) {}
  Value& operator=(Value other) noexcept {
    std::swap(record_, other.record_);
    return *this;
  }
  ~Value() { ld_variant_clear(&record_); }

  /// The record of the C interface, valid until the value changes.
  const ld_variant& Record() const noexcept { return record_; }
  /// As `As`.
  template <class T>
  T Converted() const {
    return detail::Convert<T>(record_);
  }

 private:
  static constexpr ld_variant NullRecord() noexcept { return {LD_VALUE_TYPE_NULL, {0, 0}}; }
  void TakeObject(void* object) { detail::Call(ld_variant_from_object, object, &record_); }

  ld_variant record_;
};

/// Compares values and cells by what they are; see `Readable`.
template <class Left, class Right>
std::partial_ordering operator<=>(const Readable<Left>& left, const Readable<Right>& right) {
  return detail::CompareRecords(left.Read(), right.Read());
}
/// Whether they are equal; unordered values are not.
template <class Left, class Right>
bool operator==(const Readable<Left>& left, const Readable<Right>& right) {
  return (left <=> right) == 0;
}
/// Compares with anything that a value can be made of: `row["name"] == "Ann"`.
template <class Left, class Right>
requires std::constructible_from<Value, const Right&> &&
    (!std::derived_from<Right, Readable<Right>>)std::partial_ordering
    operator<=>(const Readable<Left>& left, const Right& right) {
  return left <=> Value(right);
}
template <class Left, class Right>
requires std::constructible_from<Value, const Right&> &&
    (!std::derived_from<Right, Readable<Right>>)bool
    operator==(const Readable<Left>& left, const Right& right) {
  return left == Value(right);
}

}  // namespace layerdata

template <>
struct std::hash<layerdata::Value> {
  std::size_t operator()(const layerdata::Value& value) const {
    return layerdata::detail::HashRecord(value.Record());
  }
};

template <>
struct std::hash<layerdata::DateTime> {
  std::size_t operator()(const layerdata::DateTime& time) const noexcept {
    return std::hash<std::int64_t>()(time.ToSysTime().time_since_epoch().count());
  }
};

#if defined(__cpp_lib_format)
namespace layerdata::detail {

/// Formats the display text with the options of texts, as in "{:>20}".
template <class T>
struct TextFormatter : std::formatter<std::string_view> {
  auto format(const T& value, auto& context) const {
    return std::formatter<std::string_view>::format(value.ToText(), context);
  }
};

}  // namespace layerdata::detail

template <>
struct std::formatter<layerdata::Value> : layerdata::detail::TextFormatter<layerdata::Value> {};
template <>
struct std::formatter<layerdata::DateTime> : layerdata::detail::TextFormatter<layerdata::DateTime> {
};
#endif
