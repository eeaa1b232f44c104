#include <windows.h>
// Depends on the header above.
#include <dpapi.h>

#include <algorithm>

#include "Platform/MemoryProtection.h"

namespace Data::Platform {

static_assert(CRYPTPROTECTMEMORY_BLOCK_SIZE == kProtectionBlock);

namespace {

/// Lengths are 32 bits wide, so larger memory is passed in chunks of whole blocks.
template <class Service>
bool ForEachChunk(std::span<std::uint8_t> memory, Service service) {
  constexpr std::size_t kMaxChunk = std::size_t{1} << 30;
  while (!memory.empty()) {
    const auto chunk = memory.first(std::min(memory.size(), kMaxChunk));
    if (!service(chunk.data(), static_cast<DWORD>(chunk.size()), CRYPTPROTECTMEMORY_SAME_PROCESS))
      return false;
    memory = memory.subspan(chunk.size());
  }
  return true;
}

}  // namespace

bool ProtectMemory(std::span<std::uint8_t> memory) {
  return ForEachChunk(memory, CryptProtectMemory);
}

bool UnprotectMemory(std::span<std::uint8_t> memory) {
  return ForEachChunk(memory, CryptUnprotectMemory);
}

void WipeMemory(std::span<std::uint8_t> memory) { SecureZeroMemory(memory.data(), memory.size()); }

}  // namespace Data::Platform
