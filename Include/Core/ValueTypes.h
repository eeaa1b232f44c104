#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "Data/Structures/ValueType.h"

namespace Core {

using Data::Structures::ValueType;

/// How a record stores its value: bits 16 to 31 of the tag.
enum class StorageForm : std::uint32_t { Value = 0, Reference = 1, Pointer = 2 };

/// How values of a type are converted, compared and hashed.
enum class ValueKind : std::uint8_t {
  None,
  SignedInteger,
  UnsignedInteger,
  WideInteger,  ///< uses all 16 bytes of the payload
  Real,
  Bool,
  Address,
  Object,  ///< any object; compared by address
  List,    ///< as Object, but comparable in every storage form
  Array,
  Text,
  DateTime,
  Document,
  Error
};

/// The properties of a type.
struct ValueTypeTraits {
  std::string_view name;  ///< as users see it
  ValueKind kind;         ///< how they are converted, compared and hashed
  StorageForm form;       ///< the usual form; short texts are stored by value
};

/// The properties of each type, indexed by its code.
inline constexpr std::array<ValueTypeTraits, 28> kValueTypes = {{
    {"Unknown", ValueKind::None, StorageForm::Value},
    {"Invalid", ValueKind::None, StorageForm::Value},
    {"Null", ValueKind::None, StorageForm::Value},
    {"Int16", ValueKind::SignedInteger, StorageForm::Value},
    {"Int32", ValueKind::SignedInteger, StorageForm::Value},
    {"Int64", ValueKind::SignedInteger, StorageForm::Value},
    {"Int128", ValueKind::WideInteger, StorageForm::Value},
    {"UInt16", ValueKind::UnsignedInteger, StorageForm::Value},
    {"UInt32", ValueKind::UnsignedInteger, StorageForm::Value},
    {"UInt64", ValueKind::UnsignedInteger, StorageForm::Value},
    {"UInt128", ValueKind::WideInteger, StorageForm::Value},
    {"Byte", ValueKind::UnsignedInteger, StorageForm::Value},
    {"SByte", ValueKind::SignedInteger, StorageForm::Value},
    {"Double", ValueKind::Real, StorageForm::Value},
    {"Float", ValueKind::Real, StorageForm::Value},
    {"Bool", ValueKind::Bool, StorageForm::Value},
    {"Pointer", ValueKind::Address, StorageForm::Pointer},
    {"IObject", ValueKind::Object, StorageForm::Reference},
    {"Array", ValueKind::Array, StorageForm::Reference},
    {"String", ValueKind::Text, StorageForm::Reference},
    {"DateTime", ValueKind::DateTime, StorageForm::Reference},
    {"JsonDocument", ValueKind::Document, StorageForm::Reference},
    {"XmlDocument", ValueKind::Document, StorageForm::Reference},
    {"Uuid", ValueKind::WideInteger, StorageForm::Value},
    {"ErrorCode", ValueKind::Error, StorageForm::Reference},
    {"ObjectList", ValueKind::List, StorageForm::Reference},
    {"StringList", ValueKind::List, StorageForm::Reference},
    {"Reserved", ValueKind::None, StorageForm::Value},
}};

/// Whether the code is that of a type.
constexpr bool IsDefined(ValueType type) {
  return static_cast<std::uint32_t>(type) < kValueTypes.size();
}

/// The display name of a type, zero-terminated. Empty for codes above 27.
constexpr std::string_view GetValueTypeName(ValueType type) {
  return IsDefined(type) ? kValueTypes[static_cast<std::uint32_t>(type)].name : "";
}

/// How values of a type are converted, compared and hashed; None for codes above 27.
constexpr ValueKind KindOf(ValueType type) {
  return IsDefined(type) ? kValueTypes[static_cast<std::uint32_t>(type)].kind : ValueKind::None;
}

/// Whether the type is an integer, a floating-point type, Bool or Uuid.
constexpr bool IsPrimitive(ValueType type) {
  const ValueKind kind = KindOf(type);
  return kind >= ValueKind::SignedInteger && kind <= ValueKind::Bool;
}

/// Whether values can have the type: any defined type but Unknown, Invalid, Null and Reserved.
constexpr bool IsConcrete(ValueType type) { return KindOf(type) != ValueKind::None; }

}  // namespace Core
