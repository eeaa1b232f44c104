#pragma once

#include "Core/Parts.h"
#include "Core/Ptr.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/ITable.h"
#include "Documents/JsonDocumentImpl.h"
#include "Documents/JsonRows.h"
#include "Text/TextOutput.h"

namespace Data::impl {

/// A table as an array with one object per row and one member per column, or with another layout.
/// The table may change while the calling thread writes it, see `TableCursor`.
/// @throws std::runtime_error "Must be value type!" for a number in reference form, "Column %s
///         holds a number that JSON cannot represent!" for NaN and infinities, and what
///         `Core::ToText` throws for a cell whose contents do not match its type
void WriteJsonTable(Interfaces::ITable& table, const JsonLayout& layout, Core::Parts& parts,
                    TextOutput& output);

/// One row as an object.
/// @throws as `WriteJsonTable`, and "Null pointer exception! ..." for a row without a table
Core::Ptr<JsonDocumentImpl> WriteJsonRow(Interfaces::IRow& row);

/// Appends a real number of a column.
/// @throws std::runtime_error "Column %s holds a number that JSON cannot represent!"
void AppendJsonReal(TextBuffer& text, double value, const TableCursor& table, std::size_t column);

}  // namespace Data::impl
