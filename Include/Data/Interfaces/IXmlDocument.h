#pragma once

#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text together with whether it is well-formed XML.
///
/// Syntax. The parser is fast and lenient: elements must be closed, but the name in the end tag is
/// ignored; a text without any element is well-formed; unknown entities are kept as they are. The
/// text ends at its first zero byte; a complete byte-order mark before it is skipped. Elements
/// nested deeper than 1,000 levels make it invalid, so that no document exhausts the stack.
///
/// Memory. A lack of memory is thrown as std::bad_alloc; it never counts as "not valid" or "not
/// equal", and the document is as it was.
///
/// Threads. Not synchronised. Concurrent reads are safe; `SetContent`, and any use of the content
/// that changes or converts it, needs exclusive access. Take `Lock` around shared use. Reference
/// counting is atomic.
struct IXmlDocument : Core::IObject {
  /// Slot 6. Replaces the content by a copy of the text, exactly these bytes, and checks it. Text
  /// that is not XML is not a failure: it is stored and the document is not valid.
  /// @param length  in bytes; the text need not be zero-terminated
  /// @throws std::runtime_error "Pointer of char must not be null!" for a null text whose length
  ///         is not 0; the document is unchanged
  virtual void SetContent(const char* text, uint64_t length) = 0;
  /// Slot 7. The content; null if none was ever set. No reference is added: the document owns it
  /// until the next `SetContent`. `Equals` parses what it holds at the time, as UTF-8 whatever its
  /// encoding is, and never changes it.
  virtual IString* GetContent() = 0;
  /// Slot 8. Whether both documents are valid and equal once white space between elements, quotes
  /// of attributes and character references are normalised. Declarations, comments, processing
  /// instructions and document types do not count. Every failure but std::bad_alloc, also of
  /// another implementation's document, gives false.
  virtual bool Equals(IXmlDocument* other) = 0;
  /// Slot 9. Whether the content was well-formed when it was set.
  virtual bool IsValid() = 0;

 protected:
  ~IXmlDocument() = default;
};

}  // namespace Data::Interfaces
