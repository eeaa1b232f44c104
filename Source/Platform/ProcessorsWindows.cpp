#include <windows.h>

#include <bit>

#include "Platform/Processors.h"

namespace Data::Platform {

/// The mask is zero for a process in several processor groups, which then uses one at least.
unsigned CountProcessors() noexcept {
  DWORD_PTR process = 0, system = 0;
  GetProcessAffinityMask(GetCurrentProcess(), &process, &system);
  return process == 0 ? 1 : static_cast<unsigned>(std::popcount(process));
}

}  // namespace Data::Platform
