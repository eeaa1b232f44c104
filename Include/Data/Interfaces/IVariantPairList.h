#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A list of key/value pairs in the order in which they were added. Keys may repeat. Keys and
/// values are stored as copies; a copy holds a reference to its object.
///
/// Failures. Operations with an `error` argument never throw. A failed operation changes nothing,
/// and so does a lack of memory (code 2). A null record fails with "Pointer of struct
/// Data::Structures::_VARIANT must not be null!", adding an undefined one with "Variant type is
/// undefined! Did you forget to zero out the VARIANT structure? It appears uninitialized!".
///
/// Callbacks. An object that a caller implements may call back into the list when a reference to it
/// is added or released. The list is consistent at each such call. Freeing nested lists does not
/// recurse.
///
/// Threads. Not synchronised: concurrent reads are safe, a change needs exclusive access. Take
/// `Lock` around shared use. Reference counting is atomic.
struct IVariantPairList : Core::IObject {
  /// Slot 6. Copies a pair into two initialised records and adds references to its objects, which
  /// the caller releases. Releases the records' previous objects last.
  /// @return false with "Index out of bounds!" if `index` is not below the count, or no longer is
  ///         after a callback
  virtual bool GetAt(uint64_t index, Structures::_VARIANT* key, Structures::_VARIANT* value,
                     Core::IErrorCode** error) = 0;
  /// Slot 7. Appends a pair with copies of both values.
  virtual bool Add(const Structures::_VARIANT* key, const Structures::_VARIANT* value,
                   Core::IErrorCode** error) = 0;
  /// Slot 8. Whether the list has no pairs.
  virtual bool IsEmpty() = 0;
  /// Slot 9. Removes all pairs, then releases their objects.
  /// @return true
  virtual bool Clear() = 0;
  /// Slot 10. The number of pairs.
  virtual uint64_t GetCount() = 0;

 protected:
  ~IVariantPairList() = default;
};

}  // namespace Data::Interfaces
