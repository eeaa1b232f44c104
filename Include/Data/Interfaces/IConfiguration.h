#pragma once

#include "Core/IObject.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A set of named values that can be enumerated. Names are zero-terminated
/// UTF-8, compared byte by byte, with regard to case. Nothing is guarded:
/// failures are thrown; a null name throws "Pointer of char must not be null!".
struct IConfiguration : Core::IObject {
  /// Slot 6. Whether a name is present; any name, null included, is absent from
  /// an empty set.
  virtual bool Contains(const char* name) = 0;
  /// Slot 7. The name at a position counted from 0. The order is no particular
  /// one and may change with every addition.
  /// @return owned by the object and valid until the next addition; null when
  ///         `index` is not below `GetNameCount`
  virtual const char* GetNameAt(uint64_t index) = 0;
  /// Slot 8. Number of names that `GetNameAt` gives.
  virtual uint64_t GetNameCount() = 0;
  /// Slot 9. Copies a value into `destination`, which gives up what it held and
  /// gains a reference to an object.
  /// @return false, `destination` untouched, for a name that is not present
  /// @throws std::runtime_error "Cannot be nullptr!" for a null destination
  virtual bool Get(const char* name, Structures::_VARIANT* destination) = 0;
  /// Slot 10. Adds a name, or replaces the value of an existing one, by a copy.
  /// @throws std::runtime_error "Cannot be nullptr!" for a null value, "Variant
  ///         type is undefined! Did you forget to zero out the VARIANT
  ///         structure? It appears uninitialized!". An existing value then
  ///         stays; a new name is present with the value `Unknown`, but is not
  ///         enumerated until the next successful addition.
  virtual void Set(const char* name, const Structures::_VARIANT* value) = 0;

 protected:
  ~IConfiguration() = default;
};

}  // namespace Data::Interfaces
