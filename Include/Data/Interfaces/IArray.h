#pragma once

#include "Core/IErrorCode.h"

namespace Data::Interfaces {

/// A byte buffer described as `count` elements of `stride` bytes each.
///
/// After `SetData` and `Resize` the buffer holds stride * count bytes. `Append`,
/// and `Write` beyond the end, set the stride to 1 and add the appended bytes to
/// the old count, so that `GetSize` no longer is the number of bytes held.
struct IArray : Core::IObject {
  /// Slot 6. Replaces the content by a copy of stride * count bytes.
  /// @param source  the bytes, which may be this array's own; null only if
  ///                stride * count is 0
  /// @throws std::length_error "vector too long" beyond the largest buffer or
  ///         when the product overflows; std::runtime_error "Pointer of void
  ///         must not be null!"; std::bad_alloc
  virtual void SetData(const void* source, uint64_t stride, uint64_t count) = 0;
  /// Slot 7. Makes the buffer stride * count bytes long; leading bytes stay, new
  /// ones are zero. Throws as `SetData`.
  virtual void Resize(uint64_t stride, uint64_t count) = 0;
  /// Slot 8. Address of `size` bytes from byte `offset` on. offset + size is not
  /// checked for overflow.
  /// @return null, and the failure in `error`, for bytes outside the buffer
  ///         ("Offset or size are not in data bounds", code 2)
  virtual void* GetPointer(uint64_t offset, uint64_t size, Core::IErrorCode** error) = 0;
  /// Slots 9 and 10. Address of the first byte, null for an empty buffer; valid
  /// until the buffer changes.
  virtual void* GetData() = 0;
  virtual const void* GetData() const = 0;
  /// Slot 11. Bytes per element.
  virtual uint64_t GetStride() = 0;
  /// Slot 12. Number of elements.
  virtual uint64_t GetCount() = 0;
  /// Slot 13. stride * count.
  virtual uint64_t GetSize() = 0;
  /// Slot 14. Overwrites bytes from `offset` on and appends what reaches beyond
  /// the end, as `Append` does. Beginning beyond the end writes nothing, unless
  /// `offset` + `length` wraps past zero: then the bytes behind it are appended.
  /// @return offset + length, or the new count if bytes were appended
  /// @throws std::runtime_error "Pointer of void must not be null!" if bytes of
  ///         a null source would be written
  virtual uint64_t Write(uint64_t offset, const void* source, uint64_t length) = 0;
  /// Slot 15. Appends bytes; the stride becomes 1 and the count grows by
  /// `length`. A null source counts as length 0.
  /// @return the new count
  virtual uint64_t Append(const void* source, uint64_t length) = 0;

 protected:
  ~IArray() = default;
};

}  // namespace Data::Interfaces
