#pragma once

#include <cstddef>
#include <string_view>

namespace Data::impl {

/// Whether the elements of an XML text are nested at most `levels` deep. rapidxml's parser calls
/// itself for each level, so this is checked first. The check scans the text as that parser does
/// and stops where the parser would report an error.
bool IsNestedWithin(std::string_view xml, std::size_t levels);

}  // namespace Data::impl
