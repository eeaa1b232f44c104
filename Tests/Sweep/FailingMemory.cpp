#include "Sweep/FailingMemory.h"

#include <cerrno>
#include <cstdlib>
#include <new>

// What is behind malloc: the sanitizer's function, if it is linked, or that of the C library.
extern "C" {
[[gnu::weak]] void* __interceptor_malloc(std::size_t);
[[gnu::weak]] void* __interceptor_calloc(std::size_t, std::size_t);
[[gnu::weak]] void* __interceptor_realloc(void*, std::size_t);
[[gnu::weak]] void* __interceptor_memalign(std::size_t, std::size_t);
[[gnu::weak]] void __interceptor_free(void*);
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);
}

namespace Data::tests {
namespace {

std::uint64_t untilFailure = 0;  ///< allocations, the failing one included; 0: none fails
bool isFailing = false;
FailingMemory::Mode failureMode{};
std::uint64_t failedCount = 0;
std::int64_t liveBlocks = 0;

bool Fails() {
  if (untilFailure > 0 && --untilFailure == 0) isFailing = true;
  if (!isFailing) return false;
  if (failureMode == FailingMemory::Mode::OnlyOne) isFailing = false;
  ++failedCount;
  errno = ENOMEM;
  return true;
}

template <class Allocate>
void* Counted(Allocate allocate) {
  void* const block = Fails() ? nullptr : allocate();
  liveBlocks += block ? 1 : 0;
  return block;
}

void* OrThrow(void* block) {
  if (!block) throw std::bad_alloc();
  return block;
}

}  // namespace

FailingMemory::FailingMemory(std::uint64_t n, Mode mode) {
  failedCount = 0;
  failureMode = mode;
  untilFailure = n;
}
FailingMemory::~FailingMemory() {
  untilFailure = 0;
  isFailing = false;
}
std::uint64_t FailingMemory::FailedCount() { return failedCount; }
std::int64_t FailingMemory::LiveBlocks() { return liveBlocks; }

}  // namespace Data::tests

using namespace Data::tests;

extern "C" {

void* malloc(std::size_t size) {
  return Counted(
      [=] { return (__interceptor_malloc ? __interceptor_malloc : __libc_malloc)(size); });
}
void* calloc(std::size_t count, std::size_t size) {
  return Counted(
      [=] { return (__interceptor_calloc ? __interceptor_calloc : __libc_calloc)(count, size); });
}
void* realloc(void* old, std::size_t size) {
  if (!old) return malloc(size);
  if (Fails()) return nullptr;
  return (__interceptor_realloc ? __interceptor_realloc : __libc_realloc)(old, size);
}
void* memalign(std::size_t alignment, std::size_t size) {
  return Counted([=] {
    return (__interceptor_memalign ? __interceptor_memalign : __libc_memalign)(alignment, size);
  });
}
void* aligned_alloc(std::size_t alignment, std::size_t size) { return memalign(alignment, size); }
int posix_memalign(void** out, std::size_t alignment, std::size_t size) {
  void* const block = memalign(alignment, size);
  if (block) *out = block;
  return block ? 0 : ENOMEM;
}
void free(void* block) {
  liveBlocks -= block ? 1 : 0;
  (__interceptor_free ? __interceptor_free : __libc_free)(block);
}

}  // extern "C"

void* operator new(std::size_t size) { return OrThrow(malloc(size)); }
void* operator new[](std::size_t size) { return OrThrow(malloc(size)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return malloc(size); }
void* operator new(std::size_t size, std::align_val_t alignment) {
  return OrThrow(memalign(static_cast<std::size_t>(alignment), size));
}
void operator delete(void* block) noexcept { free(block); }
void operator delete[](void* block) noexcept { free(block); }
void operator delete(void* block, std::size_t) noexcept { free(block); }
void operator delete[](void* block, std::size_t) noexcept { free(block); }
void operator delete(void* block, std::align_val_t) noexcept { free(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { free(block); }
