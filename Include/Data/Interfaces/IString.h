#pragma once

#include "Core/IObject.h"

namespace Data::Interfaces {

/// A text, held in one encoding at a time: UTF-16, UTF-8 or a code page.
///
/// Reading it in another encoding converts it in place, up to its first zero
/// character, so even readers of a shared string hold its lock. Pointers that
/// the operations return belong to the string and stay valid until the next
/// operation that changes or converts it; all but `GetData` end with a zero
/// character. Code page 65001 is UTF-8. A conversion never fails: broken text
/// gives replacement characters, an unknown code page an empty text.
///
/// The Set operations copy the caller's text, which may be a range of this very
/// string and may hold zero characters. They throw std::length_error "vector too
/// long" for a length beyond any memory, std::bad_alloc, and std::runtime_error
/// "Pointer of char must not be null!" (or of char16_t) for a null text whose
/// length is not 0; the string then stays as it was.
struct IString : Core::IObject {
  /// Slot 6. Stores a copy of UTF-16 text.
  /// @param length  in 16-bit units
  virtual void SetWide(const char16_t* text, uint64_t length) = 0;
  /// Slot 7. Stores a copy of text in a code page.
  /// @param length  in bytes
  virtual void SetMultiByte(const char* text, uint64_t length, uint32_t codePage) = 0;
  /// Slot 8. Stores a copy of UTF-8 text; the bytes are not checked.
  /// @param length  in bytes
  virtual void SetUtf8(const char* text, uint64_t length) = 0;
  /// Slot 9. Empties the string and keeps its memory.
  /// @return the buffer, null if there never was one
  virtual void* Clear() = 0;
  /// Slot 10. The text in a code page. A string that already holds multi-byte
  /// text gives it as it is, whatever code page it is in.
  virtual const char* GetMultiByte(uint32_t codePage) = 0;
  /// Slot 11. The text as UTF-8.
  virtual const char* GetUtf8() = 0;
  /// Slot 12. The text as UTF-16.
  virtual const char16_t* GetWide() = 0;
  /// Slot 13. The stored bytes as they are, `GetSize` of them; null for a new
  /// string.
  virtual const void* GetData() = 0;
  /// Slot 14. Length without the terminator: 16-bit units of a UTF-16 text,
  /// bytes of any other; 0 for an empty string.
  virtual uint64_t GetLength() = 0;
  /// Slot 15. Bytes stored, terminator included; 0 for a new or cleared string.
  virtual uint64_t GetSize() = 0;
  /// Slot 16. Orders two texts in the encoding of this one, to which `other`
  /// converts itself: UTF-16 by 16-bit units, others by bytes, then by length.
  /// Without `caseSensitive`, A to Z count as a to z; no other letter has a case.
  /// @return -1, 0 or 1; -1 if `other` is null; minus the other's length, cut to
  ///         32 bits, if this string is empty
  /// @throws std::runtime_error "Memory address [%p] is invalid ..." for an object
  ///         of another interface
  virtual int32_t Compare(IString* other, bool caseSensitive) = 0;

 protected:
  ~IString() = default;
};

}  // namespace Data::Interfaces
