#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>

#include "Core/Ptr.h"
#include "Data/Interfaces/IArray.h"

namespace Data::impl {

/// An array read as bytes: as many as it has elements. An array can count more
/// elements than it has bytes (its stride may be 0), so it is asked for them.
/// @throws std::runtime_error with the array's own message in that case
inline std::span<const std::uint8_t> BytesOf(Interfaces::IArray& array) {
  const std::uint64_t count = array.GetCount();
  if (count == 0) return {};
  Core::Ptr<Core::IErrorCode> error;
  const void* bytes = array.GetPointer(0, count, error.Receive());
  if (!bytes) throw std::runtime_error(error->GetMessage());
  return {static_cast<const std::uint8_t*>(bytes), count};
}

}  // namespace Data::impl
