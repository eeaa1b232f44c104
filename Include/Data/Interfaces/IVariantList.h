#pragma once

#include "Core/IObject.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A list of values; an item that refers to an object holds one reference.
struct IVariantList : Core::IObject {
  /// Slot 6. Copies an item into `destination`, which gives up what it held and
  /// gains a reference to an object item.
  /// @return false, `destination` untouched, when `index` is not below the count
  /// @throws std::runtime_error "Cannot be nullptr!" for a null destination
  virtual bool GetAt(uint64_t index, Structures::_VARIANT* destination) = 0;
  /// Slot 7. Appends a copy; null appends a zeroed record (`Unknown`).
  virtual void Add(const Structures::_VARIANT* value) = 0;
  /// Slot 8.
  virtual bool IsEmpty() = 0;
  /// Slot 9. Releases every item and empties the list.
  virtual void Clear() = 0;
  /// Slot 10. Number of items.
  virtual uint64_t GetCount() = 0;

 protected:
  ~IVariantList() = default;
};

}  // namespace Data::Interfaces
