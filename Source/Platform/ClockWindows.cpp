#include <windows.h>

#include "Platform/Clock.h"

namespace Data::Platform {

std::uint64_t CurrentFileTime() {
  FILETIME now;
  GetSystemTimeAsFileTime(&now);
  return std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime;
}

}  // namespace Data::Platform
