#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text that may or may not be one well-formed JSON value.
///
/// JSON is read strictly (no comments, trailing commas, NaN), to any depth of
/// nesting. A number too large for a double makes the text invalid, one too
/// small counts as zero. Each byte of a byte-order mark before the value is
/// skipped; the value ends at the first zero byte. Bytes of strings are not
/// checked to be UTF-8.
struct IJsonDocument : Core::IObject {
  /// Slot 6. Replaces the content by a copy of the text, exactly these bytes,
  /// and decides whether it is valid. Never fails on bad JSON.
  /// @param length  in bytes; the text need not be zero-terminated
  /// @throws std::runtime_error "Pointer of char must not be null!" for a null
  ///         text whose length is not 0; the document is unchanged
  virtual void SetContent(const char* text, uint64_t length) = 0;
  /// Slot 7. The content, no reference added; null when none was ever set. It
  /// belongs to the document until the next `SetContent`. The operations below
  /// read the bytes that it holds: leave it in UTF-8.
  virtual IString* GetContent() = 0;
  /// Slot 8. The content without insignificant white space, as a new string
  /// that the caller releases. Doubles are written in the shortest form that
  /// reads back as the same number. Content that is not valid gives "null".
  /// @return false with an error for a document without content ("Null pointer
  ///         exception! Interface is not accessible: struct
  ///         Data::Interfaces::IString") or a bad out-pointer
  virtual bool ToCompactString(IString** out, Core::IErrorCode** error) = 0;
  /// Slot 9. Whether both documents are valid and hold equal values: members in
  /// any order, numbers by value, strings by bytes. Each member of this
  /// document is compared with the first one of its name in the other, so
  /// repeated names can make a document differ from itself. Never throws.
  virtual bool Equals(IJsonDocument* other) = 0;
  /// Slot 10. Whether the content was well-formed when it was set.
  virtual bool IsValid() = 0;

 protected:
  ~IJsonDocument() = default;
};

}  // namespace Data::Interfaces
