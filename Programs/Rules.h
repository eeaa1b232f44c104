#pragma once

#include <LayerData/Value.h>

#include <string>

#include "SchemaDocument.h"

namespace program {

/// Why a value breaks the rule of its column, as in "is no integer"; empty if it obeys.
/// @param cell  not Null
std::string ProblemOf(const ColumnRule& rule, const layerdata::Value& cell);

}  // namespace program
