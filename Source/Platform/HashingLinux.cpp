#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/params.h>

#include "Platform/Hashing.h"
#include "Platform/ProviderErrors.h"

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

/// Runs a step that returns whether it succeeded.
template <class Step>
HashStatus StatusOf(Step step) {
  const ProviderErrors errors;
  if (step()) return {true, 0};
  return {false, static_cast<std::int32_t>(ERR_peek_last_error())};
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

/// Fetching an algorithm by name takes longer than hashing a short text, so it is
/// done once. An HMAC has a context of another type.
struct HashState {
  Owned<EVP_MD> algorithm;
  Owned<EVP_MD_CTX> context;
  Owned<EVP_MAC> keyedAlgorithm;
  Owned<EVP_MAC_CTX> keyedContext;
};

void FreeHashState::operator()(HashState* state) const noexcept { delete state; }

std::string HashStatusText(HashStatus status) {
  const ProviderErrors errors;
  const char* text = ERR_reason_error_string(static_cast<std::uint32_t>(status.number));
  return text ? text : "<Error message could not be obtained from Ntdll.dll>";
}

HashStatus OpenHashAlgorithm(HashAlgorithm algorithm, bool isKeyed, HashStatePtr& state) {
  state.reset(new HashState);
  return StatusOf([&] {
    state->algorithm.reset(EVP_MD_fetch(nullptr, NameOf(algorithm), nullptr));
    if (isKeyed) state->keyedAlgorithm.reset(EVP_MAC_fetch(nullptr, "HMAC", nullptr));
    return state->algorithm && (!isKeyed || state->keyedAlgorithm);
  });
}

HashStatus ReserveHashMemory(HashState& state) {
  return StatusOf([&] {
    if (state.keyedAlgorithm) {
      state.keyedContext.reset(EVP_MAC_CTX_new(state.keyedAlgorithm.get()));
      return state.keyedContext != nullptr;
    }
    state.context.reset(EVP_MD_CTX_new());
    return state.context != nullptr;
  });
}

HashStatus GetDigestSize(HashState& state, std::size_t& size) {
  return StatusOf([&] {
    size = static_cast<std::size_t>(EVP_MD_get_size(state.algorithm.get()));
    return true;
  });
}

HashStatus CreateHash(HashState& state, std::span<const std::uint8_t> key) {
  return StatusOf([&] {
    if (!state.keyedContext)
      return EVP_DigestInit_ex2(state.context.get(), state.algorithm.get(), nullptr) == 1;
    auto* name = const_cast<char*>(EVP_MD_get0_name(state.algorithm.get()));
    const OSSL_PARAM parameters[] = {
        OSSL_PARAM_construct_utf8_string(OSSL_MAC_PARAM_DIGEST, name, 0),
        OSSL_PARAM_construct_end()};
    // A null key would mean the previous one.
    constexpr std::uint8_t kEmptyKey = 0;
    return EVP_MAC_init(state.keyedContext.get(), key.empty() ? &kEmptyKey : key.data(), key.size(),
                        parameters) == 1;
  });
}

// A context that failed to start must not be used, but can be started again. So the context is
// started before each digest rather than after it.
HashStatus HashData(HashState& state, std::span<const std::uint8_t> bytes) {
  return StatusOf([&] {
    if (state.keyedContext)
      return EVP_MAC_init(state.keyedContext.get(), nullptr, 0, nullptr) == 1 &&
             EVP_MAC_update(state.keyedContext.get(), bytes.data(), bytes.size()) == 1;
    return EVP_DigestInit_ex2(state.context.get(), state.algorithm.get(), nullptr) == 1 &&
           EVP_DigestUpdate(state.context.get(), bytes.data(), bytes.size()) == 1;
  });
}

HashStatus FinishHash(HashState& state, std::span<std::uint8_t> digest) {
  return StatusOf([&] {
    if (!state.keyedContext)
      return EVP_DigestFinal_ex(state.context.get(), digest.data(), nullptr) == 1;
    std::size_t size = 0;
    return EVP_MAC_final(state.keyedContext.get(), digest.data(), &size, digest.size()) == 1;
  });
}

}  // namespace Data::Platform
