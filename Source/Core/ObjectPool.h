#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

#include "Core/Poison.h"

namespace Core {

/// Memory for many small objects that are created together, such as the rows, texts and date-times
/// of a table that is being read.
///
/// They are allocated one after another from regions, which come from the heap and grow up to 16
/// MB, so creating or freeing an object costs a few instructions. Each object still has its own
/// lifetime: it may outlive the pool, and any thread may free it, in any order. A region is freed
/// with its last object. Only one thread at a time may create objects.
///
/// A class opts in with
///
///     static void* operator new(std::size_t size, ObjectPool* pool);
///     static void operator delete(void* object) { ObjectPool::Free(object); }
class ObjectPool {
 public:
  /// @param expectedBytes  of all objects; determines the size of the first region
  explicit ObjectPool(std::size_t expectedBytes) noexcept;
  ObjectPool(const ObjectPool&) = delete;
  ObjectPool& operator=(const ObjectPool&) = delete;
  ~ObjectPool() { CloseRegion(); }

  /// Memory for one object of a class whose alignment is at most 8; from the
  /// heap without a pool.
  /// @throws std::bad_alloc  the pool is unchanged
  static void* Allocate(ObjectPool* pool, std::size_t size) {
    return pool ? pool->Allocate(size) : ::operator new(size);
  }
  /// Frees memory from `Allocate`, with or without a pool.
  static void Free(void* object) noexcept {
    if (IsPooled(object)) {
      FreePooled(object);
    } else {
      ::operator delete(object);
    }
  }

 private:
  struct Region;

  /// Heap blocks are aligned to 16. Pooled objects sit at 16n + 8, preceded by the address of their
  /// region, which is how `Free` tells them apart. A program that replaces operator new must keep
  /// the alignment, as the language requires.
  static constexpr std::size_t kGrain = 16, kHeader = sizeof(void*);
  static_assert(__STDCPP_DEFAULT_NEW_ALIGNMENT__ >= kGrain && kHeader == kGrain / 2);
  static bool IsPooled(const void* object) {
    return reinterpret_cast<std::uintptr_t>(object) % kGrain != 0;
  }

  void* Allocate(std::size_t size) {
    const std::size_t space = (kHeader + size + kGrain - 1) / kGrain * kGrain;
    if (space > static_cast<std::size_t>(end_ - next_)) return AllocateElsewhere(size);
    Unpoison(next_, kHeader + size);
    auto* const header = new (next_) Region*(region_);
    Poison(header, kHeader);
    next_ += space;
    ++objectCount_;
    return header + 1;
  }
  void* AllocateElsewhere(std::size_t size);
  void CloseRegion() noexcept;
  static void FreePooled(void* object) noexcept;

  /// The unused part of the current region.
  char* next_ = nullptr;
  char* end_ = nullptr;
  Region* region_ = nullptr;
  std::uint64_t objectCount_ = 0;  ///< created in the current region
  std::size_t nextRegionSize_;
};

}  // namespace Core
