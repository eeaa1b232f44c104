#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <sys/mman.h>

#include <algorithm>
#include <memory>
#include <new>

#include "Platform/MemoryProtection.h"
#include "Platform/ProviderErrors.h"
#include "Platform/RandomBytes.h"

namespace Data::Platform {

namespace {

/// Encrypts every secret of this process; random, created on first use.
struct ProcessKey {
  std::uint8_t key[32];
  std::uint8_t initialVector[kProtectionBlock];
};

struct Unmap {
  void operator()(void* page) const { munmap(page, sizeof(ProcessKey)); }
};

/// The key has its own page, which the kernel keeps out of swap and core dumps if it can. The page
/// is never unmapped: secrets may live until the process ends.
const ProcessKey* MakeProcessKey() {
  void* const mapped =
      mmap(nullptr, sizeof(ProcessKey), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapped == MAP_FAILED) throw std::bad_alloc();
  std::unique_ptr<void, Unmap> page(mapped);
  static_cast<void>(mlock(mapped, sizeof(ProcessKey)));
  static_cast<void>(madvise(mapped, sizeof(ProcessKey), MADV_DONTDUMP));
  FillWithRandomBytes(mapped, sizeof(ProcessKey));
  mprotect(mapped, sizeof(ProcessKey), PROT_READ);
  return static_cast<const ProcessKey*>(page.release());
}

const ProcessKey& GetProcessKey() {
  static const ProcessKey* const key = MakeProcessKey();
  return *key;
}

struct Free {
  void operator()(EVP_CIPHER_CTX* context) const { EVP_CIPHER_CTX_free(context); }
};

/// @param mode  1 to encrypt, 0 to decrypt
bool Cipher(std::span<std::uint8_t> memory, int mode) {
  const ProcessKey& key = GetProcessKey();
  const ProviderErrors errors;
  // The context holds a copy of the key; freeing the context overwrites it.
  const std::unique_ptr<EVP_CIPHER_CTX, Free> context(EVP_CIPHER_CTX_new());
  if (!context || EVP_CipherInit_ex(context.get(), EVP_aes_256_cbc(), nullptr, key.key,
                                    key.initialVector, mode) != 1)
    return false;
  EVP_CIPHER_CTX_set_padding(context.get(), 0);
  constexpr std::size_t kMaxChunk = std::size_t{1} << 30;  // lengths are of type int
  while (!memory.empty()) {
    const auto chunk = memory.first(std::min(memory.size(), kMaxChunk));
    int written = 0;
    if (EVP_CipherUpdate(context.get(), chunk.data(), &written, chunk.data(),
                         static_cast<int>(chunk.size())) != 1)
      return false;
    memory = memory.subspan(chunk.size());
  }
  return true;
}

}  // namespace

bool ProtectMemory(std::span<std::uint8_t> memory) { return Cipher(memory, 1); }

bool UnprotectMemory(std::span<std::uint8_t> memory) { return Cipher(memory, 0); }

void WipeMemory(std::span<std::uint8_t> memory) { OPENSSL_cleanse(memory.data(), memory.size()); }

}  // namespace Data::Platform
