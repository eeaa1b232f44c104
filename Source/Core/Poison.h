#pragma once

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#define LAYERDATA_POISONS_MEMORY
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LAYERDATA_POISONS_MEMORY
#endif
#endif
#if defined(LAYERDATA_POISONS_MEMORY)
#include <sanitizer/asan_interface.h>
#endif

/// Tells the address sanitizer which bytes of a heap block are in use when the block is divided by
/// hand. Without the sanitizer these functions do nothing.
namespace Core {

#if defined(LAYERDATA_POISONS_MEMORY)

/// Makes any access to the bytes an error.
inline void Poison(void* bytes, std::size_t size) { __asan_poison_memory_region(bytes, size); }
inline void Unpoison(void* bytes, std::size_t size) { __asan_unpoison_memory_region(bytes, size); }
/// Poisons bytes up to the first one that is already poisoned, at most `size`.
inline void PoisonUntilPoisoned(void* bytes, std::size_t size) {
  const void* const end = __asan_region_is_poisoned(bytes, size);
  Poison(bytes,
         end ? static_cast<std::size_t>(static_cast<const char*>(end) - static_cast<char*>(bytes))
             : size);
}

#else

inline void Poison(void*, std::size_t) {}
inline void Unpoison(void*, std::size_t) {}
inline void PoisonUntilPoisoned(void*, std::size_t) {}

#endif

}  // namespace Core
