#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <utility>

#include "Core/VariantConversions.h"

namespace Core {

/// The type of `Null`.
struct NullValue {};
/// The null value: `row.Set("name", Core::Null)`.
inline constexpr NullValue Null{};

namespace detail {

/// The type code of an interface, or `IObject` if it has none of its own.
template <class Object>
constexpr ValueType ReferenceType() {
  if constexpr (std::derived_from<Object, Data::Interfaces::IArray>) return ValueType::Array;
  if constexpr (std::derived_from<Object, Data::Interfaces::IString>) return ValueType::String;
  if constexpr (std::derived_from<Object, Data::Interfaces::IDateTime>) return ValueType::DateTime;
  if constexpr (std::derived_from<Object, Data::Interfaces::IJsonDocument>)
    return ValueType::JsonDocument;
  if constexpr (std::derived_from<Object, Data::Interfaces::IXmlDocument>)
    return ValueType::XmlDocument;
  if constexpr (std::derived_from<Object, IErrorCode>) return ValueType::ErrorCode;
  if constexpr (std::derived_from<Object, Data::Interfaces::IObjectList>)
    return ValueType::ObjectList;
  return ValueType::IObject;
}

template <std::integral T>
constexpr ValueType IntegerType() {
  if constexpr (std::same_as<T, bool>) return ValueType::Bool;
  constexpr bool isSigned = std::is_signed_v<T>;
  if constexpr (sizeof(T) == 1) return isSigned ? ValueType::SByte : ValueType::Byte;
  if constexpr (sizeof(T) == 2) return isSigned ? ValueType::Int16 : ValueType::UInt16;
  if constexpr (sizeof(T) == 4) return isSigned ? ValueType::Int32 : ValueType::UInt32;
  return isSigned ? ValueType::Int64 : ValueType::UInt64;
}

}  // namespace detail

/// A `_VARIANT` that owns the object it refers to: copying adds a reference, destruction releases
/// it. The layout is that of `_VARIANT`, so `&value` can be passed for any `_VARIANT*`. Threads: as
/// for `Ptr`.
///
///     Core::Variant value;
///     if (dictionary->Get(&key, &value, error.Receive())) use(value.As<double>());
class Variant : public _VARIANT {
 public:
  /// Unknown: a zeroed record.
  Variant() noexcept : _VARIANT{} {}
  /// The null value.
  Variant(NullValue) noexcept : _VARIANT(MakeNull()) {}
  /// A number of the same width, or a Bool.
  template <std::integral T>
  Variant(T value) noexcept
      : _VARIANT(MakeInteger(detail::IntegerType<T>(), static_cast<std::int64_t>(value))) {}
  Variant(double value) noexcept : _VARIANT(MakeDouble(value)) {}
  Variant(float value) noexcept : _VARIANT(MakeFloat(value)) {}
  /// Text of up to 16 bytes without zero bytes is stored in the record, other text in an `IString`.
  /// A `const char*` must not be null.
  /// @throws std::bad_alloc
  Variant(std::string_view utf8)
      : _VARIANT(FitsInline(utf8) ? MakeInlineText(utf8)
                                  : MakeReference(ValueType::String, MakeString(utf8).Detach())) {}
  Variant(const char* utf8) : Variant(std::string_view(utf8)) {}
  Variant(const std::string& utf8) : Variant(std::string_view(utf8)) {}
  /// A Uuid.
  Variant(const Data::Structures::_UUID& uuid) noexcept
      : _VARIANT{MakeTag(ValueType::Uuid, StorageForm::Value), {0, 0}} {
    std::memcpy(value, &uuid, sizeof uuid);
  }
  /// The type is that of the interface, or `IObject` for an interface without a type code. A null
  /// pointer gives a null reference.
  template <class Object>
  Variant(Ptr<Object> object) noexcept
      : _VARIANT(MakeReference(detail::ReferenceType<Object>(), object.Detach())) {}
  /// A list of strings.
  static Variant StringList(Ptr<Data::Interfaces::IObjectList> list) noexcept {
    return Adopt(MakeReference(ValueType::StringList, list.Detach()));
  }

  /// Copies a record and adds a reference to its object.
  explicit Variant(const _VARIANT& other) : _VARIANT(other) { AddReferenceOf(*this); }
  Variant(const Variant& other) : Variant(static_cast<const _VARIANT&>(other)) {}
  Variant(Variant&& other) noexcept : _VARIANT(other.Detach()) {}
  Variant& operator=(Variant other) noexcept {
    std::swap(static_cast<_VARIANT&>(*this), static_cast<_VARIANT&>(other));
    return *this;
  }
  ~Variant() { ReleaseReferenceOf(*this); }

  /// Takes over a record and the reference that it holds.
  [[nodiscard]] static Variant Adopt(const _VARIANT& record) noexcept {
    Variant result;
    static_cast<_VARIANT&>(result) = record;
    return result;
  }
  /// Passes the record and its reference to the caller; this value becomes Unknown.
  [[nodiscard]] _VARIANT Detach() noexcept {
    return std::exchange(static_cast<_VARIANT&>(*this), _VARIANT{});
  }

  /// The type of the value.
  ValueType Type() const noexcept { return TypeOf(*this); }
  /// Whether this is the null value. A null reference of another type is not.
  bool IsNull() const noexcept { return Core::IsNull(*this); }
  /// The value as a C++ type:
  ///   - bool, any integer type (as `ToInt64`, then converted), double or float (as `ToDouble`);
  ///   - std::string: the display text, as `ToText`;
  ///   - std::string_view: as `GetStringView`; valid while this value and its object are unchanged;
  ///   - `Ptr<Interface>`: as `GetObject`.
  /// @throws what the named conversion throws
  template <class T>
  T As() const;
};
static_assert(sizeof(Variant) == sizeof(_VARIANT));

namespace detail {

template <class T>
struct As;

template <>
struct As<bool> {
  static bool From(const _VARIANT& variant) { return ToInt64(variant) != 0; }
};
template <std::integral T>
struct As<T> {
  static T From(const _VARIANT& variant) { return static_cast<T>(ToInt64(variant)); }
};
template <std::floating_point T>
struct As<T> {
  static T From(const _VARIANT& variant) { return static_cast<T>(ToDouble(variant)); }
};
template <>
struct As<std::string> {
  static std::string From(const _VARIANT& variant) { return ToText(variant); }
};
template <>
struct As<std::string_view> {
  static std::string_view From(const _VARIANT& variant) { return GetStringView(variant); }
};
template <class Interface>
struct As<Ptr<Interface>> {
  static Ptr<Interface> From(const _VARIANT& variant) { return GetObject<Interface>(variant); }
};

}  // namespace detail

/// A record as a C++ value; see `Variant::As`.
template <class T>
T As(const _VARIANT& variant) {
  return detail::As<T>::From(variant);
}

template <class T>
T Variant::As() const {
  return Core::As<T>(*this);
}

}  // namespace Core
