#pragma once

#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text, and whether it is well-formed XML.
///
/// Syntax. The parser is fast and lenient: elements must be closed, but names in end tags are
/// ignored; a text without any element is well-formed; unknown entities are kept as they are. A
/// complete byte-order mark at the beginning is skipped. The text ends at its first zero byte. A
/// text with elements nested deeper than 1,000 levels is invalid, so that no document exhausts the
/// stack.
///
/// Memory. A lack of memory throws std::bad_alloc. It never counts as "not valid" or "not equal",
/// and it changes nothing.
///
/// Callbacks. The document passed to `Equals` may be an object that the caller implements; both
/// documents are held while it is called.
///
/// Threads. Not synchronised: concurrent reads are safe; `SetContent`, and any use of the content
/// that changes or converts it, needs exclusive access. Take `Lock` around shared use. Reference
/// counting is atomic.
struct IXmlDocument : Core::IObject {
  /// Slot 6. Replaces the content with a copy of the text, byte for byte, and checks it. Text that
  /// is not XML is not a failure: it is stored, and the document is not valid.
  /// @param length  in bytes; the text need not be zero-terminated
  /// @throws std::runtime_error "Pointer of char must not be null!" for a null text whose length is
  ///         not 0; the document is unchanged
  virtual void SetContent(const char* text, uint64_t length) = 0;
  /// Slot 7. The content, or null if none was ever set. No reference is added: the content is valid
  /// until the next `SetContent` or until the document is destroyed. `Equals` parses the UTF-8 form
  /// of its current text, whatever its encoding, and never changes it.
  virtual IString* GetContent() = 0;
  /// Slot 8. Whether both documents are valid and equal. White space between elements, the kind of
  /// quotes around attribute values, and the spelling of character references make no difference.
  /// Declarations, comments, processing instructions and document types are ignored. Every failure
  /// except std::bad_alloc gives false.
  virtual bool Equals(IXmlDocument* other) = 0;
  /// Slot 9. Whether the content was well-formed when it was set.
  virtual bool IsValid() = 0;

 protected:
  ~IXmlDocument() = default;
};

}  // namespace Data::Interfaces
