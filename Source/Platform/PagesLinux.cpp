#include <sys/mman.h>

#include <new>

#include "Platform/Pages.h"

namespace Data::Platform {

// Filling all pages in one call costs a fraction of a fault for each of them.
void* MapPages(std::size_t size) {
  void* const pages = mmap(nullptr, size, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
  if (pages == MAP_FAILED) throw std::bad_alloc();
  return pages;
}

void UnmapPages(void* pages, std::size_t size) noexcept { munmap(pages, size); }
void OfferPages(void* pages, std::size_t size) noexcept { madvise(pages, size, MADV_FREE); }

}  // namespace Data::Platform
