#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text that may or may not be one well-formed JSON value.
struct IJsonDocument : Core::IObject {
  /// Slot 6. Replaces the content by a copy of the text, exactly these bytes,
  /// and decides whether it is valid: one JSON value between optional white
  /// space, an initial byte-order mark skipped. Never fails on bad JSON.
  /// @param length  in bytes; the text need not be zero-terminated
  virtual void SetContent(const char* text, uint64_t length) = 0;
  /// Slot 7. The content, no reference added; null when none was ever set.
  virtual IString* GetContent() = 0;
  /// Slot 8. The content without insignificant white space, as a new string
  /// that the caller releases. Content that is not valid gives "null".
  /// @return false with an error for a document without content ("Null pointer
  ///         exception! Interface is not accessible: struct
  ///         Data::Interfaces::IString") or a bad out-pointer
  virtual bool ToCompactString(IString** out, Core::IErrorCode** error) = 0;
  /// Slot 9. Whether both documents are valid and hold equal values: members in
  /// any order, numbers by value. Never throws.
  virtual bool Equals(IJsonDocument* other) = 0;
  /// Slot 10. Whether the content is well-formed.
  virtual bool IsValid() = 0;

 protected:
  ~IJsonDocument() = default;
};

}  // namespace Data::Interfaces
