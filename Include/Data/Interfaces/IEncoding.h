#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IArray.h"

namespace Data::Interfaces {

/// Converts bytes to Base64 text and back, both as byte arrays.
///
/// Immutable: threads may use one encoder at once. Reference counting is atomic.
///
/// Both operations read the first `GetCount` bytes of their input, and hold a
/// reference to it meanwhile. Both are guarded: false, `out` unchanged and the
/// failure in `error`. They fail only for a null argument or an out-pointer in use,
/// without memory ("std::bad_alloc"), and for an array with fewer bytes than
/// elements ("Offset or size are not in data bounds"). No text is an error.
struct IEncoding : Core::IObject {
  /// Slot 6. Encodes bytes.
  /// @param out  receives a new array and one reference, which the caller releases:
  ///             the characters of the text without a terminator; empty for empty
  ///             input
  virtual bool Encode(IArray* input, IArray** out, Core::IErrorCode** error) = 0;
  /// Slot 7. Decodes text up to its end, its first "=" or the first other character
  /// outside the alphabet; the rest is ignored. Padding is not required. Of an
  /// incomplete last group the complete bytes count.
  /// @param out  receives a new array with the decoded bytes and one reference,
  ///             which the caller releases
  virtual bool Decode(IArray* input, IArray** out, Core::IErrorCode** error) = 0;

 protected:
  ~IEncoding() = default;
};

}  // namespace Data::Interfaces
