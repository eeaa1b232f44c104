#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IVariantList.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A hash map from values to values. It stores copies of both; one that refers to an object holds a
/// reference to it.
///
/// Keys are equal when they compare equal and have the same hash: Int32 7 and Int64 7 are one key,
/// Double 7.0 is another; "abc" and "ABC" are two. A Null key equals nothing, so every `Set` with
/// it adds an entry. The first key of a type that cannot be compared (Array) is stored; looking for
/// a second one fails as the comparison does.
///
/// The text of a key object is not copied. After it changed, in more than its case, the entry is
/// found neither under the old text nor under the new one; it still counts and `GetKeys` still
/// lists it. If the text is changed back, the entry is found again.
///
/// Operations with an `error` argument never throw. A failed one, a lack of memory included (code
/// 2), changes nothing. Messages: "Pointer of struct Data::Structures::_VARIANT must not be null!"
/// for a null record, "Variant type is undefined! Did you forget to zero out the VARIANT structure?
/// It appears uninitialized!" for an undefined one, "Must be value type!" for a key in pointer
/// form, "Must be string, json or xml!" for one of type ErrorCode, and what reading or comparing
/// keys throws.
///
/// A key or value may be an object of the program's own that calls back into the dictionary while
/// it is hashed, compared, counted or released. The dictionary is valid at each such call. A search
/// ends without a result when a callback clears the dictionary, and does not look at the keys that
/// callbacks add. Freeing dictionaries that are nested in each other takes no stack, however deep.
///
/// Not synchronised: several threads may read one object at a time, a change needs exclusive access
/// (take `Lock` around shared use). Reference counting is atomic. Reading includes the text objects
/// of keys, which convert themselves to UTF-8 when first read.
struct IVariantDictionary : Core::IObject {
  /// Slot 6. Copies the value of a key, with a reference to its object, into an initialised record,
  /// whose former object is released last. The caller owns the copy. Both records may be the same.
  /// @return false with "invalid unordered_map<K, T> key" for a missing key
  virtual bool Get(const Structures::_VARIANT* key, Structures::_VARIANT* destination,
                   Core::IErrorCode** error) = 0;
  /// Slot 7. Whether the key is present; false with an error if it has no hash.
  virtual bool Contains(const Structures::_VARIANT* key, Core::IErrorCode** error) = 0;
  /// Slot 8. Adds the pair, or replaces the value of an equal key. The key stored first stays; the
  /// value replaced is released last.
  virtual bool Set(const Structures::_VARIANT* key, const Structures::_VARIANT* value,
                   Core::IErrorCode** error) = 0;
  /// Slot 9.
  virtual bool IsEmpty() = 0;
  /// Slot 10. Empties the map, then releases what it held.
  /// @return true
  virtual bool Clear() = 0;
  /// Slot 11. Number of entries.
  virtual uint64_t GetCount() = 0;
  /// Slot 12. A new list of copies of all keys, in no particular order; the caller releases it.
  /// @return false with "Pointer to a pointer of struct Data::Interfaces::IVariantList must not be
  ///         null! Address of return must be specified!" or "Pointer of struct
  ///         Data::Interfaces::IVariantList must be null in order to avoid memory leaks!"
  virtual bool GetKeys(IVariantList** out, Core::IErrorCode** error) = 0;

 protected:
  ~IVariantDictionary() = default;
};

}  // namespace Data::Interfaces
