#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IArray.h"

namespace Data::Interfaces {

/// Computes digests with one algorithm, and with one key if it was created with a key.
///
/// Failures. If the system's cryptography fails, the message is one of the following, and then
/// " NTSTATUS: %d, Message: %s" with the system's error number and text. This includes a lack of
/// memory in the system's cryptography; elsewhere the message is "std::bad_alloc".
///   - factories: "Failed to open algoritm provider!", "Failed to calculate object size!", "Failed
///     to calculate hash size!", "Failed to create hash!"
///   - `Hash`: "Failed to hash data!", "Failed to finish hashing!"
///
/// Threads. Not synchronised: `Hash` uses the object's state, so it needs exclusive access. Take
/// `Lock` around shared use. Reference counting is atomic.
struct IHashing : Core::IObject {
  /// Slot 6. Computes the digest of bytes, independently of earlier calls. Guarded: on failure it
  /// returns false, leaves `out` unchanged and stores an error object in `error`. The object can be
  /// used again.
  /// @param data    must not be null, even if `length` is 0: "Pointer of void must not be null!"
  /// @param length  in bytes
  /// @param out     receives a new array with the digest, which the caller releases: 16 bytes for
  ///                MD5, 20 for SHA-1, and 32, 48 or 64 for SHA-2. Failures as in Exports.h.
  virtual bool Hash(const void* data, uint64_t length, IArray** out, Core::IErrorCode** error) = 0;

 protected:
  ~IHashing() = default;
};

}  // namespace Data::Interfaces
