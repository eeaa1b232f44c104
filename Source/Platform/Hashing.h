#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

/// The system's hash functions. A computation is prepared in steps, each of
/// which can fail with a status of the system's own.
namespace Data::Platform {

enum class HashAlgorithm { Md5, Sha1, Sha256, Sha384, Sha512 };

/// The number that a step ends with; what it means is the system's matter.
struct HashStatus {
  bool isSuccess;
  std::int32_t number;
};

/// The system's own text for a status.
std::string HashStatusText(HashStatus status);

/// A computation that starts over by itself after each digest.
struct HashState;
struct FreeHashState {
  void operator()(HashState* state) const noexcept;
};
using HashStatePtr = std::unique_ptr<HashState, FreeHashState>;

// -- The steps in their order --

/// @param isKeyed  for an HMAC with this algorithm
HashStatus OpenHashAlgorithm(HashAlgorithm algorithm, bool isKeyed, HashStatePtr& state);
HashStatus ReserveHashMemory(HashState& state);
HashStatus GetDigestSize(HashState& state, std::size_t& size);
/// @param key  of an HMAC, else ignored; not kept
HashStatus StartHash(HashState& state, std::span<const std::uint8_t> key);

// -- Again and again --

HashStatus AddToHash(HashState& state, std::span<const std::uint8_t> bytes);
/// @param digest  of the size that was asked for
HashStatus FinishHash(HashState& state, std::span<std::uint8_t> digest);

}  // namespace Data::Platform
