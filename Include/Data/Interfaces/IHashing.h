#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IArray.h"

namespace Data::Interfaces {

/// Computes digests with one algorithm, and one key if it was created with one.
/// The computation's state belongs to the object, so threads do not call `Hash`
/// on the same one at once.
///
/// A failure of the system's cryptography is reported as a text that begins with
/// one of "Failed to open algoritm provider!", "Failed to calculate object
/// size!", "Failed to calculate hash size!", "Failed to create hash!" (all from
/// the factories), "Failed to hash data!" and "Failed to finish hashing!", and
/// ends with " NTSTATUS: %d, Message: %s": its number and its own text.
struct IHashing : Core::IObject {
  /// Slot 6. Digest of bytes; each call starts over. Guarded.
  /// @param data    not null, even if `length` is 0: "Pointer of void must not be
  ///                null!"
  /// @param length  in bytes
  /// @param out     receives a new array with the bytes of the digest: 16 for
  ///                MD5, 20 for SHA-1, 32, 48 or 64 for SHA-2
  virtual bool Hash(const void* data, uint64_t length, IArray** out, Core::IErrorCode** error) = 0;

 protected:
  ~IHashing() = default;
};

}  // namespace Data::Interfaces
