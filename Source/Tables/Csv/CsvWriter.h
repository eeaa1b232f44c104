#pragma once

#include <string>
#include <string_view>

#include "Data/Interfaces/ITable.h"

namespace Data::impl {

/// A table as delimited text: the names of the columns as they are, then a line
/// per row, without a final line break. In text cells quotes are doubled; those
/// that hold the separator, or all of them, are put in quotes.
/// @throws what the display text of a cell throws that is not what its type says
std::string WriteCsv(Interfaces::ITable& table, std::string_view separator, bool alwaysQuote);

}  // namespace Data::impl
