#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text, typically a password, encrypted in memory with a key of this process.
///
/// Immutable: threads may use one object at once. Reference counting is atomic.
///
/// What the library overwrites when it is no longer needed: every buffer of its own
/// that held the plain text, those of the strings from `GetText` included. What it
/// cannot: the string that the secure string was created from and the buffers of its
/// conversion to UTF-8 (set UTF-8 text in the first place, and overwrite it before the
/// release), copies that the caller makes, and pages that the system swapped out.
struct ISecureString : Core::IObject {
  /// Slot 6. Decrypts the text. Guarded: false and "SecureString: Decrypt memory
  /// failed!" if the system fails, "std::bad_alloc" without memory.
  /// @param out  receives a new string that holds UTF-8 and one reference, which
  ///             the caller releases. The text is plain in memory until then, so
  ///             release it promptly; the last release overwrites it, and so does
  ///             `Clear`.
  virtual bool GetText(IString** out, Core::IErrorCode** error) = 0;
  /// Slot 7. Length of the text in bytes of UTF-8.
  virtual uint64_t GetLength() = 0;

 protected:
  ~ISecureString() = default;
};

}  // namespace Data::Interfaces
