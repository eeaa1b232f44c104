#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IVariantList.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A hash map from values to values. Keys and values are stored as copies; a copy holds a reference
/// to its object.
///
/// Keys are equal if they compare equal and have the same hash. So Int32 7 and Int64 7 are one key,
/// and Double 7.0 is another; "abc" and "ABC" are two keys. A Null key equals nothing, so every
/// `Set` with it adds an entry. Arrays, lists and objects of type IObject are keys by their
/// address. An array can be stored as a key, but a later search for the same array fails, because
/// arrays cannot be compared.
///
/// The text of a key object is not copied. Once that text has changed in more than its case, the
/// entry is found under neither the old text nor the new one, but `GetCount` and `GetKeys` still
/// include it. If the text is changed back, the entry is found again.
///
/// Failures. Operations with an `error` argument never throw. A failed operation changes nothing,
/// and so does a lack of memory (code 2). Messages: "Pointer of struct Data::Structures::_VARIANT
/// must not be null!" for a null record, "Variant type is undefined! Did you forget to zero out the
/// VARIANT structure? It appears uninitialized!" for an undefined one, "Must be value type!" for a
/// key in pointer form, "Must be string, json or xml!" for a key of type ErrorCode, and the
/// failures of reading and comparing keys.
///
/// Callbacks. An object that a caller implements may call back into the dictionary when it is
/// hashed or compared and when references to it are added or released. The dictionary is consistent
/// at each such call. A search ends without a result if a callback clears the dictionary, and
/// ignores keys that callbacks add; `Set` then searches once more before it adds its key. Freeing
/// nested dictionaries does not recurse.
///
/// Threads. Not synchronised: concurrent reads are safe, a change needs exclusive access. A search
/// also reads the text objects of keys, which convert themselves to UTF-8 when first read: if keys
/// are text objects in another encoding, take `Lock` around searches, too. Reference counting is
/// atomic.
struct IVariantDictionary : Core::IObject {
  /// Slot 6. Copies the value of a key into an initialised record and adds a reference to its
  /// object, which the caller releases. Releases the record's previous object last. Both arguments
  /// may be the same record.
  /// @return false with "invalid unordered_map<K, T> key" for a missing key
  virtual bool Get(const Structures::_VARIANT* key, Structures::_VARIANT* destination,
                   Core::IErrorCode** error) = 0;
  /// Slot 7. Whether a key is present. False with an error if the key cannot be hashed or compared.
  virtual bool Contains(const Structures::_VARIANT* key, Core::IErrorCode** error) = 0;
  /// Slot 8. Adds an entry, or replaces the value of an equal key, whose stored key stays. The
  /// replaced value is released last.
  virtual bool Set(const Structures::_VARIANT* key, const Structures::_VARIANT* value,
                   Core::IErrorCode** error) = 0;
  /// Slot 9. Whether the dictionary has no entries.
  virtual bool IsEmpty() = 0;
  /// Slot 10. Removes all entries, then releases their objects.
  /// @return true
  virtual bool Clear() = 0;
  /// Slot 11. The number of entries.
  virtual uint64_t GetCount() = 0;
  /// Slot 12. A new list with copies of all keys. Do not rely on the order. The caller releases the
  /// list.
  /// @return false with "Pointer to a pointer of struct Data::Interfaces::IVariantList must not be
  ///         null! Address of return must be specified!" or "Pointer of struct
  ///         Data::Interfaces::IVariantList must be null in order to avoid memory leaks!"
  virtual bool GetKeys(IVariantList** out, Core::IErrorCode** error) = 0;

 protected:
  ~IVariantDictionary() = default;
};

}  // namespace Data::Interfaces
