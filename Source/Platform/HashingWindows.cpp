#include <windows.h>
// Depends on the header above.
#include <bcrypt.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "Platform/Hashing.h"
#include "Platform/SystemErrorText.h"

namespace Data::Platform {

namespace {

/// BCRYPT_HASH_REUSABLE_FLAG, which some versions of the header lack.
constexpr ULONG kReusable = 0x20;

/// Lengths are 32 bits wide.
constexpr std::size_t kMaxChunk = std::numeric_limits<ULONG>::max();

constexpr NTSTATUS kInvalidParameter = static_cast<NTSTATUS>(0xC000000D);

HashStatus StatusOf(NTSTATUS status) { return {status >= 0, static_cast<std::int32_t>(status)}; }

const wchar_t* NameOf(HashAlgorithm algorithm) {
  switch (algorithm) {
    case HashAlgorithm::Md5:
      return L"MD5";
    case HashAlgorithm::Sha1:
      return L"SHA1";
    case HashAlgorithm::Sha256:
      return L"SHA256";
    case HashAlgorithm::Sha384:
      return L"SHA384";
    case HashAlgorithm::Sha512:
      return L"SHA512";
  }
  return L"";
}

NTSTATUS ReadNumber(BCRYPT_ALG_HANDLE provider, const wchar_t* property, ULONG& number) {
  ULONG read = 0;
  return BCryptGetProperty(provider, property, reinterpret_cast<PUCHAR>(&number), sizeof number,
                           &read, 0);
}

/// The system's declarations lack const for memory that is only read.
PUCHAR Readable(const std::uint8_t* bytes) { return const_cast<PUCHAR>(bytes); }

}  // namespace

struct HashState {
  BCRYPT_ALG_HANDLE provider = nullptr;
  BCRYPT_HASH_HANDLE hash = nullptr;
  std::vector<UCHAR> memory;
  std::vector<UCHAR> unusedDigest;
  bool isKeyed = false;

  ~HashState() {
    if (hash) BCryptDestroyHash(hash);
    if (provider) BCryptCloseAlgorithmProvider(provider, 0);
  }
};

void FreeHashState::operator()(HashState* state) const noexcept { delete state; }

std::string HashStatusText(HashStatus status) { return SystemErrorText(status.number); }

HashStatus OpenHashAlgorithm(HashAlgorithm algorithm, bool isKeyed, HashStatePtr& state) {
  state.reset(new HashState);
  state->isKeyed = isKeyed;
  const ULONG flags = kReusable | (isKeyed ? BCRYPT_ALG_HANDLE_HMAC_FLAG : 0);
  return StatusOf(BCryptOpenAlgorithmProvider(&state->provider, NameOf(algorithm), nullptr, flags));
}

HashStatus ReserveHashMemory(HashState& state) {
  ULONG size = 0;
  const NTSTATUS status = ReadNumber(state.provider, BCRYPT_OBJECT_LENGTH, size);
  state.memory.resize(size);
  return StatusOf(status);
}

HashStatus GetDigestSize(HashState& state, std::size_t& size) {
  ULONG bytes = 0;
  const NTSTATUS status = ReadNumber(state.provider, BCRYPT_HASH_LENGTH, bytes);
  size = bytes;
  state.unusedDigest.resize(bytes);
  return StatusOf(status);
}

HashStatus CreateHash(HashState& state, std::span<const std::uint8_t> key) {
  if (key.size() > kMaxChunk) return StatusOf(kInvalidParameter);
  constexpr std::uint8_t kEmptyKey = 0;
  const std::uint8_t* secret = !state.isKeyed ? nullptr : key.empty() ? &kEmptyKey : key.data();
  return StatusOf(BCryptCreateHash(state.provider, &state.hash, state.memory.data(),
                                   static_cast<ULONG>(state.memory.size()), Readable(secret),
                                   static_cast<ULONG>(key.size()), kReusable));
}

// Finishing a digest starts the next one, so one that fails is finished too: otherwise its bytes
// would become part of the next.
HashStatus HashData(HashState& state, std::span<const std::uint8_t> bytes) {
  NTSTATUS status = 0;
  while (!bytes.empty() && status >= 0) {
    const std::size_t chunk = std::min(bytes.size(), kMaxChunk);
    status = BCryptHashData(state.hash, Readable(bytes.data()), static_cast<ULONG>(chunk), 0);
    bytes = bytes.subspan(chunk);
  }
  if (status < 0) FinishHash(state, state.unusedDigest);
  return StatusOf(status);
}

HashStatus FinishHash(HashState& state, std::span<std::uint8_t> digest) {
  return StatusOf(
      BCryptFinishHash(state.hash, digest.data(), static_cast<ULONG>(digest.size()), 0));
}

}  // namespace Data::Platform
