#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

/// The system's hash functions. Each step can fail with a status that depends on the system.
namespace Data::Platform {

enum class HashAlgorithm { Md5, Sha1, Sha256, Sha384, Sha512 };

/// The result of a step; the number's meaning depends on the system.
struct HashStatus {
  bool isSuccess;
  std::int32_t number;
};

/// The system's own text for a status.
std::string HashStatusText(HashStatus status);

/// An algorithm, its key and the computation in progress.
struct HashState;
struct FreeHashState {
  void operator()(HashState* state) const noexcept;
};
using HashStatePtr = std::unique_ptr<HashState, FreeHashState>;

// -- Setting up, in this order --

/// @param isKeyed  whether to compute HMACs with this algorithm
HashStatus OpenHashAlgorithm(HashAlgorithm algorithm, bool isKeyed, HashStatePtr& state);
HashStatus ReserveHashMemory(HashState& state);
HashStatus GetDigestSize(HashState& state, std::size_t& size);
/// @param key  the key of an HMAC, otherwise ignored; this module keeps no copy
HashStatus CreateHash(HashState& state, std::span<const std::uint8_t> key);

// -- For each digest --

/// Starts over with the key of `CreateHash` and adds the bytes. After a failure of either function,
/// the state can compute another digest.
HashStatus HashData(HashState& state, std::span<const std::uint8_t> bytes);
/// Only after `HashData` succeeded.
/// @param digest  of the size from `GetDigestSize`
HashStatus FinishHash(HashState& state, std::span<std::uint8_t> digest);

}  // namespace Data::Platform
