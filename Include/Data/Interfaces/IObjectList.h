#pragma once

#include "Core/IObject.h"

namespace Data::Interfaces {

/// A list of objects. Each entry holds one reference, or is null.
///
/// Callbacks. An object that a caller implements may call back into the list when a reference to it
/// is added or released. The list is consistent at each such call. Freeing nested lists does not
/// recurse.
///
/// Threads. Not synchronised: concurrent reads are safe, a change needs exclusive access. Take
/// `Lock` around shared use. Reference counting is atomic.
struct IObjectList : Core::IObject {
  /// Slot 6. The object at an index from 0. No reference is added: the object is valid while the
  /// list holds it.
  /// @return null if `index` is not below the count
  /// @throws std::runtime_error "Null pointer exception! Interface is not accessible: struct
  ///         Core::IObject" for a null entry
  virtual Core::IObject* GetAt(uint64_t index) = 0;
  /// Slot 7. Appends an object, which may be null, and adds a reference to it.
  /// @throws std::bad_alloc; the list is unchanged
  virtual void Add(Core::IObject* object) = 0;
  /// Slot 8. Whether the list has no entries.
  virtual bool IsEmpty() = 0;
  /// Slot 9. Removes all entries, then releases their objects.
  virtual void Clear() = 0;
  /// Slot 10. The number of entries, including null ones.
  virtual uint64_t GetCount() = 0;

 protected:
  ~IObjectList() = default;
};

}  // namespace Data::Interfaces
