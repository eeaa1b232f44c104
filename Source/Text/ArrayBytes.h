#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>

#include "Core/Ptr.h"
#include "Core/VariantConversions.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IArray.h"

namespace Data::impl {

/// The first `GetCount` bytes of an array, with a reference to it. An array can have more elements
/// than bytes (its stride may be 0), so `GetPointer` checks the range.
class ArrayBytes {
 public:
  /// @throws std::runtime_error with the array's own message if it has fewer bytes
  explicit ArrayBytes(Interfaces::IArray& array) : array_(&array) {
    const std::uint64_t count = array.GetCount();
    if (count == 0) return;
    Core::Ptr<Core::IErrorCode> error;
    const void* bytes = array.GetPointer(0, count, error.Receive());
    if (!bytes)
      throw std::runtime_error(error ? std::string(Core::MessageView(*error))
                                     : "Offset or size are not in data bounds");
    bytes_ = {static_cast<const std::uint8_t*>(bytes), count};
  }

  operator std::span<const std::uint8_t>() const { return bytes_; }

 private:
  Core::Ptr<Interfaces::IArray> array_;
  std::span<const std::uint8_t> bytes_;
};

/// A new array of `size` zero bytes, one element each.
inline Core::Ptr<Interfaces::IArray> NewArray(std::size_t size) {
  Core::Ptr<Interfaces::IArray> array;
  Data_CreateArray(array.Receive());
  array->Resize(1, size);
  return array;
}

}  // namespace Data::impl
