#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Documents/RapidJson.h"

/// Typed access to the members of a layer schema document. A missing or mistyped
/// member is a failure that names its key.
namespace Data {

[[noreturn]] inline void ThrowWrongMember(std::string_view key, const char* problem) {
  throw std::runtime_error("Member \"" + std::string(key) + "\" of the layer schema document " +
                           problem);
}

/// The member, or null if it is missing; a JSON null counts as missing.
inline const impl::JsonValue* FindMember(const impl::JsonValue& object, std::string_view key) {
  const impl::JsonValue name(rapidjson::StringRef(key.data(), key.size()));
  const auto member = object.FindMember(name);
  return member != object.MemberEnd() && !member->value.IsNull() ? &member->value : nullptr;
}

inline const impl::JsonValue& GetMember(const impl::JsonValue& object, std::string_view key) {
  const impl::JsonValue* member = FindMember(object, key);
  if (!member) ThrowWrongMember(key, "is missing!");
  return *member;
}

inline const impl::JsonValue& AsObject(const impl::JsonValue& value, std::string_view key) {
  if (!value.IsObject()) ThrowWrongMember(key, "must be an object!");
  return value;
}

/// An element of the array with that key.
inline const impl::JsonValue& AsElement(const impl::JsonValue& value, std::string_view key) {
  if (!value.IsObject()) ThrowWrongMember(key, "must hold objects!");
  return value;
}

inline const impl::JsonValue& AsArray(const impl::JsonValue& value, std::string_view key) {
  if (!value.IsArray()) ThrowWrongMember(key, "must be an array!");
  return value;
}

inline std::string_view AsText(const impl::JsonValue& value, std::string_view key) {
  if (!value.IsString()) ThrowWrongMember(key, "must be a string!");
  return {value.GetString(), value.GetStringLength()};
}

inline std::int32_t AsInteger(const impl::JsonValue& value, std::string_view key) {
  if (!value.IsInt()) ThrowWrongMember(key, "must be an integer of 32 bits!");
  return value.GetInt();
}

inline bool AsFlag(const impl::JsonValue& value, std::string_view key) {
  if (!value.IsBool()) ThrowWrongMember(key, "must be true or false!");
  return value.GetBool();
}

inline std::string_view GetText(const impl::JsonValue& object, std::string_view key) {
  return AsText(GetMember(object, key), key);
}

/// Empty if the member is missing.
inline std::string_view GetOptionalText(const impl::JsonValue& object, std::string_view key) {
  const impl::JsonValue* member = FindMember(object, key);
  return member ? AsText(*member, key) : std::string_view();
}

}  // namespace Data
