#pragma once

#include "Core/IObject.h"

namespace Data::Interfaces {

/// A text, stored in one encoding at a time: UTF-16, UTF-8 or a code page.
///
/// Encodings. Reading the text in another encoding converts it in place, up to its first zero
/// character; the string keeps the new encoding. Converting invalid text gives replacement
/// characters. Converting from or to an unknown code page gives an empty text. Only a lack of
/// memory makes a conversion fail.
///
/// Code pages have the numbers of Windows: 65001 is UTF-8; 0 and 1 are the ANSI and the OEM code
/// page of the system, on Linux 1252 and 437. Windows knows the code pages that are installed.
/// Linux knows 437, 850, 852, 866, 874, 932, 936, 949, 950, 1250 to 1258, 20866, 28591 to 28599,
/// 28603 and 28605, and converts them with the same results as Windows.
///
/// Ownership. The Set operations copy the caller's text. Returned pointers belong to the string and
/// are valid until it is changed, converted or destroyed. All but those from `GetData` and `Clear`
/// point to zero-terminated text and are never null.
///
/// Failures. No operation is guarded: failures are thrown and leave the string as it was. Every
/// operation that stores or converts can throw std::bad_alloc. The Set operations throw
/// std::length_error "vector too long" for a length that no buffer can have, and std::runtime_error
/// "Pointer of char must not be null!" or "Pointer of char16_t must not be null!" for a null text
/// whose length is not 0.
///
/// Threads. Not synchronised. Because reading may convert, even concurrent readers need to take
/// `Lock` around each use. Reference counting is atomic.
struct IString : Core::IObject {
  /// Slot 6. Stores a copy of UTF-16 text.
  /// @param text    may be part of this string's own text; may contain zero characters
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
  /// Slot 9. Makes the string empty but keeps its memory.
  /// @return the buffer, or null if nothing was ever stored
  virtual void* Clear() = 0;
  /// Slot 10. The text in a code page. A text that is already stored in some code page is returned
  /// unchanged: it is never converted from one code page to another.
  virtual const char* GetMultiByte(uint32_t codePage) = 0;
  /// Slot 11. The text as UTF-8.
  virtual const char* GetUtf8() = 0;
  /// Slot 12. The text as UTF-16.
  virtual const char16_t* GetWide() = 0;
  /// Slot 13. The `GetSize` stored bytes, in the current encoding; null if nothing was ever stored.
  virtual const void* GetData() = 0;
  /// Slot 14. The length without the terminator: in 16-bit units for UTF-16, otherwise in bytes. 0
  /// for an empty string.
  virtual uint64_t GetLength() = 0;
  /// Slot 15. The number of bytes stored, including the terminator. 0 for a new or cleared string.
  virtual uint64_t GetSize() = 0;
  /// Slot 16. Compares two texts in the encoding of this string, to which `other` is converted.
  /// UTF-16 is compared by 16-bit units, other encodings by bytes; both are unsigned. If one text
  /// is a prefix of the other, the shorter is less.
  /// @param other          may be an object that the caller implements. It is held while it is
  ///                       read, and may change this string, which is read afterwards. A null text
  ///                       counts as empty.
  /// @param caseSensitive  false: A to Z equal a to z; all other letters are compared as they are
  /// @return -1, 0 or 1; -1 if `other` is null. If this string is new or cleared: minus the length
  ///         of `other`, truncated to 32 bits.
  /// @throws std::runtime_error "Memory address [%p] is invalid ..." for an object of another
  ///         interface
  virtual int32_t Compare(IString* other, bool caseSensitive) = 0;

 protected:
  ~IString() = default;
};

}  // namespace Data::Interfaces
