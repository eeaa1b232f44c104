#include "Schema/SchemaNames.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>

#include "Core/StringFormat.h"

namespace Data {

using Core::ValueKind;
using Core::ValueType;
using Structures::ComparisonOperator;

namespace {

constexpr struct {
  std::string_view name;
  ValueType type;
} kTypesByName[] = {
    {"integer", ValueType::Int64},
    {"double", ValueType::Double},
    {"date", ValueType::DateTime},
    {"string", ValueType::String},
    {"boolean", ValueType::Bool},
    {"byterarray", ValueType::Array},  // sic: documents use this spelling
    {"integerarray", ValueType::Array},
    {"doublearray", ValueType::Array},
    {"jsonobject", ValueType::JsonDocument},
    {"json", ValueType::JsonDocument},
};

/// Indexed by the operator.
constexpr std::string_view kComparisons[] = {
    "none",          "equal", "greater",  "less",     "greater-or-equal",
    "less-or-equal", "like",  "not-like", "not-equal"};

[[noreturn]] void ThrowUnsupported(ValueType type) {
  throw std::runtime_error("Unsupported schema type! " + std::string(Core::GetValueTypeName(type)));
}

}  // namespace

ValueType TypeOfName(std::string_view name) {
  const auto* found =
      std::ranges::find(kTypesByName, name, [](const auto& entry) { return entry.name; });
  return found != std::end(kTypesByName) ? found->type : ValueType::Invalid;
}

std::string_view NameOfType(ValueType type) {
  if (type == ValueType::Uuid) ThrowUnsupported(type);
  switch (Core::KindOf(type)) {
    case ValueKind::SignedInteger:
    case ValueKind::UnsignedInteger:
    case ValueKind::WideInteger:
      return "integer";
    case ValueKind::Real:
      return "double";
    case ValueKind::Bool:
      return "boolean";
    case ValueKind::Text:
      return "string";
    case ValueKind::DateTime:
      return "date";
    case ValueKind::Array:
      return "array";
    case ValueKind::Document:
      return type == ValueType::JsonDocument ? "json" : "xml";
    default:
      ThrowUnsupported(type);
  }
}

std::string_view NameOfAllowedType(ValueType type) {
  if (type == ValueType::Bool) return "bool";
  return type <= ValueType::Null ? "null" : NameOfType(type);
}

ComparisonOperator ComparisonOfName(std::string_view name) {
  const auto* found = std::ranges::find(kComparisons, name);
  const auto index = found != std::end(kComparisons) ? found - std::begin(kComparisons) : 0;
  return static_cast<ComparisonOperator>(index);
}

std::string_view NameOfComparison(ComparisonOperator comparison) {
  const auto code = static_cast<std::size_t>(comparison);
  return kComparisons[code < std::size(kComparisons) ? code : 0];
}

}  // namespace Data
