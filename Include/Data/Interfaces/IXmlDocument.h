#pragma once

#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text that may or may not be well-formed XML.
struct IXmlDocument : Core::IObject {
  /// Slot 6. Replaces the content by a copy of the text, exactly these bytes,
  /// and decides whether it is valid. Never fails on bad XML.
  /// @param length  in bytes; the text need not be zero-terminated
  virtual void SetContent(const char* text, uint64_t length) = 0;
  /// Slot 7. The content, no reference added; null when none was ever set.
  virtual IString* GetContent() = 0;
  /// Slot 8. Whether both documents are valid and equal once white space
  /// between elements, attribute quotes and character references are
  /// normalised. Never throws.
  virtual bool Equals(IXmlDocument* other) = 0;
  /// Slot 9. Whether the content is well-formed.
  virtual bool IsValid() = 0;

 protected:
  ~IXmlDocument() = default;
};

}  // namespace Data::Interfaces
