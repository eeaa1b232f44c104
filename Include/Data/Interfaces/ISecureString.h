#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text, typically a password, that is kept enciphered in memory and can be
/// deciphered in this process alone. Never changes, so threads may share it.
struct ISecureString : Core::IObject {
  /// Slot 6. The plain text. Guarded; fails with "SecureString: Decrypt memory
  /// failed!".
  /// @param out  receives a new string that holds UTF-8; the caller sees to its
  ///             life, since it is kept in plain memory
  virtual bool GetText(IString** out, Core::IErrorCode** error) = 0;
  /// Slot 7. Length of the text in bytes of UTF-8.
  virtual uint64_t GetLength() = 0;

 protected:
  ~ISecureString() = default;
};

}  // namespace Data::Interfaces
