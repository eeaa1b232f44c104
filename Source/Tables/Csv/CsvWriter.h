#pragma once

#include <string>
#include <string_view>

#include "Data/Interfaces/ITable.h"

namespace Data::impl {

/// A table as delimited text: a line with the names of the columns, neither quoted nor escaped,
/// then one per row, the last without a line break. Quotes in texts and documents are doubled;
/// those that contain the separator, or all of them, are quoted. The table may change while it is
/// written, see `TableCursor`.
/// @throws what `Core::ToText` throws for a cell whose contents do not match its type
std::string WriteCsv(Interfaces::ITable& table, std::string_view separator, bool alwaysQuote);

}  // namespace Data::impl
