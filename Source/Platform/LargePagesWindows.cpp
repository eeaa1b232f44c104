#include "Platform/LargePages.h"

namespace Data::Platform {

// Large pages take a privilege here, and an allocation of their own.
void PreferLargePages(void*, std::size_t) noexcept {}

}  // namespace Data::Platform
