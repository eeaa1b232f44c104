#pragma once

#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text together with whether it begins as an RTF document. It is neither parsed nor converted.
///
/// Memory. A lack of memory is thrown as std::bad_alloc, and the document is as it was.
///
/// Threads. Not synchronised. Concurrent reads are safe; `SetContent`, and any use of the content
/// that changes or converts it, needs exclusive access. Take `Lock` around shared use. Reference
/// counting is atomic.
struct IRtfDocument : Core::IObject {
  /// Slot 6. Replaces the content by a copy of the text, exactly these bytes. The document is valid
  /// if they begin with "{\rtf1", case-sensitive, with nothing before it.
  /// @param length  in bytes; the text need not be zero-terminated
  /// @throws std::runtime_error "Pointer of char must not be null!" for a null text whose length
  ///         is not 0; the document is unchanged
  virtual void SetContent(const char* text, uint64_t length) = 0;
  /// Slot 7. The content; null if none was ever set. No reference is added: the document owns it
  /// until the next `SetContent`.
  virtual IString* GetContent() = 0;
  /// Slot 8. NOT equality: true if both documents are valid and the bytes of their contents differ
  /// but are of equal number. Identical documents give false, as do texts of different sizes and
  /// every failure but std::bad_alloc. To find equal documents, compare their contents.
  virtual bool Equals(IRtfDocument* other) = 0;
  /// Slot 9. Whether the content was valid when it was set.
  virtual bool IsValid() = 0;

 protected:
  ~IRtfDocument() = default;
};

}  // namespace Data::Interfaces
