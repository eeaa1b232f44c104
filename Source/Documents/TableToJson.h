#pragma once

#include "Core/Ptr.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/ITable.h"
#include "Documents/JsonDocumentImpl.h"

namespace Data::impl {

/// A table as an array with one object per row and one member per column. The table may change
/// while it is written, see `TableCursor`.
/// @throws std::runtime_error "Must be value type!" for a number in reference form, "Column %s
///         holds a number that JSON cannot represent!" for NaN and infinities, and what
///         `Core::ToText` throws for a cell whose contents do not match its type
Core::Ptr<JsonDocumentImpl> WriteJsonTable(Interfaces::ITable& table);

/// One row as an object.
/// @throws as `WriteJsonTable`, and "Null pointer exception! ..." for a row without a table
Core::Ptr<JsonDocumentImpl> WriteJsonRow(Interfaces::IRow& row);

}  // namespace Data::impl
