#pragma once

#include "Core/IObject.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A set of named values that can be enumerated. Names are zero-terminated UTF-8 and compared byte
/// by byte, so case matters. Values are stored as copies; a copy holds a reference to its object.
///
/// Failures are thrown: std::runtime_error "Pointer of char must not be null!" for a null name, and
/// those that each operation states. A lack of memory throws std::bad_alloc and changes nothing.
///
/// Callbacks. An object that a caller implements may call back into the configuration when a
/// reference to it is added or released. Freeing nested configurations does not recurse.
///
/// Threads. Not synchronised: concurrent reads are safe, a change needs exclusive access. Take
/// `Lock` around shared use. Reference counting is atomic.
struct IConfiguration : Core::IObject {
  /// Slot 6. Whether a name is present. An empty set returns false for every name, even null.
  virtual bool Contains(const char* name) = 0;
  /// Slot 7. The name at an index from 0. Do not rely on the order; it may change with each
  /// addition.
  /// @return owned by the object and valid while it lives; null if `index` is not below
  ///         `GetNameCount`
  virtual const char* GetNameAt(uint64_t index) = 0;
  /// Slot 8. The number of names that `GetNameAt` returns.
  virtual uint64_t GetNameCount() = 0;
  /// Slot 9. Copies a value into an initialised record and adds a reference to its object, which
  /// the caller releases. Releases the record's previous object last.
  /// @return false, with `destination` unchanged, for a name that is not present; an empty set
  ///         returns false for every name, even null
  /// @throws std::runtime_error "Cannot be nullptr!" for a null destination
  virtual bool Get(const char* name, Structures::_VARIANT* destination) = 0;
  /// Slot 10. Adds a name with a copy of the value, or replaces the value of an existing name. The
  /// replaced value is released last.
  /// @throws std::runtime_error "Cannot be nullptr!" for a null value, "Variant type is undefined!
  ///         Did you forget to zero out the VARIANT structure? It appears uninitialized!" for an
  ///         undefined one. An existing name then keeps its value. A new name is then present with
  ///         the value `Unknown`, but is not enumerated until the next successful addition.
  virtual void Set(const char* name, const Structures::_VARIANT* value) = 0;

 protected:
  ~IConfiguration() = default;
};

}  // namespace Data::Interfaces
