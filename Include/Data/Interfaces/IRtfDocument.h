#pragma once

#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text, and whether it begins like an RTF document. The text is neither parsed nor converted.
///
/// Memory. A lack of memory throws std::bad_alloc and changes nothing.
///
/// Callbacks. The document passed to `Equals` may be an object that the caller implements; both
/// documents are held while it is called.
///
/// Threads. Not synchronised: concurrent reads are safe; `SetContent`, and any use of the content
/// that changes or converts it, needs exclusive access. Take `Lock` around shared use. Reference
/// counting is atomic.
struct IRtfDocument : Core::IObject {
  /// Slot 6. Replaces the content with a copy of the text, byte for byte. The document is valid if
  /// the text begins with exactly "{\rtf1".
  /// @param length  in bytes; the text need not be zero-terminated
  /// @throws std::runtime_error "Pointer of char must not be null!" for a null text whose length is
  ///         not 0; the document is unchanged
  virtual void SetContent(const char* text, uint64_t length) = 0;
  /// Slot 7. The content, or null if none was ever set. No reference is added: the content is valid
  /// until the next `SetContent` or until the document is destroyed.
  virtual IString* GetContent() = 0;
  /// Slot 8. This is NOT equality: true if both documents are valid and their contents have the
  /// same number of bytes but different bytes. Identical contents and contents of different sizes
  /// give false, and so does every failure except std::bad_alloc. To test for equality, compare the
  /// contents.
  virtual bool Equals(IRtfDocument* other) = 0;
  /// Slot 9. Whether the content was valid when it was set.
  virtual bool IsValid() = 0;

 protected:
  ~IRtfDocument() = default;
};

}  // namespace Data::Interfaces
