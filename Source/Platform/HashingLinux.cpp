#include <openssl/core_names.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/params.h>

#include "Platform/Hashing.h"

namespace Data::Platform {

namespace {

struct Free {
  void operator()(EVP_MD* algorithm) const { EVP_MD_free(algorithm); }
  void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
  void operator()(EVP_MAC* algorithm) const { EVP_MAC_free(algorithm); }
  void operator()(EVP_MAC_CTX* context) const { EVP_MAC_CTX_free(context); }
};

template <class T>
using Owned = std::unique_ptr<T, Free>;

/// Takes the last error off OpenSSL's queue.
HashStatus StatusOf(bool isSuccess) {
  if (isSuccess) return {true, 0};
  const unsigned long error = ERR_peek_last_error();
  ERR_clear_error();
  return {false, static_cast<std::int32_t>(error)};
}

const char* NameOf(HashAlgorithm algorithm) {
  switch (algorithm) {
    case HashAlgorithm::Md5:
      return "MD5";
    case HashAlgorithm::Sha1:
      return "SHA1";
    case HashAlgorithm::Sha256:
      return "SHA256";
    case HashAlgorithm::Sha384:
      return "SHA384";
    case HashAlgorithm::Sha512:
      return "SHA512";
  }
  return "";
}

}  // namespace

/// Algorithms are looked up by name once, which takes longer than hashing a
/// short text. An HMAC has a context of its own kind.
struct HashState {
  Owned<EVP_MD> algorithm;
  Owned<EVP_MD_CTX> context;
  Owned<EVP_MAC> keyedAlgorithm;
  Owned<EVP_MAC_CTX> keyedContext;
};

void FreeHashState::operator()(HashState* state) const noexcept { delete state; }

std::string HashStatusText(HashStatus status) {
  const char* text = ERR_reason_error_string(static_cast<std::uint32_t>(status.number));
  return text ? text : "<Error message could not be obtained from Ntdll.dll>";
}

HashStatus OpenHashAlgorithm(HashAlgorithm algorithm, bool isKeyed, HashStatePtr& state) {
  state.reset(new HashState);
  state->algorithm.reset(EVP_MD_fetch(nullptr, NameOf(algorithm), nullptr));
  if (isKeyed) state->keyedAlgorithm.reset(EVP_MAC_fetch(nullptr, "HMAC", nullptr));
  return StatusOf(state->algorithm && (!isKeyed || state->keyedAlgorithm));
}

HashStatus ReserveHashMemory(HashState& state) {
  if (state.keyedAlgorithm) {
    state.keyedContext.reset(EVP_MAC_CTX_new(state.keyedAlgorithm.get()));
    return StatusOf(state.keyedContext != nullptr);
  }
  state.context.reset(EVP_MD_CTX_new());
  return StatusOf(state.context != nullptr);
}

HashStatus GetDigestSize(HashState& state, std::size_t& size) {
  const int bytes = EVP_MD_get_size(state.algorithm.get());
  if (bytes > 0) size = static_cast<std::size_t>(bytes);
  return StatusOf(bytes > 0);
}

HashStatus StartHash(HashState& state, std::span<const std::uint8_t> key) {
  if (!state.keyedContext)
    return StatusOf(EVP_DigestInit_ex2(state.context.get(), state.algorithm.get(), nullptr) == 1);
  auto* name = const_cast<char*>(EVP_MD_get0_name(state.algorithm.get()));
  const OSSL_PARAM parameters[] = {OSSL_PARAM_construct_utf8_string(OSSL_MAC_PARAM_DIGEST, name, 0),
                                   OSSL_PARAM_construct_end()};
  // A null key would mean to keep the one before.
  constexpr std::uint8_t kEmptyKey = 0;
  return StatusOf(EVP_MAC_init(state.keyedContext.get(), key.empty() ? &kEmptyKey : key.data(),
                               key.size(), parameters) == 1);
}

HashStatus AddToHash(HashState& state, std::span<const std::uint8_t> bytes) {
  const bool isSuccess =
      state.keyedContext ? EVP_MAC_update(state.keyedContext.get(), bytes.data(), bytes.size()) == 1
                         : EVP_DigestUpdate(state.context.get(), bytes.data(), bytes.size()) == 1;
  return StatusOf(isSuccess);
}

HashStatus FinishHash(HashState& state, std::span<std::uint8_t> digest) {
  if (state.keyedContext) {
    std::size_t size = 0;
    return StatusOf(EVP_MAC_final(state.keyedContext.get(), digest.data(), &size, digest.size()) ==
                        1 &&
                    EVP_MAC_init(state.keyedContext.get(), nullptr, 0, nullptr) == 1);
  }
  return StatusOf(EVP_DigestFinal_ex(state.context.get(), digest.data(), nullptr) == 1 &&
                  EVP_DigestInit_ex2(state.context.get(), nullptr, nullptr) == 1);
}

}  // namespace Data::Platform
