#pragma once

#include <cstddef>

namespace Data::Platform {

/// Advises the system to back a block of memory with large pages, which cause fewer page faults.
/// The contents are unaffected, and the block is freed as usual.
void PreferLargePages(void* memory, std::size_t size) noexcept;

}  // namespace Data::Platform
