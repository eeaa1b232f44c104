#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text, typically a password, that is encrypted in memory with a key of this process.
///
/// Plain text. The library overwrites each of its own buffers that held the plain text once it is
/// no longer needed, including the buffers of strings from `GetText`. It cannot overwrite:
///   - the string that the secure string was created from, and the buffers of its conversion to
///     UTF-8: set UTF-8 text in the first place, and overwrite it before you release the string;
///   - copies that the caller makes;
///   - pages that the system swapped out.
///
/// Threads. Immutable: any number of threads may use one object at the same time. Reference
/// counting is atomic.
struct ISecureString : Core::IObject {
  /// Slot 6. Decrypts the text.
  /// @param out  receives a new string that holds UTF-8, which the caller releases. The text is
  ///             plain in memory until then, so release it promptly. The last release overwrites
  ///             it, and so does `Clear`.
  /// @return false with "SecureString: Decrypt memory failed!", "std::bad_alloc", "Pointer to a
  ///         pointer of struct Data::Interfaces::IString must not be null! Address of return must
  ///         be specified!", or "Pointer of struct Data::Interfaces::IString must be null in order
  ///         to avoid memory leaks!"
  virtual bool GetText(IString** out, Core::IErrorCode** error) = 0;
  /// Slot 7. The length of the text in bytes of UTF-8.
  virtual uint64_t GetLength() = 0;

 protected:
  ~ISecureString() = default;
};

}  // namespace Data::Interfaces
