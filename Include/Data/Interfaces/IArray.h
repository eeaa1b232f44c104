#pragma once

#include "Core/IErrorCode.h"

namespace Data::Interfaces {

/// A byte buffer, described as `count` elements of `stride` bytes each.
///
/// After `SetData` and `Resize`, the buffer holds stride * count bytes. `Append`, and `Write` past
/// the end, set the stride to 1 and add the number of appended bytes to the count. If the stride
/// was greater than 1 before, `GetSize` is then no longer the number of bytes in the buffer.
///
/// Failures. `GetPointer` is guarded; all other operations throw. A failed operation changes
/// nothing:
///   - std::length_error "vector too long" for more bytes than a buffer can hold
///   - std::runtime_error "Pointer of void must not be null!"
///   - std::bad_alloc
/// Source bytes may be part of the array's own buffer. They are read as they were before the
/// operation.
///
/// Threads. Not synchronised: concurrent reads are safe, a change needs exclusive access. Take
/// `Lock` around shared use. Reference counting is atomic.
struct IArray : Core::IObject {
  /// Slot 6. Replaces the content with a copy of stride * count bytes.
  /// @param source  null only if stride * count is 0
  /// @throws std::length_error also when the product overflows
  virtual void SetData(const void* source, uint64_t stride, uint64_t count) = 0;
  /// Slot 7. Makes the buffer stride * count bytes long. Existing bytes are kept, new bytes are
  /// zero.
  /// @throws std::length_error also when the product overflows
  virtual void Resize(uint64_t stride, uint64_t count) = 0;
  /// Slot 8. The address of the byte at `offset`, if `size` bytes from there lie within the buffer.
  /// Valid until the buffer changes or the array is destroyed. Never throws. An overflow of
  /// offset + size is NOT detected.
  /// @return null with "Offset or size are not in data bounds" for bytes outside the buffer; null
  ///         without an error for offset 0 and size 0 of a buffer that never held any bytes
  virtual void* GetPointer(uint64_t offset, uint64_t size, Core::IErrorCode** error) = 0;
  /// Slots 9 and 10. The address of the first byte, or null for a buffer that never held any. Valid
  /// until the buffer changes or the array is destroyed.
  virtual void* GetData() = 0;
  virtual const void* GetData() const = 0;
  /// Slot 11. Bytes per element.
  virtual uint64_t GetStride() = 0;
  /// Slot 12. Number of elements.
  virtual uint64_t GetCount() = 0;
  /// Slot 13. stride * count.
  virtual uint64_t GetSize() = 0;
  /// Slot 14. Overwrites bytes from `offset` on. Bytes that reach past the end are appended as by
  /// `Append`. An offset beyond the end writes nothing, unless offset + length overflows 64 bits:
  /// the bytes past the overflow are then appended.
  /// @param source  null only if no byte would be overwritten; nothing is then appended
  /// @param length  in bytes
  /// @return offset + length, or the new count if bytes were appended
  virtual uint64_t Write(uint64_t offset, const void* source, uint64_t length) = 0;
  /// Slot 15. Appends bytes. The stride becomes 1 and the count grows by `length`.
  /// @param source  null counts as length 0
  /// @param length  in bytes
  /// @return the new count
  virtual uint64_t Append(const void* source, uint64_t length) = 0;

 protected:
  ~IArray() = default;
};

}  // namespace Data::Interfaces
