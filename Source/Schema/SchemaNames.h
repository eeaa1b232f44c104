#pragma once

#include <string_view>

#include "Core/ValueTypes.h"
#include "Data/Structures/ComparisonOperator.h"

/// The names of types and comparisons in layer schema documents.
namespace Data {

/// The type of a column or an allowed value; Invalid for an unknown name.
Core::ValueType TypeOfName(std::string_view name);

/// The name of a column's type.
/// @throws std::runtime_error "Unsupported schema type! " + type
std::string_view NameOfType(Core::ValueType type);

/// The name of an allowed value's type: as for a column, but "bool" instead of "boolean", and
/// "null" for Unknown, Invalid and Null.
/// @throws as `NameOfType`
std::string_view NameOfAllowedType(Core::ValueType type);

/// None for an unknown name.
Structures::ComparisonOperator ComparisonOfName(std::string_view name);
/// "none" for an unknown comparison.
std::string_view NameOfComparison(Structures::ComparisonOperator comparison);

}  // namespace Data
