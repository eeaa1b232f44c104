#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "Core/Failures.h"
#include "Core/IObject.h"
#include "Core/ValueTypes.h"
#include "Data/Structures/Variant.h"

/// The layout of a `_VARIANT`: reading and writing its tag and payload, and copying a record.
namespace Core {

using Data::Structures::_VARIANT;
static_assert(sizeof(_VARIANT) == 24 && alignof(_VARIANT) == 8);

/// The longest text, in bytes, that a record itself holds.
inline constexpr std::size_t kInlineTextCapacity = 16;

/// The tag of a record: the type in its lower half, the storage form in its upper half.
constexpr std::uint32_t MakeTag(ValueType type, StorageForm form) {
  return static_cast<std::uint32_t>(type) | static_cast<std::uint32_t>(form) << 16;
}

/// The type of the value.
constexpr ValueType TypeOf(const _VARIANT& variant) {
  return static_cast<ValueType>(variant.type & 0xFFFF);
}
/// Whether the value is stored in this way.
constexpr bool HasForm(const _VARIANT& variant, StorageForm form) {
  return variant.type >> 16 == static_cast<std::uint32_t>(form);
}
/// Whether the record is the null value. A null reference of another type is not.
constexpr bool IsNull(const _VARIANT& variant) { return TypeOf(variant) == ValueType::Null; }

/// The object of a record in reference form. Null for any other record and for an undefined one,
/// whose payload has no meaning.
inline IObject* ReferencedObject(const _VARIANT& variant) {
  const bool refers = HasForm(variant, StorageForm::Reference) && IsDefined(TypeOf(variant));
  return refers ? reinterpret_cast<IObject*>(static_cast<std::uintptr_t>(variant.value[0]))
                : nullptr;
}

/// Whether the record is in reference or pointer form with a null address.
constexpr bool IsNullAddress(const _VARIANT& variant) {
  return variant.value[0] == 0 &&
         (HasForm(variant, StorageForm::Reference) || HasForm(variant, StorageForm::Pointer));
}

/// The text of a String in value form: up to the first zero byte, at most 16.
inline std::string_view InlineText(const _VARIANT& variant) {
  const char* text = reinterpret_cast<const char*>(variant.value);
  const void* end = std::memchr(text, '\0', kInlineTextCapacity);
  return {text, end ? static_cast<std::size_t>(static_cast<const char*>(end) - text)
                    : kInlineTextCapacity};
}

/// Whether a text can be stored in value form: it is short and contains no zero byte.
inline bool FitsInline(std::string_view text) {
  return text.size() <= kInlineTextCapacity && text.find('\0') == std::string_view::npos;
}

// -- Making records --

/// The null value.
constexpr _VARIANT MakeNull() { return {MakeTag(ValueType::Null, StorageForm::Value), {0, 0}}; }

/// An integer or Bool.
/// @param word  sign- or zero-extended from the type's width
constexpr _VARIANT MakeInteger(ValueType type, std::int64_t word) {
  return {MakeTag(type, StorageForm::Value), {static_cast<std::uint64_t>(word), 0}};
}

/// A Double.
inline _VARIANT MakeDouble(double value) {
  return {MakeTag(ValueType::Double, StorageForm::Value), {std::bit_cast<std::uint64_t>(value), 0}};
}

/// A Float.
inline _VARIANT MakeFloat(float value) {
  return {MakeTag(ValueType::Float, StorageForm::Value), {std::bit_cast<std::uint32_t>(value), 0}};
}

/// A String in value form.
/// @pre FitsInline(text)
inline _VARIANT MakeInlineText(std::string_view text) {
  const char* const begin = text.data();
  const std::size_t size = text.size();
  const auto word = [=]<class Word>(Word part, std::size_t at) -> std::uint64_t {
    std::memcpy(&part, begin + at, sizeof part);
    return part;
  };
  // Loads of fixed size, which overlap if the text's size is not a multiple of theirs.
  static_assert(std::endian::native == std::endian::little);
  std::uint64_t first = 0, second = 0;
  if (size > 8) {
    first = word(std::uint64_t{}, 0);
    second = word(std::uint64_t{}, size - 8) >> 8 * (16 - size);
  } else if (size >= 4) {
    first = word(std::uint32_t{}, 0) | word(std::uint32_t{}, size - 4) << 8 * (size - 4);
  } else if (size > 0) {
    for (const std::size_t at : {std::size_t{0}, size / 2, size - 1})
      first |= word(std::uint8_t{}, at) << 8 * at;
  }
  return {MakeTag(ValueType::String, StorageForm::Value), {first, second}};
}

/// A record in reference form that takes over the caller's reference.
inline _VARIANT MakeReference(ValueType type, IObject* object) {
  return {MakeTag(type, StorageForm::Reference),
          {static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(object)), 0}};
}

// -- Copying --

/// Adds a reference to the object of a record, if it refers to one.
inline void AddReferenceOf(const _VARIANT& variant) {
  if (IObject* object = ReferencedObject(variant)) object->AddReference();
}
/// Releases a reference to the object of a record, if it refers to one.
inline void ReleaseReferenceOf(const _VARIANT& variant) {
  if (IObject* object = ReferencedObject(variant)) object->Release();
}

/// Copies a record over an initialised one. Adds a reference to the new object first and releases
/// the old object last, so a record may be copied onto itself and `Release` may call back. An
/// undefined record is copied as plain bytes.
/// @throws std::runtime_error "Cannot be nullptr!"
inline void CopyVariant(const _VARIANT* source, _VARIANT* destination) {
  if (!source || !destination) ThrowCannotBeNull();
  const _VARIANT copy = *source;
  AddReferenceOf(copy);
  const _VARIANT old = *destination;
  *destination = copy;
  ReleaseReferenceOf(old);
}

/// Rejects an undefined record: its type code is above 27.
/// @throws std::runtime_error "Variant type is undefined! Did you forget to zero out the VARIANT
///         structure? It appears uninitialized!"
inline void CheckDefined(const _VARIANT& variant) {
  if (!IsDefined(TypeOf(variant)))
    throw std::runtime_error(
        "Variant type is undefined! Did you forget to zero out the VARIANT structure? It appears "
        "uninitialized!");
}

/// Rejects a null or undefined record.
/// @throws std::runtime_error "Cannot be nullptr!", or as `CheckDefined`
inline void CheckInitialized(const _VARIANT* variant) {
  if (!variant) ThrowCannotBeNull();
  CheckDefined(*variant);
}

/// As `CheckInitialized`, with the message of an argument check.
/// @throws std::runtime_error "Pointer of struct Data::Structures::_VARIANT must not be null!", or
///         as `CheckDefined`
inline void CheckRecord(const _VARIANT* argument) {
  CheckArgument(argument);
  CheckDefined(*argument);
}

}  // namespace Core
