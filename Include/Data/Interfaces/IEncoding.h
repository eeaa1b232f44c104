#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IArray.h"

namespace Data::Interfaces {

/// Converts bytes to Base64 text and back, both as byte arrays. Keeps nothing
/// between calls; one encoder serves many threads.
///
/// Input arrays are read as bytes: `GetCount` of them from the first on. Both
/// operations are guarded; besides the arguments nothing fails, save memory and
/// an array that holds fewer bytes than it counts ("Offset or size are not in
/// data bounds").
struct IEncoding : Core::IObject {
  /// Slot 6. Encodes bytes.
  /// @param out  receives a new array with the characters of the text, no
  ///             terminator; empty for empty input
  virtual bool Encode(IArray* input, IArray** out, Core::IErrorCode** error) = 0;
  /// Slot 7. Decodes text up to the first "=" or other character outside the
  /// alphabet; what follows is ignored. Padding is not required; of an
  /// incomplete last group the whole bytes count.
  /// @param out  receives a new array with the decoded bytes
  virtual bool Decode(IArray* input, IArray** out, Core::IErrorCode** error) = 0;

 protected:
  ~IEncoding() = default;
};

}  // namespace Data::Interfaces
