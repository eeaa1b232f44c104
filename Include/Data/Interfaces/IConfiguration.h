#pragma once

#include "Core/IObject.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A set of named values that can be enumerated. Names are zero-terminated UTF-8 and compared byte
/// by byte, so case matters. Values are stored as copies; one that refers to an object holds a
/// reference to it.
///
/// Failures are thrown: "Pointer of char must not be null!" for a null name, std::bad_alloc, and
/// what each operation names. An object of the program's own may call back into the configuration
/// when a reference to it is added or released. Freeing configurations that are nested in each
/// other takes no stack, however deep.
///
/// Not synchronised: several threads may read one object at a time, a change needs exclusive
/// access (take `Lock` around shared use). Reference counting is atomic.
struct IConfiguration : Core::IObject {
  /// Slot 6. Whether a name is present. An empty set answers false for every name, null included.
  virtual bool Contains(const char* name) = 0;
  /// Slot 7. The name at an index from 0, in no particular order, which may change with every
  /// addition.
  /// @return owned by the object and valid while it lives; null when `index` is not below
  ///         `GetNameCount`
  virtual const char* GetNameAt(uint64_t index) = 0;
  /// Slot 8. Number of names that `GetNameAt` returns.
  virtual uint64_t GetNameCount() = 0;
  /// Slot 9. Copies a value, with a reference to its object, into an initialised record, whose
  /// former object is released last. The caller owns the copy.
  /// @return false, `destination` untouched, for a name that is not present
  /// @throws std::runtime_error "Cannot be nullptr!" for a null destination
  virtual bool Get(const char* name, Structures::_VARIANT* destination) = 0;
  /// Slot 10. Adds a name with a copy of the value, or replaces the value of an existing name; the
  /// value replaced is released last.
  /// @throws std::runtime_error "Cannot be nullptr!" for a null value, "Variant type is undefined!
  ///         Did you forget to zero out the VARIANT structure? It appears uninitialized!". An
  ///         existing name keeps its value; a new name is then present with the value `Unknown`
  ///         but not enumerated until the next successful addition.
  /// @throws std::bad_alloc; nothing has changed
  virtual void Set(const char* name, const Structures::_VARIANT* value) = 0;

 protected:
  ~IConfiguration() = default;
};

}  // namespace Data::Interfaces
