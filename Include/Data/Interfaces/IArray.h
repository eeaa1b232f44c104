#pragma once

#include "Core/IErrorCode.h"

namespace Data::Interfaces {

/// A byte buffer that is described as `count` elements of `stride` bytes each.
///
/// After `SetData` and `Resize` the buffer holds stride * count bytes. `Append`, and `Write` past
/// the end, set the stride to 1 and add the number of appended bytes to the old count. From then
/// on `GetSize` is not the number of bytes held.
///
/// Failures are thrown, except by `GetPointer`, and change nothing: std::length_error "vector too
/// long" for more bytes than a buffer can have, std::bad_alloc, std::runtime_error "Pointer of
/// void must not be null!". Source bytes may be the array's own; they are read as they were
/// before the operation.
///
/// Not synchronised: several threads may read one object at a time, a change needs exclusive
/// access (take `Lock` around shared use). Reference counting is atomic.
struct IArray : Core::IObject {
  /// Slot 6. Replaces the content with a copy of stride * count bytes.
  /// @param source  null only if stride * count is 0
  /// @throws std::length_error also when the product overflows
  virtual void SetData(const void* source, uint64_t stride, uint64_t count) = 0;
  /// Slot 7. Makes the buffer stride * count bytes long. Leading bytes stay, new ones are zero.
  /// @throws std::length_error also when the product overflows
  virtual void Resize(uint64_t stride, uint64_t count) = 0;
  /// Slot 8. The address of byte `offset`, if `size` bytes from there lie in the buffer. Valid
  /// until the buffer changes or the array is destroyed. offset + size is not checked for
  /// overflow. Never throws.
  /// @return null with "Offset or size are not in data bounds" (code 2) in `error` for bytes
  ///         outside the buffer; null without an error for offset 0 of an empty one
  virtual void* GetPointer(uint64_t offset, uint64_t size, Core::IErrorCode** error) = 0;
  /// Slots 9 and 10. The address of the first byte; null for a buffer that never held any. Valid
  /// until the buffer changes or the array is destroyed.
  virtual void* GetData() = 0;
  virtual const void* GetData() const = 0;
  /// Slot 11. Bytes per element.
  virtual uint64_t GetStride() = 0;
  /// Slot 12. Number of elements.
  virtual uint64_t GetCount() = 0;
  /// Slot 13. stride * count.
  virtual uint64_t GetSize() = 0;
  /// Slot 14. Overwrites bytes from `offset` on and appends, as `Append` does, those that reach
  /// past the end. An offset beyond the end writes nothing, unless offset + length wraps past
  /// zero: then the bytes after the wrap are appended.
  /// @param length  in bytes
  /// @param source  null only if no byte would be overwritten; it then appends nothing
  /// @return offset + length, or the new count if bytes were appended
  virtual uint64_t Write(uint64_t offset, const void* source, uint64_t length) = 0;
  /// Slot 15. Appends `length` bytes; the stride becomes 1 and the count grows by `length`. A
  /// null source counts as length 0.
  /// @return the new count
  virtual uint64_t Append(const void* source, uint64_t length) = 0;

 protected:
  ~IArray() = default;
};

}  // namespace Data::Interfaces
