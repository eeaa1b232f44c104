#pragma once

#include "Core/IObject.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A list of values. Items are stored as copies; a copy holds a reference to its object.
///
/// Callbacks. An object that a caller implements may call back into the list when a reference to it
/// is added or released. The list is consistent at each such call. Freeing nested lists does not
/// recurse.
///
/// Threads. Not synchronised: concurrent reads are safe, a change needs exclusive access. Take
/// `Lock` around shared use. Reference counting is atomic.
struct IVariantList : Core::IObject {
  /// Slot 6. Copies an item into an initialised record and adds a reference to its object, which
  /// the caller releases. Releases the record's previous object last.
  /// @return false, with `destination` unchanged, if `index` is not below the count
  /// @throws std::runtime_error "Cannot be nullptr!" for a null destination
  virtual bool GetAt(uint64_t index, Structures::_VARIANT* destination) = 0;
  /// Slot 7. Appends a copy of a value. Null appends a zeroed record (`Unknown`). An undefined
  /// record is copied as plain bytes.
  /// @throws std::bad_alloc; the list is unchanged
  virtual void Add(const Structures::_VARIANT* value) = 0;
  /// Slot 8. Whether the list has no items.
  virtual bool IsEmpty() = 0;
  /// Slot 9. Removes all items, then releases their objects.
  virtual void Clear() = 0;
  /// Slot 10. The number of items.
  virtual uint64_t GetCount() = 0;

 protected:
  ~IVariantList() = default;
};

}  // namespace Data::Interfaces
