#pragma once

#include <stdint.h>

namespace Data::Structures {

/// The type of the value in a `_VARIANT`. It is 32 bits wide in every signature and record.
enum class ValueType : uint32_t {
  Unknown = 0,  ///< the type of a zeroed record
  Invalid = 1,
  Null = 2,  ///< the null value
  Int16 = 3,
  Int32 = 4,
  Int64 = 5,
  Int128 = 6,
  UInt16 = 7,
  UInt32 = 8,
  UInt64 = 9,
  UInt128 = 10,
  Byte = 11,   ///< unsigned, 8 bits
  SByte = 12,  ///< signed, 8 bits
  Double = 13,
  Float = 14,
  Bool = 15,
  Pointer = 16,       ///< a raw address
  IObject = 17,       ///< Core::IObject
  Array = 18,         ///< Data::Interfaces::IArray
  String = 19,        ///< up to 16 bytes inline, or Data::Interfaces::IString
  DateTime = 20,      ///< Data::Interfaces::IDateTime
  JsonDocument = 21,  ///< Data::Interfaces::IJsonDocument
  XmlDocument = 22,   ///< Data::Interfaces::IXmlDocument
  Uuid = 23,          ///< Data::Structures::_UUID, inline
  ErrorCode = 24,     ///< Core::IErrorCode
  ObjectList = 25,    ///< Data::Interfaces::IObjectList
  StringList = 26,    ///< Data::Interfaces::IObjectList of IString
  Reserved = 27       ///< the end of the range; records with higher codes are undefined
};

}  // namespace Data::Structures
