#pragma once

#include <string_view>

#include "Core/ValueTypes.h"
#include "Data/Structures/ComparisonOperator.h"

/// The names that layer schema documents use.
namespace Data {

/// The type of columns and of allowed values with that name; Invalid for an
/// unknown one.
Core::ValueType TypeOfName(std::string_view name);

/// The name that a column's type is written with.
/// @throws std::runtime_error "Unsupported schema type! " + type
std::string_view NameOfType(Core::ValueType type);

/// The name of an allowed value's type. It is "bool" where a column's would be
/// "boolean"; "null" stands for a value that was never given.
/// @throws as `NameOfType`
std::string_view NameOfAllowedType(Core::ValueType type);

/// An unknown name means none.
Structures::ComparisonOperator ComparisonOfName(std::string_view name);
/// "none" for a comparison without a name.
std::string_view NameOfComparison(Structures::ComparisonOperator comparison);

}  // namespace Data
