#pragma once

#include <string>
#include <string_view>

#include "Data/Interfaces/ITable.h"

namespace Data::impl {

/// A table as delimited text: the names of the columns as they are, then a line per row, without a
/// final line break. Quotes in texts and documents are doubled; those that contain the separator,
/// or all of them, are quoted. The table may change while it is written, see `TableCursor`.
/// @throws what `Core::ToText` throws for a cell that is not what its type says
std::string WriteCsv(Interfaces::ITable& table, std::string_view separator, bool alwaysQuote);

}  // namespace Data::impl
