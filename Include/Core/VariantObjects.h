#pragma once

#include <cstdint>
#include <stdexcept>
#include <string_view>

#include "Core/IErrorCode.h"
#include "Core/Ptr.h"
#include "Core/VariantRecord.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IDateTime.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/IXmlDocument.h"

/// Converts a `_VARIANT` to the object that it refers to, or to its text. All failures are
/// std::runtime_error unless stated otherwise.
namespace Core {

/// The object that a record refers to, as the given interface. Null for a Null record and for a
/// null address.
/// @throws "Must be reference type! Must implement Core::IObject interface!", "Cannot cast to
///         desired interface: Interface: struct Core::IObject Implementation: " + type
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

/// The typed getters differ only in the type that they check and in their messages.
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

/// The JSON document of a record. The typed getters give null for a Null record and for a null
/// address.
/// @throws the two messages that each names, and "Must be reference type! Meaning: Must implement
///         Core::IObject interface" for a record that is not in reference form
inline Ptr<Data::Interfaces::IJsonDocument> GetJsonDocument(const _VARIANT& variant) {
  return detail::GetTypedObject<Data::Interfaces::IJsonDocument>(
      variant, ValueType::JsonDocument,
      "Must be json type! Meaning: Must implement Data::IJsonDocument interface",
      "Object does not implement Interfaces::IJsonDocument interface!");
}
/// The XML document of a record; see `GetJsonDocument`.
inline Ptr<Data::Interfaces::IXmlDocument> GetXmlDocument(const _VARIANT& variant) {
  return detail::GetTypedObject<Data::Interfaces::IXmlDocument>(
      variant, ValueType::XmlDocument,
      "Must be xml type! Meaning: Must implement Data::IXmlDocument interface",
      "Object does not implement Interfaces::IXmlDocument interface!");
}
/// The date-time of a record; see `GetJsonDocument`.
inline Ptr<Data::Interfaces::IDateTime> GetDateTime(const _VARIANT& variant) {
  return detail::GetTypedObject<Data::Interfaces::IDateTime>(
      variant, ValueType::DateTime,
      "Must be datetime type! Meaning: Must implement Data::IDateTime interface",
      "Object does not implement Interfaces::IDateTime interface!");
}
/// The error of a record; see `GetJsonDocument`.
inline Ptr<IErrorCode> GetErrorCode(const _VARIANT& variant) {
  return detail::GetTypedObject<IErrorCode>(
      variant, ValueType::ErrorCode,
      "Must be ErrorCode type! Meaning: Must implement Core::IErrorCode interface",
      "Object does not implement Core::IErrorCode interface!");
}

/// A new string with a copy of the text.
/// @throws std::bad_alloc
inline Ptr<Data::Interfaces::IString> MakeString(std::string_view utf8) {
  Ptr<Data::Interfaces::IString> text;
  Data_CreateString(text.Receive());
  text->SetUtf8(utf8.data(), utf8.size());
  return text;
}

/// The text as UTF-8, to which the string converts itself. Valid until the string changes. Empty
/// for a caller's object that returns null for its text.
/// @throws std::bad_alloc
inline std::string_view Utf8View(Data::Interfaces::IString& text) {
  const char* utf8 = text.GetUtf8();
  if (!utf8) return {};
  return {utf8, static_cast<std::size_t>(text.GetLength())};
}

/// The message of an error. Empty for a caller's object that returns null for its message.
inline std::string_view MessageView(IErrorCode& error) {
  const char* message = error.GetMessage();
  if (!message) return {};
  return {message, static_cast<std::size_t>(error.GetMessageLength())};
}

/// The text of a String, or the content of a JsonDocument or XmlDocument, as UTF-8. It is not
/// copied: it is valid while the record and its object are unchanged. No reference is held: the
/// record must keep the object alive during the call. Empty for a null reference and for a document
/// without content.
/// @throws "Must be string, json or xml!", "Object does not implement Interfaces::IString
///         interface!", what `GetJsonDocument` and `GetXmlDocument` throw, std::bad_alloc
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

/// The string object of a String, or a new one for a text stored by value. Null for a Null record
/// and for a null address.
/// @throws "Object does not implement Interfaces::IString interface!", "Variant is neither null nor
///         value type string nor reference type string!", std::bad_alloc
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

}  // namespace Core
