#include <windows.h>
// The next one needs the first.
#include <dpapi.h>

#include <algorithm>

#include "Platform/MemoryProtection.h"

namespace Data::Platform {

static_assert(CRYPTPROTECTMEMORY_BLOCK_SIZE == kProtectionBlock);

namespace {

/// The system counts in 32 bits, so that more goes to it in pieces of whole blocks.
template <class Service>
bool ForEachPiece(std::span<std::uint8_t> memory, Service service) {
  constexpr std::size_t kMaxPiece = std::size_t{1} << 30;
  while (!memory.empty()) {
    const auto piece = memory.first(std::min(memory.size(), kMaxPiece));
    if (!service(piece.data(), static_cast<DWORD>(piece.size()), CRYPTPROTECTMEMORY_SAME_PROCESS))
      return false;
    memory = memory.subspan(piece.size());
  }
  return true;
}

}  // namespace

bool ProtectMemory(std::span<std::uint8_t> memory) {
  return ForEachPiece(memory, CryptProtectMemory);
}

bool UnprotectMemory(std::span<std::uint8_t> memory) {
  return ForEachPiece(memory, CryptUnprotectMemory);
}

void WipeMemory(std::span<std::uint8_t> memory) { SecureZeroMemory(memory.data(), memory.size()); }

}  // namespace Data::Platform
