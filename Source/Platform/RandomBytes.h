#pragma once

#include <cstddef>

namespace Data::Platform {

/// Fills a buffer with cryptographically secure random bytes. Linux only: Windows has a separate
/// service for each purpose.
/// @throws std::system_error if the system cannot provide them
void FillWithRandomBytes(void* buffer, std::size_t size);

}  // namespace Data::Platform
