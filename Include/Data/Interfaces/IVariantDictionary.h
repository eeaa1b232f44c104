#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IVariantList.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A hash map from values to values. Copies of both are kept; one that refers
/// to an object holds a reference.
///
/// Keys are equal when they compare equal and hash alike: Int32 7 and Int64 7
/// are one key, Double 7.0 is another; "abc" and "ABC" are two. A null key is
/// equal to nothing, so every `Set` with it adds an entry; so is the first key of
/// a type that cannot be compared (Array), where looking for a second one fails
/// as comparing does. Operations with an `error` argument never throw; a null
/// record fails with "Pointer of struct Data::Structures::_VARIANT must not be
/// null!", an undefined one with "Variant type is undefined! Did you forget to
/// zero out the VARIANT structure? It appears uninitialized!", a key in pointer
/// form with "Must be value type!", one of type ErrorCode with "Must be string,
/// json or xml!".
struct IVariantDictionary : Core::IObject {
  /// Slot 6. Copies the value of a key into `destination`, which gives up what
  /// it held.
  /// @return false with "invalid unordered_map<K, T> key" for a missing key
  virtual bool Get(const Structures::_VARIANT* key, Structures::_VARIANT* destination,
                   Core::IErrorCode** error) = 0;
  /// Slot 7. Whether the key is present; false with an error if it has no hash.
  virtual bool Contains(const Structures::_VARIANT* key, Core::IErrorCode** error) = 0;
  /// Slot 8. Adds the pair, or replaces the value of an equal key; the key
  /// first stored stays.
  virtual bool Set(const Structures::_VARIANT* key, const Structures::_VARIANT* value,
                   Core::IErrorCode** error) = 0;
  /// Slot 9.
  virtual bool IsEmpty() = 0;
  /// Slot 10. Releases every entry and empties the map.
  virtual bool Clear() = 0;
  /// Slot 11. Number of entries.
  virtual uint64_t GetCount() = 0;
  /// Slot 12. A new list of copies of all keys, in no particular order; the
  /// caller releases it.
  virtual bool GetKeys(IVariantList** out, Core::IErrorCode** error) = 0;

 protected:
  ~IVariantDictionary() = default;
};

}  // namespace Data::Interfaces
