#include <windows.h>

#include <new>

#include "Platform/Pages.h"

namespace Data::Platform {

void* MapPages(std::size_t size) {
  void* const pages = VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
  if (!pages) throw std::bad_alloc();
  return pages;
}

void UnmapPages(void* pages, std::size_t) noexcept { VirtualFree(pages, 0, MEM_RELEASE); }
void OfferPages(void* pages, std::size_t size) noexcept {
  VirtualAlloc(pages, size, MEM_RESET, PAGE_READWRITE);
}

}  // namespace Data::Platform
