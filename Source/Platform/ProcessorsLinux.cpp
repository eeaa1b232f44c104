#include <sched.h>

#include <thread>

#include "Platform/Processors.h"

namespace Data::Platform {

/// A machine with more processors than the set holds is asked for their number instead.
unsigned CountProcessors() noexcept {
  cpu_set_t set;
  if (sched_getaffinity(0, sizeof set, &set) == 0) return static_cast<unsigned>(CPU_COUNT(&set));
  const unsigned count = std::thread::hardware_concurrency();
  return count == 0 ? 1 : count;
}

}  // namespace Data::Platform
