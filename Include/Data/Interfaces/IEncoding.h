#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IArray.h"

namespace Data::Interfaces {

/// Converts bytes to Base64 text and back, both as byte arrays.
///
/// Both operations read the first `GetCount` bytes of their input and hold a reference to it while
/// they run, because the input may be an object that the caller implements.
///
/// Failures. Both operations are guarded: they never throw, but return false, leave `out` unchanged
/// and store an error object in `error`. They fail only for a bad argument (as the exported
/// functions do, see Exports.h), with "Offset or size are not in data bounds" for an array with
/// fewer bytes than elements, and with "std::bad_alloc" if there is no memory. Every text can be
/// decoded.
///
/// Threads. Immutable: any number of threads may use one encoder at the same time. Reference
/// counting is atomic.
struct IEncoding : Core::IObject {
  /// Slot 6. Encodes bytes.
  /// @param out  receives a new array, which the caller releases: the characters of the text,
  ///             without a terminator
  virtual bool Encode(IArray* input, IArray** out, Core::IErrorCode** error) = 0;
  /// Slot 7. Decodes text up to its end, or up to the first character outside the alphabet, such as
  /// "="; the rest is ignored. Padding is not required. An incomplete last group gives its complete
  /// bytes.
  /// @param out  receives a new array with the decoded bytes, which the caller releases
  virtual bool Decode(IArray* input, IArray** out, Core::IErrorCode** error) = 0;

 protected:
  ~IEncoding() = default;
};

}  // namespace Data::Interfaces
