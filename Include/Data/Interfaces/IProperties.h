#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Structures/ValueType.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A bag of named, typed properties. Each is registered once: with the type of its values, whether
/// it is required, and an optional default.
///
///     properties->Register("width", ValueType::Int32, true, nullptr, &error);
///     properties->Set("width", &width, &error);
///     properties->GetMissing(&names, &error);  // empty: nothing is missing
///
/// Names are zero-terminated UTF-8 and compared byte by byte, so case matters. Values are stored
/// as copies; one that refers to an object holds a reference to it.
///
/// Operations with an `error` argument never throw. A failed one, a lack of memory included
/// (code 2), changes nothing. A null name fails with "Pointer of char must not be null!", a null
/// record with "Pointer of struct Data::Structures::_VARIANT must not be null!", a name that is
/// not registered with "invalid unordered_map<K, T> key". An object of the program's own may call
/// back into the bag when a reference to it is added or released. Freeing bags that are nested in
/// each other takes no stack, however deep.
///
/// Not synchronised: several threads may read one object at a time, a change needs exclusive
/// access (take `Lock` around shared use). Reference counting is atomic.
struct IProperties : Core::IObject {
  /// Slot 6. Adds a property without a value.
  /// @param type          the type of its values: any but Unknown, Invalid, Null and Reserved
  /// @param isRequired    whether `GetMissing` lists it while it has no value
  /// @param defaultValue  its value until it is set; null or a Null record for none
  /// @return false with "Unsupported variantValueType (%d)! Use valid value from
  ///         Structures::ValueType which is not null, unknown, invalid or reserved!", "Property
  ///         with name [%s] already exists!", or as `Set` for a default that does not fit
  virtual bool Register(const char* name, Structures::ValueType type, bool isRequired,
                        const Structures::_VARIANT* defaultValue, Core::IErrorCode** error) = 0;
  /// Slot 7. Gives a property a value of its type; nothing is converted. A null reference counts
  /// as a value. The value replaced is released last.
  /// @return false with "Types of Value and Property don't match! Property [%s] is of type %s,
  ///         Value is of type %s" (also for a Null record: use `Reset`), "Variant type is
  ///         undefined! Did you forget to zero out the VARIANT structure? It appears
  ///         uninitialized!". A record whose form or object is not what its type stands for fails
  ///         as the conversions do: "Must be value type!", "Must be pointer type!", "Must be
  ///         reference type! ...", "Object does not implement %s interface!", "Cannot cast to
  ///         desired interface: Interface: struct Core::IObject Implementation: %s".
  virtual bool Set(const char* name, const Structures::_VARIANT* value,
                   Core::IErrorCode** error) = 0;
  /// Slot 8. Copies the value, or else the default, or else Null into an initialised record, whose
  /// former object is released last. The caller owns the copy and its reference.
  virtual bool Get(const char* name, Structures::_VARIANT* destination,
                   Core::IErrorCode** error) = 0;
  /// Slot 9. Whether a property of that name is registered.
  virtual bool Contains(const char* name, Core::IErrorCode** error) = 0;
  /// Slot 10. Whether a property has a value, its own or a default.
  virtual bool HasValue(const char* name, Core::IErrorCode** error) = 0;
  /// Slot 11. Removes a property's own value; the default applies again.
  virtual bool Reset(const char* name, Core::IErrorCode** error) = 0;
  /// Slot 12. The type of a property; Unknown on failure.
  virtual Structures::ValueType GetType(const char* name, Core::IErrorCode** error) = 0;
  /// Slot 13. Whether a property is required.
  virtual bool IsRequired(const char* name, Core::IErrorCode** error) = 0;
  /// Slot 14. Copies the default, or else Null into `destination`, as `Get`.
  virtual bool GetDefault(const char* name, Structures::_VARIANT* destination,
                          Core::IErrorCode** error) = 0;
  /// Slot 15. Number of properties.
  virtual uint64_t GetCount() = 0;
  /// Slot 16. The name at an index from 0, in the order of registration.
  /// @return owned by the object and valid while it lives; null when `index` is not below the
  ///         count
  virtual const char* GetNameAt(uint64_t index) = 0;
  /// Slot 17. A new list of the names (`IString`) of the required properties without a value, in
  /// the order of registration; the caller releases it.
  /// @return false with "Pointer to a pointer of struct Data::Interfaces::IObjectList must not be
  ///         null! Address of return must be specified!" or "Pointer of struct
  ///         Data::Interfaces::IObjectList must be null in order to avoid memory leaks!"
  virtual bool GetMissing(IObjectList** out, Core::IErrorCode** error) = 0;

 protected:
  ~IProperties() = default;
};

}  // namespace Data::Interfaces
