#pragma once

#include "Core/IObject.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A list of values. An item that refers to an object holds one reference to it.
///
/// An object may be one of the program's own that calls back into the list when a reference to it
/// is added or released; the list is valid at each such call. Freeing lists that are nested in each
/// other takes no stack, however deep.
///
/// Not synchronised: several threads may read one object at a time, a change needs exclusive access
/// (take `Lock` around shared use). Reference counting is atomic.
struct IVariantList : Core::IObject {
  /// Slot 6. Copies an item, with a reference to its object, into an initialised record, whose
  /// former object is released last. The caller owns the copy.
  /// @return false, `destination` untouched, when `index` is not below the count
  /// @throws std::runtime_error "Cannot be nullptr!" for a null destination
  virtual bool GetAt(uint64_t index, Structures::_VARIANT* destination) = 0;
  /// Slot 7. Appends a copy. Null appends a zeroed record (`Unknown`); a record of an undefined
  /// type is copied as plain bytes.
  /// @throws std::bad_alloc; the list is unchanged
  virtual void Add(const Structures::_VARIANT* value) = 0;
  /// Slot 8.
  virtual bool IsEmpty() = 0;
  /// Slot 9. Empties the list, then releases what it held.
  virtual void Clear() = 0;
  /// Slot 10. Number of items.
  virtual uint64_t GetCount() = 0;

 protected:
  ~IVariantList() = default;
};

}  // namespace Data::Interfaces
