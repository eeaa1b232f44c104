#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IArray.h"

namespace Data::Interfaces {

/// Computes digests with one algorithm, and with one key if it was created with a
/// key.
///
/// Threads. Not synchronised: the object holds the state of the computation, so only
/// one thread at a time may call `Hash`; take `Lock` around shared use. Reference
/// counting is atomic.
///
/// Failures. If the system's cryptography fails, for lack of memory or otherwise, the
/// message is one of these, followed by " NTSTATUS: %d, Message: %s" with the system's
/// number and text. From the factories: "Failed to open algoritm provider!", "Failed
/// to calculate object size!", "Failed to calculate hash size!", "Failed to create
/// hash!". From `Hash`: "Failed to hash data!", "Failed to finish hashing!".
struct IHashing : Core::IObject {
  /// Slot 6. Computes the digest of bytes, independent of earlier calls. Guarded:
  /// false, `out` unchanged and the failure in `error`; the object can be used again.
  /// @param data    not null, even if `length` is 0: "Pointer of void must not be
  ///                null!"
  /// @param length  in bytes
  /// @param out     receives a new array with the bytes of the digest and one
  ///                reference, which the caller releases: 16 bytes for MD5, 20 for
  ///                SHA-1, 32, 48 or 64 for SHA-2
  virtual bool Hash(const void* data, uint64_t length, IArray** out, Core::IErrorCode** error) = 0;

 protected:
  ~IHashing() = default;
};

}  // namespace Data::Interfaces
