#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// Pairs of a key and a value in the order in which they were added; keys may repeat. A key or
/// value that refers to an object holds one reference to it.
///
/// Operations with an `error` argument never throw. A failed one, a lack of memory included (code
/// 2), changes nothing. A null record fails with "Pointer of struct Data::Structures::_VARIANT must
/// not be null!", adding an undefined one with "Variant type is undefined! Did you forget to zero
/// out the VARIANT structure? It appears uninitialized!".
///
/// An object may be one of the program's own that calls back into the list when a reference to it
/// is added or released; the list is valid at each such call. Freeing lists that are nested in each
/// other takes no stack, however deep.
///
/// Not synchronised: several threads may read one object at a time, a change needs exclusive access
/// (take `Lock` around shared use). Reference counting is atomic.
struct IVariantPairList : Core::IObject {
  /// Slot 6. Copies a pair, with references to its objects, into two initialised records, whose
  /// former objects are released last. The caller owns the copies.
  /// @return false with "Index out of bounds!" when `index` is not below the count, also after a
  ///         callback shortened the list
  virtual bool GetAt(uint64_t index, Structures::_VARIANT* key, Structures::_VARIANT* value,
                     Core::IErrorCode** error) = 0;
  /// Slot 7. Appends copies of both.
  virtual bool Add(const Structures::_VARIANT* key, const Structures::_VARIANT* value,
                   Core::IErrorCode** error) = 0;
  /// Slot 8.
  virtual bool IsEmpty() = 0;
  /// Slot 9. Empties the list, then releases what it held.
  /// @return true
  virtual bool Clear() = 0;
  /// Slot 10. Number of pairs.
  virtual uint64_t GetCount() = 0;

 protected:
  ~IVariantPairList() = default;
};

}  // namespace Data::Interfaces
