#pragma once

#include <string_view>

#include "Core/Ptr.h"
#include "Tables/TableImpl.h"

namespace Data::impl {

/// Reads a JSON text into a table: an array of objects row by row, an object as one row, any other
/// value as one cell.
/// @param text  as `JsonTextOf` returns it
/// @throws std::runtime_error "Json document is not valid!", "Object in the
///         array is not of the type object! Data structure is inconsistent
///         across array!", "Unsupported variant type", "Table %s must contain at
///         least one column before you insert new row!"
Core::Ptr<TableImpl> ReadJsonTable(std::string_view text);

}  // namespace Data::impl
