#pragma once

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

#include "Core/IErrorCode.h"
#include "Core/Ptr.h"
#include "Core/VariantRecord.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IArray.h"
#include "Data/Interfaces/IDateTime.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/IXmlDocument.h"
#include "Data/Structures/Uuid.h"

/// Conversions of a `_VARIANT`: to numbers, to text, to the object it refers to.
/// All failures are std::runtime_error.
namespace Core {

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

/// Toward zero; the smallest integer for what no 64 bits hold, as the processor does.
inline std::int64_t Truncate(double value) {
  return value >= -0x1p63 && value < 0x1p63 ? static_cast<std::int64_t>(value) : INT64_MIN;
}

/// The integer in the field of its own width.
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

/// The value as a 64-bit integer: Double and Float are truncated toward zero,
/// every other value gives the first word of its payload as stored.
/// @throws "Must be value type!", "String cannot be converted to the primitive type!"
inline std::int64_t ToInt64(const _VARIANT& variant) {
  detail::CheckHoldsNumber(variant);
  if (TypeOf(variant) == ValueType::Double) return detail::Truncate(detail::StoredDouble(variant));
  if (TypeOf(variant) == ValueType::Float) return detail::Truncate(detail::StoredFloat(variant));
  return static_cast<std::int64_t>(variant.value[0]);
}

/// The value as a double. The low word of an Int128 is read as signed.
/// @throws as `ToInt64`, and "Invalid value!" for a value that is no number
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

/// A signed 128-bit integer as its two words.
struct WideInteger {
  std::int64_t high;
  std::uint64_t low;
  auto operator<=>(const WideInteger&) const = default;
};

/// The 16 bytes of the payload as they stand.
/// @throws "Must be value type!", "Cannot cast double to Int128! Not
///         implemented", "Cannot cast float to Int128! Not implemented"
inline WideInteger ToWideInteger(const _VARIANT& variant) {
  if (!HasForm(variant, StorageForm::Value)) ThrowMustBeValue();
  if (TypeOf(variant) == ValueType::Double)
    throw std::runtime_error("Cannot cast double to Int128! Not implemented");
  if (TypeOf(variant) == ValueType::Float)
    throw std::runtime_error("Cannot cast float to Int128! Not implemented");
  return {static_cast<std::int64_t>(variant.value[1]), variant.value[0]};
}

/// Whether a Bool is true: its byte is not zero.
/// @throws "Must be value type!"
inline bool ToBool(const _VARIANT& variant) {
  if (!HasForm(variant, StorageForm::Value)) ThrowMustBeValue();
  return (variant.value[0] & 0xFF) != 0;
}

/// The object that a record refers to, as an interface; null for a Null record
/// and for a null address.
/// @throws "Must be reference type! Must implement Core::IObject interface!",
///         "Cannot cast to desired interface: Interface: struct Core::IObject
///         Implementation: " + name
template <class Interface>
Ptr<Interface> GetObject(const _VARIANT& variant) {
  if (IsNull(variant) || IsNullAddress(variant)) return nullptr;
  IObject* object = ReferencedObject(variant);
  if (!object)
    throw std::runtime_error("Must be reference type! Must implement Core::IObject interface!");
  if (auto* target = InterfaceOf<Interface>(object)) return Ptr<Interface>(target);
  throw std::runtime_error("Cannot cast to desired interface: Interface: " + TypeName<IObject>() +
                           " Implementation: " + TypeName<Interface>());
}

namespace detail {

/// The typed getters differ only in the type they check and in their texts.
template <class Interface>
Ptr<Interface> GetTypedObject(const _VARIANT& variant, ValueType type, const char* mustBeType,
                              const char* doesNotImplement) {
  if (IsNull(variant)) return nullptr;
  if (TypeOf(variant) != type) throw std::runtime_error(mustBeType);
  if (IsNullAddress(variant)) return nullptr;
  IObject* object = ReferencedObject(variant);
  if (!object)
    throw std::runtime_error(
        "Must be reference type! Meaning: Must implement Core::IObject interface");
  if (auto* target = InterfaceOf<Interface>(object)) return Ptr<Interface>(target);
  throw std::runtime_error(doesNotImplement);
}

}  // namespace detail

/// The typed getters: null for a Null record or a null reference.
inline Ptr<Data::Interfaces::IJsonDocument> GetJsonDocument(const _VARIANT& variant) {
  return detail::GetTypedObject<Data::Interfaces::IJsonDocument>(
      variant, ValueType::JsonDocument,
      "Must be json type! Meaning: Must implement Data::IJsonDocument interface",
      "Object does not implement Interfaces::IJsonDocument interface!");
}
inline Ptr<Data::Interfaces::IXmlDocument> GetXmlDocument(const _VARIANT& variant) {
  return detail::GetTypedObject<Data::Interfaces::IXmlDocument>(
      variant, ValueType::XmlDocument,
      "Must be xml type! Meaning: Must implement Data::IXmlDocument interface",
      "Object does not implement Interfaces::IXmlDocument interface!");
}
inline Ptr<Data::Interfaces::IDateTime> GetDateTime(const _VARIANT& variant) {
  return detail::GetTypedObject<Data::Interfaces::IDateTime>(
      variant, ValueType::DateTime,
      "Must be datetime type! Meaning: Must implement Data::IDateTime interface",
      "Object does not implement Interfaces::IDateTime interface!");
}
inline Ptr<IErrorCode> GetErrorCode(const _VARIANT& variant) {
  return detail::GetTypedObject<IErrorCode>(
      variant, ValueType::ErrorCode,
      "Must be ErrorCode type! Meaning: Must implement Core::IErrorCode interface",
      "Object does not implement Core::IErrorCode interface!");
}

/// A text as an object; the caller's bytes are copied.
inline Ptr<Data::Interfaces::IString> MakeString(std::string_view utf8) {
  Ptr<Data::Interfaces::IString> text;
  Data_CreateString(text.Receive());
  text->SetUtf8(utf8.data(), utf8.size());
  return text;
}

/// The text as UTF-8, which the string converts itself to; valid until it changes.
/// Empty for an object of the caller's own that returns null for its text.
inline std::string_view Utf8View(Data::Interfaces::IString& text) {
  const char* utf8 = text.GetUtf8();
  if (!utf8) return {};
  return {utf8, static_cast<std::size_t>(text.GetLength())};
}

/// The text of a String, or the content of a JsonDocument or XmlDocument,
/// without copying: valid while the record and the object stay as they are.
/// Empty for a null reference and a document without content.
/// @throws "Must be string, json or xml!"
inline std::string_view GetStringView(const _VARIANT& variant) {
  const ValueType type = TypeOf(variant);
  if (type == ValueType::String && HasForm(variant, StorageForm::Value)) return InlineText(variant);
  Data::Interfaces::IString* text = nullptr;
  if (!HasForm(variant, StorageForm::Reference))
    throw std::runtime_error("Must be string, json or xml!");
  if (type == ValueType::String) {
    text = InterfaceOf<Data::Interfaces::IString>(ReferencedObject(variant));
    if (!text && ReferencedObject(variant))
      throw std::runtime_error("Object does not implement Interfaces::IString interface!");
  } else if (type == ValueType::JsonDocument) {
    if (const auto document = GetJsonDocument(variant)) text = document->GetContent();
  } else if (type == ValueType::XmlDocument) {
    if (const auto document = GetXmlDocument(variant)) text = document->GetContent();
  } else {
    throw std::runtime_error("Must be string, json or xml!");
  }
  return text ? Utf8View(*text) : std::string_view();
}

/// A String as an object: a new one for a text kept by value, null for Null and
/// for a null reference.
/// @throws "Object does not implement Interfaces::IString interface!", "Variant
///         is neither null nor value type string nor reference type string!"
inline Ptr<Data::Interfaces::IString> ToStringObject(const _VARIANT& variant) {
  if (IsNull(variant) || IsNullAddress(variant)) return nullptr;
  if (IObject* object = ReferencedObject(variant)) {
    if (auto* text = InterfaceOf<Data::Interfaces::IString>(object))
      return Ptr<Data::Interfaces::IString>(text);
    throw std::runtime_error("Object does not implement Interfaces::IString interface!");
  }
  if (TypeOf(variant) == ValueType::String && HasForm(variant, StorageForm::Value))
    return MakeString(InlineText(variant));
  throw std::runtime_error(
      "Variant is neither null nor value type string nor reference type string!");
}

namespace detail {

inline std::string IntegerText(auto value) {
  char digits[24];
  return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

/// As printf's "%f", but never with the decimal comma of a locale.
inline std::string RealText(double value) {
  char digits[400];
  return {digits,
          std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 6).ptr};
}

template <class Document>
std::string DocumentText(const Ptr<Document>& document, const char* withoutContent) {
  Data::Interfaces::IString* content = document ? document->GetContent() : nullptr;
  return content ? std::string(Utf8View(*content)) : withoutContent;
}

inline std::string DateTimeText(const _VARIANT& variant) {
  const auto dateTime = GetDateTime(variant);
  if (!dateTime) return {};
  Ptr<Data::Interfaces::IString> text;
  dateTime->ToIso8601(text.Receive());
  return std::string(Utf8View(*text));
}

inline std::string UuidText(const _VARIANT& variant) {
  if (!HasForm(variant, StorageForm::Value)) ThrowMustBeValue();
  Data::Structures::_UUID uuid;
  std::memcpy(&uuid, variant.value, sizeof uuid);
  Ptr<Data::Interfaces::IString> text;
  return Data_UuidToString(&uuid, text.Receive()) ? std::string(Utf8View(*text)) : std::string();
}

/// The address and the stride stand where the stride and the count belong:
/// callers rely on this text as it is.
inline std::string ArrayText(const _VARIANT& variant) {
  const auto array = GetObject<Data::Interfaces::IArray>(variant);
  if (!array) return {};
  return StringFormat("[Array] (Stride: %d, Count: %d)", static_cast<int>(variant.value[0]),
                      static_cast<int>(array->GetStride()));
}

inline std::string ObjectListText(const _VARIANT& variant) {
  const auto list = GetObject<Data::Interfaces::IObjectList>(variant);
  if (!list) return {};
  return list->IsEmpty() ? "[ " : RuntimeTypeName(*list->GetAt(0)) + " ";
}

inline std::string StringListText(const _VARIANT& variant) {
  const auto list = GetObject<Data::Interfaces::IObjectList>(variant);
  if (!list) return {};
  std::string text = "[ ";
  for (std::uint64_t i = 0, count = list->GetCount(); i < count; ++i) {
    const auto item = CastToInterface<Data::Interfaces::IString>(list->GetAt(i));
    text.append("\"").append(Utf8View(*item)).append("\" ");
  }
  return text;
}

}  // namespace detail

/// The display text of any value; never uses locale settings. Empty for values
/// that have none (Unknown, Null, Pointer, undefined).
/// @throws what the conversions above throw for a record that is not what its
///         type says
inline std::string ToText(const _VARIANT& variant) {
  switch (TypeOf(variant)) {
    case ValueType::Int16:
    case ValueType::Int32:
    case ValueType::Int64:
    case ValueType::SByte:
    case ValueType::UInt16:
    case ValueType::UInt32:
    case ValueType::Byte:
      return detail::IntegerText(detail::StoredInteger(variant));
    case ValueType::UInt64:
      return detail::IntegerText(variant.value[0]);
    case ValueType::Int128:
      return "Int128_ToStringNotImplemented";
    case ValueType::UInt128:
      return "UInt128_ToStringNotImplemented";
    case ValueType::Double:
      return detail::RealText(detail::StoredDouble(variant));
    case ValueType::Float:
      return detail::RealText(detail::StoredFloat(variant));
    case ValueType::Bool:
      return ToBool(variant) ? "true" : "false";
    case ValueType::IObject: {
      const auto object = GetObject<IObject>(variant);
      return object ? RuntimeTypeName(*object) : "null";
    }
    case ValueType::Array:
      return detail::ArrayText(variant);
    case ValueType::String:
      return std::string(GetStringView(variant));
    case ValueType::DateTime:
      return detail::DateTimeText(variant);
    case ValueType::JsonDocument:
      return detail::DocumentText(GetJsonDocument(variant), "{}");
    case ValueType::XmlDocument:
      return detail::DocumentText(GetXmlDocument(variant),
                                  "<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    case ValueType::Uuid:
      return detail::UuidText(variant);
    case ValueType::ErrorCode: {
      const auto error = GetErrorCode(variant);
      return error ? std::string(error->GetMessage(), error->GetMessageLength()) : std::string();
    }
    case ValueType::ObjectList:
      return detail::ObjectListText(variant);
    case ValueType::StringList:
      return detail::StringListText(variant);
    default:
      return {};
  }
}

}  // namespace Core
