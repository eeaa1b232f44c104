#include "Core/ObjectPool.h"

#include <algorithm>
#include <atomic>
#include <bit>

#include "Platform/LargePages.h"

namespace Core {

namespace {

constexpr std::size_t kSmallestRegion = std::size_t{4} << 10;
constexpr std::size_t kLargestRegion = std::size_t{16} << 20;
/// From this size on, a partly used large page at the end of a region hardly matters.
constexpr std::size_t kLargePageRegion = std::size_t{4} << 20;
/// Left to the heap for its own header, so that a region fills whole pages.
constexpr std::size_t kHeapHeader = 64;

/// A larger object comes from the heap: it would leave too much of a region unused.
constexpr std::size_t kLargestObject = std::size_t{16} << 10;

}  // namespace

/// The header of a region. While objects are created in a region it holds
/// `kOpen` extra references, so that creating one need not touch the count,
/// which other threads may be using.
struct ObjectPool::Region {
  static constexpr std::uint64_t kOpen = std::uint64_t{1} << 63;

  explicit Region(std::size_t regionSize) : size(regionSize) {}

  static Region* Make(std::size_t size) {
    void* const block = ::operator new(size);
    if (size + kHeapHeader >= kLargePageRegion) Data::Platform::PreferLargePages(block, size);
    return new (block) Region(size);
  }

  void Drop(std::uint64_t count) noexcept {
    if (references.fetch_sub(count) != count) return;
    Unpoison(this, size);
    ::operator delete(this);
  }

  char* Begin() { return reinterpret_cast<char*>(this + 1); }
  char* End() { return reinterpret_cast<char*>(this) + size; }

  std::atomic<std::uint64_t> references{kOpen};
  std::size_t size;
};

ObjectPool::ObjectPool(std::size_t expectedBytes) noexcept
    : nextRegionSize_(std::bit_ceil(std::clamp(expectedBytes, kSmallestRegion, kLargestRegion))) {}

void* ObjectPool::AllocateElsewhere(std::size_t size) {
  static_assert(sizeof(Region) % kGrain == 0);
  if (size > kLargestObject) return ::operator new(size);
  while (nextRegionSize_ < 4 * size) nextRegionSize_ *= 2;
  const std::size_t regionSize = nextRegionSize_ - kHeapHeader;
  auto* const region = Region::Make(regionSize);
  CloseRegion();
  region_ = region;
  next_ = region->Begin();
  end_ = region->End();
  Poison(next_, static_cast<std::size_t>(end_ - next_));
  nextRegionSize_ = std::min(2 * nextRegionSize_, kLargestRegion);
  return Allocate(size);
}

void ObjectPool::CloseRegion() noexcept {
  if (region_) region_->Drop(Region::kOpen - objectCount_);
  region_ = nullptr;
  next_ = end_ = nullptr;
  objectCount_ = 0;
}

void ObjectPool::FreePooled(void* object) noexcept {
  auto** const header = static_cast<Region**>(object) - 1;
  Unpoison(header, kHeader);
  Region* const region = *header;
  PoisonUntilPoisoned(header,
                      static_cast<std::size_t>(region->End() - reinterpret_cast<char*>(header)));
  region->Drop(1);
}

}  // namespace Core
