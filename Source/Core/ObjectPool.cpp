#include "Core/ObjectPool.h"

#include <array>
#include <atomic>

#include "Platform/Pages.h"

namespace Core {

namespace Platform = Data::Platform;

namespace {

constexpr std::size_t kRegionSize = std::size_t{1} << 20;
/// What is larger would leave too much of a region unused.
constexpr std::size_t kLargestObject = kRegionSize / 64;

/// Free regions for the next pool: mapping fresh pages takes longer than filling
/// them. The system may take their memory meanwhile.
class FreeRegions {
 public:
  constexpr FreeRegions() = default;
  /// When the library is unloaded.
  ~FreeRegions() {
    while (void* region = Take()) Platform::UnmapPages(region, kRegionSize);
  }

  /// @return null when there is none
  void* Take() noexcept {
    for (auto& kept : regions_) {
      if (!kept.load(std::memory_order_relaxed)) continue;
      if (void* region = kept.exchange(nullptr)) return region;
    }
    return nullptr;
  }

  void Keep(void* region) noexcept {
    Platform::OfferPages(region, kRegionSize);
    for (auto& kept : regions_) {
      void* none = kept.load(std::memory_order_relaxed);
      if (!none && kept.compare_exchange_strong(none, region)) return;
    }
    Platform::UnmapPages(region, kRegionSize);
  }

 private:
  std::array<std::atomic<void*>, 512> regions_{};
};

constinit FreeRegions freeRegions;

}  // namespace

/// What stands at the begin of a region. While it is open it holds `kOpen`
/// references too many, so that making an object need not touch the count that
/// other threads may use.
struct ObjectPool::Region {
  static constexpr std::uint64_t kOpen = std::uint64_t{1} << 63;

  static void* operator new(std::size_t) {
    void* region = freeRegions.Take();
    return region ? region : Platform::MapPages(kRegionSize);
  }
  static void operator delete(void* region) { freeRegions.Keep(region); }

  void Drop(std::uint64_t count) noexcept {
    if (references.fetch_sub(count) == count) delete this;
  }

  alignas(kGrain) std::atomic<std::uint64_t> references{kOpen};
};

void* ObjectPool::AllocateElsewhere(std::size_t size) {
  if (size > kLargestObject) return ::operator new(size);
  CloseRegion();
  region_ = new Region;
  next_ = reinterpret_cast<char*>(region_ + 1);
  end_ = reinterpret_cast<char*>(region_) + kRegionSize;
  return Allocate(size);
}

void ObjectPool::CloseRegion() noexcept {
  if (!region_) return;
  region_->Drop(Region::kOpen - objectCount_);
  region_ = nullptr;
  next_ = end_ = nullptr;
  objectCount_ = 0;
}

void ObjectPool::FreePooled(void* object) noexcept { (static_cast<Region**>(object)[-1])->Drop(1); }

}  // namespace Core
