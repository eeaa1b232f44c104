#pragma once

#include <LayerData/Schema.h>

#include <string>
#include <vector>

namespace program {

/// A schema that breaks the rules of its format.
struct BrokenSchema : std::runtime_error {
  using runtime_error::runtime_error;
};

/// An entry of a list of allowed values.
struct AllowedValue {
  layerdata::Value value;
  ld_comparison_operator comparison = LD_COMPARISON_OPERATOR_EQUAL;
};

/// What a schema demands of the cells of a column.
struct ColumnRule {
  std::string name;
  ld_value_type type = LD_VALUE_TYPE_STRING;
  std::int32_t width = 0;  ///< most characters; no limit if it is not positive
  bool isNullable = false;
  std::vector<AllowedValue> allowed;  ///< empty if any value is allowed
};

/// Reads a schema document.
/// @throws layerdata::Error if it cannot be read, BrokenSchema if it is no schema
std::vector<ColumnRule> ReadRules(const std::string& path);

}  // namespace program
