#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IString.h"

namespace Data::Interfaces {

/// A text, and whether it is one well-formed JSON value.
///
/// Syntax. JSON is parsed strictly: no comments, no trailing commas, no NaN. Values may be nested
/// to any depth. A number too large for a double makes the text invalid; one too small counts as
/// zero. Any of the three bytes of a byte-order mark are skipped before the value. The text ends at
/// its first zero byte. Strings are not checked for valid UTF-8.
///
/// Memory. A lack of memory throws std::bad_alloc or makes the guarded operation fail with code 2.
/// It never counts as "not valid" or "not equal", and it changes nothing.
///
/// Callbacks. The document passed to `Equals` may be an object that the caller implements; both
/// documents are held while it is called.
///
/// Threads. Not synchronised: concurrent reads are safe; `SetContent`, and any use of the content
/// that changes or converts it, needs exclusive access. Take `Lock` around shared use. Reference
/// counting is atomic.
struct IJsonDocument : Core::IObject {
  /// Slot 6. Replaces the content with a copy of the text, byte for byte, and checks it. Text that
  /// is not JSON is not a failure: it is stored, and the document is not valid.
  /// @param length  in bytes; the text need not be zero-terminated
  /// @throws std::runtime_error "Pointer of char must not be null!" for a null text whose length is
  ///         not 0; the document is unchanged
  virtual void SetContent(const char* text, uint64_t length) = 0;
  /// Slot 7. The content, or null if none was ever set. No reference is added: the content is valid
  /// until the next `SetContent` or until the document is destroyed. The operations below parse the
  /// UTF-8 form of its current text, whatever its encoding, and never change it.
  virtual IString* GetContent() = 0;
  /// Slot 8. The content without insignificant white space. Doubles are written in the shortest
  /// form that reads back as the same number. Content that is not JSON gives "null".
  /// @param out  receives a new string that the caller releases
  /// @return false with "Null pointer exception! Interface is not accessible: struct
  ///         Data::Interfaces::IString" for a document without content, "Pointer to a pointer of
  ///         struct Data::Interfaces::IString must not be null! Address of return must be
  ///         specified!", or "Pointer of struct Data::Interfaces::IString must be null in order to
  ///         avoid memory leaks!"
  virtual bool ToCompactString(IString** out, Core::IErrorCode** error) = 0;
  /// Slot 9. Whether both documents are valid and hold equal values. Members may be in any order.
  /// Strings are compared byte by byte. Integers are equal if their 64 bits are, so -1 equals
  /// 18446744073709551615; an integer equals the double that it rounds to. Each member of this
  /// document is compared with the first member of that name in the other one, so a document with
  /// repeated names may differ from itself. Every failure except std::bad_alloc gives false.
  virtual bool Equals(IJsonDocument* other) = 0;
  /// Slot 10. Whether the content was well-formed when it was set.
  virtual bool IsValid() = 0;

 protected:
  ~IJsonDocument() = default;
};

}  // namespace Data::Interfaces
