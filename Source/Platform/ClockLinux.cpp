#include <time.h>

#include "Platform/Clock.h"

namespace Data::Platform {

std::uint64_t CurrentFileTime() {
  constexpr std::uint64_t kTicksPerSecond = 10'000'000;
  constexpr std::uint64_t kSecondsFrom1601To1970 = 11'644'473'600;
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  const auto seconds = static_cast<std::uint64_t>(now.tv_sec) + kSecondsFrom1601To1970;
  return seconds * kTicksPerSecond + static_cast<std::uint64_t>(now.tv_nsec) / 100;
}

}  // namespace Data::Platform
