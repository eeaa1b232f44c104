#include "Sweep/FailingMemory.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>

// The allocator behind malloc: the sanitizer's functions if they are linked, or the C library's.
extern "C" {
[[gnu::weak]] void* __interceptor_malloc(std::size_t);
[[gnu::weak]] void* __interceptor_realloc(void*, std::size_t);
[[gnu::weak]] void* __interceptor_memalign(std::size_t, std::size_t);
[[gnu::weak]] void __interceptor_free(void*);
void* __libc_malloc(std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);
}

namespace Data::tests {
namespace {

std::atomic<std::uint64_t> allocations = 0, firstFailure = 0;  ///< 0: none fails
std::atomic<bool> failsOnce = false;

bool Fails() {
  const std::uint64_t first = firstFailure;
  if (first == 0) return false;
  const std::uint64_t number = ++allocations;
  if (failsOnce ? number != first : number < first) return false;
  FailingMemory::hasFailed = true;
  errno = ENOMEM;
  return true;
}

void* Counted(void* block) {
  if (block) ++FailingMemory::liveBlocks;
  return block;
}

void* OrThrow(void* block) {
  if (!block) throw std::bad_alloc();
  return block;
}

}  // namespace

constinit std::atomic<bool> FailingMemory::hasFailed = false;
constinit std::atomic<std::int64_t> FailingMemory::liveBlocks = 0;

FailingMemory::FailingMemory(std::uint64_t n, bool onlyOne) {
  hasFailed = false;
  failsOnce = onlyOne;
  allocations = 0;
  firstFailure = n;
}
FailingMemory::~FailingMemory() { firstFailure = 0; }

}  // namespace Data::tests

using namespace Data::tests;

extern "C" {
void* malloc(std::size_t size) {
  if (Fails()) return nullptr;
  return Counted((__interceptor_malloc ? __interceptor_malloc : __libc_malloc)(size));
}
void* calloc(std::size_t count, std::size_t size) {
  std::size_t bytes = 0;
  void* const block = __builtin_mul_overflow(count, size, &bytes) ? nullptr : malloc(bytes);
  return block ? std::memset(block, 0, bytes) : nullptr;
}
void* realloc(void* old, std::size_t size) {
  if (!old) return malloc(size);
  if (Fails()) return nullptr;
  return (__interceptor_realloc ? __interceptor_realloc : __libc_realloc)(old, size);
}
void* memalign(std::size_t alignment, std::size_t size) {
  if (Fails()) return nullptr;
  return Counted(
      (__interceptor_memalign ? __interceptor_memalign : __libc_memalign)(alignment, size));
}
void* aligned_alloc(std::size_t alignment, std::size_t size) { return memalign(alignment, size); }
void free(void* block) {
  if (block) --FailingMemory::liveBlocks;
  (__interceptor_free ? __interceptor_free : __libc_free)(block);
}
}

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
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { free(block); }
