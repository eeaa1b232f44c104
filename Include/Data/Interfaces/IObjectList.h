#pragma once

#include "Core/IObject.h"

namespace Data::Interfaces {

/// A list of objects. Each entry holds one reference and may be null.
///
/// An entry may be an object of the program's own that calls back into the list when a reference to
/// it is added or released; the list is valid at each such call. Freeing lists that are nested in
/// each other takes no stack, however deep.
///
/// Not synchronised: several threads may read one object at a time, a change needs exclusive access
/// (take `Lock` around shared use). Reference counting is atomic.
struct IObjectList : Core::IObject {
  /// Slot 6. The object at an index from 0, without a reference added: valid while the list holds
  /// it.
  /// @return null when `index` is not below the count
  /// @throws std::runtime_error "Null pointer exception! Interface is not
  ///         accessible: struct Core::IObject" for a null entry
  virtual Core::IObject* GetAt(uint64_t index) = 0;
  /// Slot 7. Appends an object, which may be null, and adds a reference to it.
  /// @throws std::bad_alloc; the list is unchanged
  virtual void Add(Core::IObject* object) = 0;
  /// Slot 8.
  virtual bool IsEmpty() = 0;
  /// Slot 9. Empties the list, then releases what it held.
  virtual void Clear() = 0;
  /// Slot 10. Number of entries, null ones included.
  virtual uint64_t GetCount() = 0;

 protected:
  ~IObjectList() = default;
};

}  // namespace Data::Interfaces
