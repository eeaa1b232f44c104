#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text together with whether it is one well-formed JSON value.
///
/// Syntax. JSON is parsed strictly (no comments, no trailing commas, no NaN) and nested to any
/// depth. A number too large for a double makes the text invalid; one too small counts as zero.
/// Each byte of a byte-order mark before the value is skipped; the value ends at the first zero
/// byte. Strings are not checked to be UTF-8.
///
/// Memory. A lack of memory is thrown as std::bad_alloc, or reported by a guarded operation; it
/// never counts as "not valid" or "not equal", and the document is as it was.
///
/// Threads. Not synchronised. Concurrent reads are safe; `SetContent`, and any use of the content
/// that changes or converts it, needs exclusive access. Take `Lock` around shared use. Reference
/// counting is atomic.
struct IJsonDocument : Core::IObject {
  /// Slot 6. Replaces the content by a copy of the text, exactly these bytes, and checks it. Text
  /// that is not JSON is not a failure: it is stored and the document is not valid.
  /// @param length  in bytes; the text need not be zero-terminated
  /// @throws std::runtime_error "Pointer of char must not be null!" for a null text whose length
  ///         is not 0; the document is unchanged
  virtual void SetContent(const char* text, uint64_t length) = 0;
  /// Slot 7. The content; null if none was ever set. No reference is added: the document owns it
  /// until the next `SetContent`. The operations below parse what it holds at the time, as UTF-8
  /// whatever its encoding is, and never change it.
  virtual IString* GetContent() = 0;
  /// Slot 8. The content without insignificant white space. Doubles are written in the shortest
  /// form that reads back as the same number. Content that is not JSON gives "null".
  /// @param out  receives a new string that the caller releases
  /// @return false with an error for a document without content ("Null pointer exception!
  ///         Interface is not accessible: struct Data::Interfaces::IString") and for an
  ///         out-pointer that is null or holds an object
  virtual bool ToCompactString(IString** out, Core::IErrorCode** error) = 0;
  /// Slot 9. Whether both documents are valid and hold equal values: members in any order, strings
  /// by their bytes. Two integers are equal if their 64 bits are (-1 equals 18446744073709551615);
  /// an integer equals the double it rounds to. Each member of this document is compared with the
  /// first one of its name in the other, so a document whose names repeat may differ from itself.
  /// Every failure but std::bad_alloc, also of another implementation's document, gives false.
  virtual bool Equals(IJsonDocument* other) = 0;
  /// Slot 10. Whether the content was well-formed when it was set.
  virtual bool IsValid() = 0;

 protected:
  ~IJsonDocument() = default;
};

}  // namespace Data::Interfaces
