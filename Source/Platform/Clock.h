#pragma once

#include <cstdint>

namespace Data::Platform {

/// The current time in steps of 100 nanoseconds since 1601-01-01T00:00:00 UTC.
std::uint64_t CurrentFileTime();

}  // namespace Data::Platform
