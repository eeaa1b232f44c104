#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <utility>

#include "Core/VariantConversions.h"

namespace Core {

struct NullValue {};
/// The null value: `row->SetCell("name", Core::Null)`.
inline constexpr NullValue Null{};

/// The type that refers to objects of an interface.
template <class Interface>
inline constexpr ValueType kReferenceType = ValueType::IObject;
template <>
inline constexpr ValueType kReferenceType<Data::Interfaces::IArray> = ValueType::Array;
template <>
inline constexpr ValueType kReferenceType<Data::Interfaces::IString> = ValueType::String;
template <>
inline constexpr ValueType kReferenceType<Data::Interfaces::IDateTime> = ValueType::DateTime;
template <>
inline constexpr ValueType kReferenceType<Data::Interfaces::IJsonDocument> =
    ValueType::JsonDocument;
template <>
inline constexpr ValueType kReferenceType<Data::Interfaces::IXmlDocument> = ValueType::XmlDocument;
template <>
inline constexpr ValueType kReferenceType<IErrorCode> = ValueType::ErrorCode;
template <>
inline constexpr ValueType kReferenceType<Data::Interfaces::IObjectList> = ValueType::ObjectList;

namespace detail {

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

/// A `_VARIANT` that owns what it holds: copying adds a reference, destruction
/// gives it back. It is the same 24 bytes, so `&value` goes wherever a
/// `_VARIANT*` is asked for, to be read or to be filled.
///
///     Core::Variant value;
///     if (dictionary->Get(&key, &value, error.Receive())) use(value.As<double>());
class Variant : public _VARIANT {
 public:
  /// Unknown: a zeroed record.
  Variant() noexcept : _VARIANT{} {}
  Variant(NullValue) noexcept : _VARIANT(MakeNull()) {}
  template <std::integral T>
  Variant(T value) noexcept
      : _VARIANT(MakeInteger(detail::IntegerType<T>(), static_cast<std::int64_t>(value))) {}
  Variant(double value) noexcept : _VARIANT(MakeDouble(value)) {}
  Variant(float value) noexcept : _VARIANT(MakeFloat(value)) {}
  /// Text of up to 16 bytes is kept in the record, longer text in an `IString`.
  Variant(std::string_view utf8)
      : _VARIANT(FitsInline(utf8) ? MakeInlineText(utf8)
                                  : MakeReference(ValueType::String, MakeString(utf8).Detach())) {}
  Variant(const char* utf8) : Variant(std::string_view(utf8)) {}
  Variant(const std::string& utf8) : Variant(std::string_view(utf8)) {}
  Variant(const Data::Structures::_UUID& uuid) noexcept
      : _VARIANT{MakeTag(ValueType::Uuid, StorageForm::Value), {0, 0}} {
    std::memcpy(value, &uuid, sizeof uuid);
  }
  template <class Interface>
  Variant(Ptr<Interface> object) noexcept
      : _VARIANT(MakeReference(kReferenceType<Interface>, object.Detach())) {}
  /// A list whose entries are all strings.
  static Variant StringList(Ptr<Data::Interfaces::IObjectList> list) noexcept {
    return Adopt(MakeReference(ValueType::StringList, list.Detach()));
  }

  /// A copy that shares the object of any record.
  explicit Variant(const _VARIANT& other) : _VARIANT(other) { AddReferenceOf(*this); }
  Variant(const Variant& other) : Variant(static_cast<const _VARIANT&>(other)) {}
  Variant(Variant&& other) noexcept : _VARIANT(other.Detach()) {}
  Variant& operator=(Variant other) noexcept {
    std::swap(static_cast<_VARIANT&>(*this), static_cast<_VARIANT&>(other));
    return *this;
  }
  ~Variant() { ReleaseReferenceOf(*this); }

  /// Takes over a record together with the reference it holds.
  [[nodiscard]] static Variant Adopt(const _VARIANT& record) noexcept {
    Variant result;
    static_cast<_VARIANT&>(result) = record;
    return result;
  }
  /// Hands the record and its reference to the caller; this value becomes Unknown.
  [[nodiscard]] _VARIANT Detach() noexcept {
    return std::exchange(static_cast<_VARIANT&>(*this), _VARIANT{});
  }

  ValueType Type() const noexcept { return TypeOf(*this); }
  bool IsNull() const noexcept { return Core::IsNull(*this); }
  /// The value as a C++ type: any integer or bool, double, float, std::string
  /// (the display text of any value), std::string_view (of a text; valid while
  /// this value lives), or `Ptr<Interface>`.
  /// @throws std::runtime_error as the conversion of that kind
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

/// A record as a C++ value, see `Variant::As`.
template <class T>
T As(const _VARIANT& variant) {
  return detail::As<T>::From(variant);
}

template <class T>
T Variant::As() const {
  return Core::As<T>(*this);
}

}  // namespace Core
