#pragma once

#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text that may or may not be well-formed XML.
///
/// The check is that of a fast, lenient parser: elements must be closed, but the
/// name in the end tag is not looked at; a text without any element is well-formed;
/// unknown entities stay as they are. The text ends at its first zero byte, a whole
/// byte-order mark before it is skipped. Elements nested deeper than 1,000 levels
/// make it invalid, so that no document exhausts the stack.
struct IXmlDocument : Core::IObject {
  /// Slot 6. Replaces the content by a copy of the text, exactly these bytes,
  /// and decides whether it is valid. Never fails on bad XML.
  /// @param length  in bytes; the text need not be zero-terminated
  /// @throws std::runtime_error "Pointer of char must not be null!" for a null
  ///         text whose length is not 0; the document is unchanged
  virtual void SetContent(const char* text, uint64_t length) = 0;
  /// Slot 7. The content, no reference added; null when none was ever set. It
  /// belongs to the document until the next `SetContent`. `Equals` reads the
  /// bytes that it holds: leave it in UTF-8.
  virtual IString* GetContent() = 0;
  /// Slot 8. Whether both documents are valid and equal once white space
  /// between elements, attribute quotes and character references are
  /// normalised; declarations, comments, processing instructions and document
  /// types do not count. Never throws.
  virtual bool Equals(IXmlDocument* other) = 0;
  /// Slot 9. Whether the content was well-formed when it was set.
  virtual bool IsValid() = 0;

 protected:
  ~IXmlDocument() = default;
};

}  // namespace Data::Interfaces
