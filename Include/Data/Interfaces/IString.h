#pragma once

#include "Core/IObject.h"

namespace Data::Interfaces {

/// A text, held in one encoding at a time: UTF-16, UTF-8 or a code page.
///
/// Encodings. Reading the text in another encoding converts it in place, up to
/// its first zero character; the string keeps the new encoding. Code page 65001 is
/// UTF-8. A conversion of invalid text gives replacement characters, one from or to
/// an unknown code page an empty text; only lack of memory makes it fail.
///
/// Lifetime. The Set operations copy the caller's text. Pointers returned belong to
/// the string and are valid until it is changed, converted or released. All but
/// `GetData` and `Clear` return zero-terminated text, never null.
///
/// Failures. No operation is guarded: failures are thrown, and the string then is
/// as it was before. Every operation that stores or converts can throw
/// std::bad_alloc. The Set operations throw std::length_error "vector too long" for
/// a length that no buffer can have, and std::runtime_error "Pointer of char must
/// not be null!" ("... of char16_t ...") for a null text whose length is not 0.
///
/// Threads. Not synchronised. Since reading may convert, threads that share a
/// string, readers too, take `Lock` around each use. Reference counting is atomic.
struct IString : Core::IObject {
  /// Slot 6. Stores a copy of UTF-16 text.
  /// @param text    may be a range of this string's own text, may contain zeros
  /// @param length  in 16-bit units
  virtual void SetWide(const char16_t* text, uint64_t length) = 0;
  /// Slot 7. Stores a copy of text in a code page.
  /// @param text    as for `SetWide`
  /// @param length  in bytes
  virtual void SetMultiByte(const char* text, uint64_t length, uint32_t codePage) = 0;
  /// Slot 8. Stores a copy of UTF-8 text, without validating it.
  /// @param text    as for `SetWide`
  /// @param length  in bytes
  virtual void SetUtf8(const char* text, uint64_t length) = 0;
  /// Slot 9. Makes the string empty; it keeps its memory.
  /// @return the buffer; null if nothing was ever stored
  virtual void* Clear() = 0;
  /// Slot 10. The text in a code page. A string that holds text of any code page
  /// returns it as it is: it is never converted from one code page to another.
  virtual const char* GetMultiByte(uint32_t codePage) = 0;
  /// Slot 11. The text as UTF-8.
  virtual const char* GetUtf8() = 0;
  /// Slot 12. The text as UTF-16.
  virtual const char16_t* GetWide() = 0;
  /// Slot 13. The stored bytes, `GetSize` of them, in whatever encoding; null if
  /// nothing was ever stored.
  virtual const void* GetData() = 0;
  /// Slot 14. Length without the terminator: in 16-bit units for UTF-16, otherwise
  /// in bytes; 0 for an empty string.
  virtual uint64_t GetLength() = 0;
  /// Slot 15. Number of bytes stored, terminator included; 0 for a new or cleared
  /// string.
  virtual uint64_t GetSize() = 0;
  /// Slot 16. Compares two texts in the encoding of this string; `other` is
  /// converted to it. UTF-16 is compared by 16-bit units, other text by bytes, both
  /// unsigned; where one text is the beginning of the other, the shorter comes
  /// first. Without `caseSensitive`, A to Z count as a to z; no other letters have
  /// a case.
  /// @param other  may be an object of the caller's own: this string holds a
  ///               reference to it meanwhile, compares its own text as it is after
  ///               `other` was read, and takes a null text for an empty one
  /// @return -1, 0 or 1; -1 if `other` is null; if this string is empty, minus the
  ///         length of the other, truncated to 32 bits
  /// @throws std::runtime_error "Memory address [%p] is invalid ..." for an object
  ///         of another interface
  virtual int32_t Compare(IString* other, bool caseSensitive) = 0;

 protected:
  ~IString() = default;
};

}  // namespace Data::Interfaces
