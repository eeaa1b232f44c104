#pragma once

#include <cstddef>

namespace Data::Platform {

/// Fills a buffer with bytes that nobody can foretell. Linux only: Windows has
/// services of its own for each purpose.
/// @throws std::system_error if the system has none to give
void FillWithRandomBytes(void* buffer, std::size_t size);

}  // namespace Data::Platform
