#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// Pairs of a key and a value in the order in which they were added; keys may
/// repeat. Operations with an `error` argument never throw; a null record fails
/// with "Pointer of struct Data::Structures::_VARIANT must not be null!", adding
/// an undefined one with "Variant type is undefined! Did you forget to zero out
/// the VARIANT structure? It appears uninitialized!".
struct IVariantPairList : Core::IObject {
  /// Slot 6. Copies a pair into the two destinations, which give up what they
  /// held.
  /// @return false with "Index out of bounds!" when `index` is not below the
  ///         count
  virtual bool GetAt(uint64_t index, Structures::_VARIANT* key, Structures::_VARIANT* value,
                     Core::IErrorCode** error) = 0;
  /// Slot 7. Appends copies of both.
  virtual bool Add(const Structures::_VARIANT* key, const Structures::_VARIANT* value,
                   Core::IErrorCode** error) = 0;
  /// Slot 8.
  virtual bool IsEmpty() = 0;
  /// Slot 9. Releases every pair and empties the list.
  virtual bool Clear() = 0;
  /// Slot 10. Number of pairs.
  virtual uint64_t GetCount() = 0;

 protected:
  ~IVariantPairList() = default;
};

}  // namespace Data::Interfaces
