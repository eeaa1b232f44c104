#pragma once

#include <cstddef>
#include <string_view>

namespace Data::impl {

/// Whether the elements of an XML text are nested at most that many levels deep. rapidxml's parser
/// calls itself for each level, so this is checked first. It follows the text as that parser does
/// and stops where the parser would stop at an error.
bool IsNestedWithin(std::string_view xml, std::size_t levels);

}  // namespace Data::impl
