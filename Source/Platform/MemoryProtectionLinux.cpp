#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <sys/mman.h>

#include <algorithm>
#include <memory>
#include <new>

#include "Platform/MemoryProtection.h"
#include "Platform/RandomBytes.h"

namespace Data::Platform {

namespace {

/// What enciphers every secret of this process: made at random on first use.
struct ProcessKey {
  std::uint8_t key[32];
  std::uint8_t start[kProtectionBlock];
};

/// In a page of its own that the kernel keeps out of swap and core dumps; where
/// it will not, the key serves nevertheless. The page stays until the process
/// ends, since secrets may live as long.
const ProcessKey* MakeProcessKey() {
  void* page =
      mmap(nullptr, sizeof(ProcessKey), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (page == MAP_FAILED) throw std::bad_alloc();
  static_cast<void>(mlock(page, sizeof(ProcessKey)));
  static_cast<void>(madvise(page, sizeof(ProcessKey), MADV_DONTDUMP));
  FillWithRandomBytes(page, sizeof(ProcessKey));
  mprotect(page, sizeof(ProcessKey), PROT_READ);
  return static_cast<const ProcessKey*>(page);
}

const ProcessKey& GetProcessKey() {
  static const ProcessKey* const key = MakeProcessKey();
  return *key;
}

struct Free {
  void operator()(EVP_CIPHER_CTX* context) const { EVP_CIPHER_CTX_free(context); }
};

/// The context holds the key for as long as this takes; freeing wipes it.
bool Encipher(std::span<std::uint8_t> memory, bool isProtecting) {
  const ProcessKey& key = GetProcessKey();
  const std::unique_ptr<EVP_CIPHER_CTX, Free> context(EVP_CIPHER_CTX_new());
  if (!context || EVP_CipherInit_ex(context.get(), EVP_aes_256_cbc(), nullptr, key.key, key.start,
                                    isProtecting ? 1 : 0) != 1)
    return false;
  EVP_CIPHER_CTX_set_padding(context.get(), 0);
  // OpenSSL counts in signed 32 bits.
  constexpr std::size_t kMaxPiece = std::size_t{1} << 30;
  while (!memory.empty()) {
    const auto piece = memory.first(std::min(memory.size(), kMaxPiece));
    int written = 0;
    if (EVP_CipherUpdate(context.get(), piece.data(), &written, piece.data(),
                         static_cast<int>(piece.size())) != 1)
      return false;
    memory = memory.subspan(piece.size());
  }
  return true;
}

}  // namespace

bool ProtectMemory(std::span<std::uint8_t> memory) { return Encipher(memory, true); }

bool UnprotectMemory(std::span<std::uint8_t> memory) { return Encipher(memory, false); }

void WipeMemory(std::span<std::uint8_t> memory) { OPENSSL_cleanse(memory.data(), memory.size()); }

}  // namespace Data::Platform
