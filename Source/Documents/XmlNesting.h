#pragma once

#include <cstddef>
#include <string_view>

namespace Data::impl {

/// Whether the elements of an XML text are nested at most so deep. Follows the
/// text as rapidxml's parser does, which calls itself for each level: where that
/// one would stop at an error, this stops too.
bool IsNestedWithin(std::string_view xml, std::size_t levels);

}  // namespace Data::impl
