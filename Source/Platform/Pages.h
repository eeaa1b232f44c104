#pragma once

#include <cstddef>

/// Memory straight from the system, for data that fills all of it at once.
namespace Data::Platform {

/// Zeroed memory, where the system can already backed by real pages.
/// @param size  a multiple of 64 KB
/// @throws std::bad_alloc
void* MapPages(std::size_t size);
/// @param size  as it was mapped
void UnmapPages(void* pages, std::size_t size) noexcept;
/// Lets the system take the real pages when it is short of them; the contents
/// are lost, the pages stay usable.
void OfferPages(void* pages, std::size_t size) noexcept;

}  // namespace Data::Platform
