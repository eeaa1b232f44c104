#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

namespace Core {

/// Memory for the many small objects that are made together, as the rows, texts
/// and date-times of a table that is read.
///
/// They lie one behind the other in regions of 1 MB, so making or freeing one
/// costs a few instructions. Each is still an object of its own: it may outlive
/// the pool and be freed in any order by any thread, and a region goes with the
/// last object in it. One thread at a time makes objects.
///
/// A class takes part with
///
///     static void* operator new(std::size_t size, ObjectPool* pool);
///     static void operator delete(void* object) { ObjectPool::Free(object); }
class ObjectPool {
 public:
  ObjectPool() = default;
  ObjectPool(const ObjectPool&) = delete;
  ObjectPool& operator=(const ObjectPool&) = delete;
  ~ObjectPool() { CloseRegion(); }

  /// Memory for one object of a class whose alignment is at most 8; from the
  /// heap without a pool.
  static void* Allocate(ObjectPool* pool, std::size_t size) {
    return pool ? pool->Allocate(size) : ::operator new(size);
  }
  /// Frees what `Allocate` gave, with or without a pool.
  static void Free(void* object) noexcept {
    if (IsPooled(object)) {
      FreePooled(object);
    } else {
      ::operator delete(object);
    }
  }

 private:
  struct Region;

  /// The heap gives multiples of 16, pools never do: their objects lie 8 behind
  /// one, with the address of their region before them.
  static constexpr std::size_t kGrain = 16, kHeader = sizeof(void*);
  static bool IsPooled(const void* object) {
    return reinterpret_cast<std::uintptr_t>(object) % kGrain != 0;
  }

  void* Allocate(std::size_t size) {
    const std::size_t space = (kHeader + size + kGrain - 1) / kGrain * kGrain;
    if (space > static_cast<std::size_t>(end_ - next_) || space < size)
      return AllocateElsewhere(size);
    auto* const header = new (next_) Region*(region_);
    next_ += space;
    ++objectCount_;
    return header + 1;
  }
  void* AllocateElsewhere(std::size_t size);
  void CloseRegion() noexcept;
  static void FreePooled(void* object) noexcept;

  /// The free rest of the region in use.
  char* next_ = nullptr;
  char* end_ = nullptr;
  Region* region_ = nullptr;
  std::uint64_t objectCount_ = 0;  ///< made in it
};

}  // namespace Core
