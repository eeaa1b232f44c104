#include "Platform/LargePages.h"

namespace Data::Platform {

// Large pages require a privilege here, and a special allocation.
void PreferLargePages(void*, std::size_t) noexcept {}

}  // namespace Data::Platform
