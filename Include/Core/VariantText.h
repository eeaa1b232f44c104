#pragma once

#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>

#include "Core/VariantNumbers.h"
#include "Core/VariantObjects.h"
#include "Data/Interfaces/IArray.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Structures/Uuid.h"

/// The display text of a `_VARIANT`.
namespace Core {

namespace detail {

inline std::string IntegerText(auto value) {
  char digits[24];
  return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

/// Like printf's "%f", but independent of the locale.
inline std::string RealText(double value) {
  char digits[400];
  return {digits,
          std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 6).ptr};
}

template <class Document>
std::string DocumentText(const Ptr<Document>& document, const char* withoutContent) {
  const Ptr<Data::Interfaces::IString> content(document ? document->GetContent() : nullptr);
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

/// Prints the address as the stride and the stride as the count. Callers depend on this.
inline std::string ArrayText(const _VARIANT& variant) {
  const auto array = GetObject<Data::Interfaces::IArray>(variant);
  if (!array) return {};
  return StringFormat("[Array] (Stride: %d, Count: %d)",
                      static_cast<int>(reinterpret_cast<std::uintptr_t>(array.Get())),
                      static_cast<int>(array->GetStride()));
}

inline std::string ObjectListText(const _VARIANT& variant) {
  const auto list = GetObject<Data::Interfaces::IObjectList>(variant);
  if (!list) return {};
  if (list->IsEmpty()) return "[ ";
  const Ptr<IObject> first(list->GetAt(0));
  return RuntimeTypeName(*first) + " ";
}

inline std::string StringListText(const _VARIANT& variant) {
  const auto list = GetObject<Data::Interfaces::IObjectList>(variant);
  if (!list) return {};
  std::string text = "[ ";
  const std::uint64_t count = list->GetCount();
  // The items may be the caller's objects, which may change the list while they are read.
  for (std::uint64_t i = 0; i < count && i < list->GetCount(); ++i) {
    const auto item = CastToInterface<Data::Interfaces::IString>(list->GetAt(i));
    text.append("\"").append(Utf8View(*item)).append("\" ");
  }
  return text;
}

}  // namespace detail

/// The display text of a value, independent of the locale. Empty for the types Unknown, Invalid,
/// Null, Pointer and Reserved, and for undefined records.
/// @throws what the conversions throw if the record's form or object does not fit its type,
///         std::bad_alloc
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
    case ValueType::String: {
      const Ptr<IObject> held(ReferencedObject(variant));
      return std::string(GetStringView(variant));
    }
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
      return error ? std::string(MessageView(*error)) : std::string();
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
