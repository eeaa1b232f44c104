#pragma once

#include "Prelude.h"

namespace Data::tests {

inline ValueType TypeNamed(std::string_view name) {
  for (std::uint32_t code = 0; code <= 27; ++code)
    if (Core::GetValueTypeName(static_cast<ValueType>(code)) == name)
      return static_cast<ValueType>(code);
  throw std::runtime_error("no type: " + std::string(name));
}

/// A record from its notation in data files, a type and what it holds: "Int32 7", "Int128 1 2"
/// (low and high word), "Double 0.5", "String abc", "DateTime 2024", "JsonDocument [1]"; a new
/// object for "Array" and "ObjectList". "Text abc" is a String kept in an object, "null Array" a
/// null reference, "address Array" and "value Array" records of forms that are no object, "code 28"
/// a type without a name.
inline Variant RecordOf(std::string_view notation) {
  const std::size_t space = std::min(notation.find(' '), notation.size() - 1);
  const std::string first(notation.substr(0, notation.find(' '))), rest(notation.substr(space + 1));
  if (first == "null") return NullReference(TypeNamed(rest));
  if (first == "address") return Address(TypeNamed(rest), 1);
  if (first == "value") return ByValue(TypeNamed(rest), 1);
  if (first == "code") return ByValue(static_cast<ValueType>(std::stoul(rest)));
  if (first == "Text") return Variant(Core::MakeString(rest));
  switch (const ValueType type = TypeNamed(first)) {
    case ValueType::String:
      return Variant(rest);
    case ValueType::DateTime:
      return Date(rest.c_str());
    case ValueType::JsonDocument:
      return JsonVariant(rest);
    case ValueType::Array:
      return Variant(New(Data_CreateArray));
    case ValueType::ObjectList:
      return Variant(New(Data_CreateObjectList));
    case ValueType::ErrorCode:
      return Variant(SomeError());
    case ValueType::Double:
      return Variant(std::strtod(rest.c_str(), nullptr));
    case ValueType::Float:
      return Variant(std::strtof(rest.c_str(), nullptr));
    default: {
      char* end = nullptr;
      const std::uint64_t low = std::strtoull(rest.c_str(), &end, 10);
      return ByValue(type, low, std::strtoull(end, nullptr, 10));
    }
  }
}

}  // namespace Data::tests
