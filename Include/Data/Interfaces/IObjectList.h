#pragma once

#include "Core/IObject.h"

namespace Data::Interfaces {

/// A list of objects; each entry holds one reference and may be null.
struct IObjectList : Core::IObject {
  /// Slot 6. The object at a position counted from 0; no reference added.
  /// @return null when `index` is not below the count
  /// @throws std::runtime_error "Null pointer exception! Interface is not
  ///         accessible: struct Core::IObject" for a null entry
  virtual Core::IObject* GetAt(uint64_t index) = 0;
  /// Slot 7. Appends an object, which may be null, and adds a reference to it.
  virtual void Add(Core::IObject* object) = 0;
  /// Slot 8.
  virtual bool IsEmpty() = 0;
  /// Slot 9. Gives back every reference and empties the list.
  virtual void Clear() = 0;
  /// Slot 10. Number of entries, null ones included.
  virtual uint64_t GetCount() = 0;

 protected:
  ~IObjectList() = default;
};

}  // namespace Data::Interfaces
