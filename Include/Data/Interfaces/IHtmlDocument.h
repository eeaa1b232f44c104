#pragma once

#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text that may or may not begin as an HTML document. It is neither parsed
/// nor converted.
struct IHtmlDocument : Core::IObject {
  /// Slot 6. Replaces the content by a copy of the text, exactly these bytes. It
  /// is valid if it begins with "<!DOCTYPE html>", case-sensitive, with nothing
  /// before it.
  /// @param length  in bytes; the text need not be zero-terminated
  /// @throws std::runtime_error "Pointer of char must not be null!" for a null
  ///         text whose length is not 0; the document is unchanged
  virtual void SetContent(const char* text, uint64_t length) = 0;
  /// Slot 7. The content, no reference added; null when none was ever set. It
  /// belongs to the document until the next `SetContent`.
  virtual IString* GetContent() = 0;
  /// Slot 8. NOT equality: true when both documents are valid and their contents
  /// have the same size but differ. Identical documents give false, and so does
  /// everything else. Compare the contents to find equal ones. Never throws.
  virtual bool Equals(IHtmlDocument* other) = 0;
  /// Slot 9. Whether the content began as it must when it was set.
  virtual bool IsValid() = 0;

 protected:
  ~IHtmlDocument() = default;
};

}  // namespace Data::Interfaces
