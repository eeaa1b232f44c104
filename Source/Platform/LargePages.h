#pragma once

#include <cstddef>

namespace Data::Platform {

/// Advises the system to back a block of memory with large pages, which cost
/// fewer page faults. Its contents and its end of life are unaffected.
void PreferLargePages(void* memory, std::size_t size) noexcept;

}  // namespace Data::Platform
