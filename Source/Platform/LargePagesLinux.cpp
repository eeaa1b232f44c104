#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

#include "Platform/LargePages.h"

namespace Data::Platform {

void PreferLargePages(void* memory, std::size_t size) noexcept {
  // madvise works on whole pages, so those in which the block begins and ends are included.
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  const auto address = reinterpret_cast<std::uintptr_t>(memory);
  const std::uintptr_t begin = address / page * page;
  const std::uintptr_t end = (address + size + page - 1) / page * page;
  // A failure is ignored: the memory can be used without large pages.
  madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

}  // namespace Data::Platform
