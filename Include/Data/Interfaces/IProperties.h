#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Structures/ValueType.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A bag of named, typed properties. Each is registered once: with the type of its values, whether
/// it is required, and an optional default.
///
///     properties->Register("width", ValueType::Int32, true, nullptr, error.Receive());
///     properties->Set("width", &width, error.Receive());
///     properties->GetMissing(names.Receive(), error.Receive());  // empty: nothing is missing
///
/// Names are zero-terminated UTF-8 and compared byte by byte, so case matters. Values are stored as
/// copies; a copy holds a reference to its object.
///
/// Failures. Operations with an `error` argument never throw. A failed operation changes nothing,
/// and so does a lack of memory (code 2). A null name fails with "Pointer of char must not be
/// null!", a null record with "Pointer of struct Data::Structures::_VARIANT must not be null!", a
/// name that is not registered with "invalid unordered_map<K, T> key". If false is also a valid
/// result, only the error object shows a failure.
///
/// Callbacks. An object that a caller implements may call back into the bag when a reference to it
/// is added or released. Freeing nested bags does not recurse.
///
/// Threads. Not synchronised: concurrent reads are safe, a change needs exclusive access. Take
/// `Lock` around shared use. Reference counting is atomic.
struct IProperties : Core::IObject {
  /// Slot 6. Adds a property without a value.
  /// @param type          the type of its values, from Int16 to StringList
  /// @param isRequired    whether `GetMissing` lists it while it has no value
  /// @param defaultValue  its value until one is set; null or a Null record for none
  /// @return false with "Unsupported variantValueType (%d)! Use valid value from
  ///         Structures::ValueType which is not null, unknown, invalid or reserved!", "Property
  ///         with name [%s] already exists!", or as `Set` for a default that does not fit
  virtual bool Register(const char* name, Structures::ValueType type, bool isRequired,
                        const Structures::_VARIANT* defaultValue, Core::IErrorCode** error) = 0;
  /// Slot 7. Sets the value of a property, which must have its type; nothing is converted. A null
  /// reference counts as a value. The replaced value is released last.
  /// @return false with "Types of Value and Property don't match! Property [%s] is of type %s,
  ///         Value is of type %s" (also for a Null record; use `Reset` instead) or "Variant type is
  ///         undefined! Did you forget to zero out the VARIANT structure? It appears
  ///         uninitialized!". A record whose storage form or object does not fit its type fails as
  ///         the conversions do: "Must be value type!", "Must be pointer type!", "Must be reference
  ///         type! Must implement Core::IObject interface!", "Must be reference type! Meaning: Must
  ///         implement Core::IObject interface", "Variant is neither null nor value type string nor
  ///         reference type string!", "Object does not implement %s interface!", "Cannot cast to
  ///         desired interface: Interface: struct Core::IObject Implementation: %s".
  virtual bool Set(const char* name, const Structures::_VARIANT* value,
                   Core::IErrorCode** error) = 0;
  /// Slot 8. Copies the value, or else the default, or else Null into an initialised record and
  /// adds a reference to its object, which the caller releases. Releases the record's previous
  /// object last.
  virtual bool Get(const char* name, Structures::_VARIANT* destination,
                   Core::IErrorCode** error) = 0;
  /// Slot 9. Whether a property of that name is registered.
  virtual bool Contains(const char* name, Core::IErrorCode** error) = 0;
  /// Slot 10. Whether a property has a value, either its own or a default.
  virtual bool HasValue(const char* name, Core::IErrorCode** error) = 0;
  /// Slot 11. Removes a property's own value, so that the default applies again.
  virtual bool Reset(const char* name, Core::IErrorCode** error) = 0;
  /// Slot 12. The type of a property; Unknown on failure.
  virtual Structures::ValueType GetType(const char* name, Core::IErrorCode** error) = 0;
  /// Slot 13. Whether a property is required.
  virtual bool IsRequired(const char* name, Core::IErrorCode** error) = 0;
  /// Slot 14. Copies the default, or else Null, as `Get` does.
  virtual bool GetDefault(const char* name, Structures::_VARIANT* destination,
                          Core::IErrorCode** error) = 0;
  /// Slot 15. The number of properties.
  virtual uint64_t GetCount() = 0;
  /// Slot 16. The name at an index from 0, in the order of registration.
  /// @return owned by the object and valid while it lives; null if `index` is not below the count
  virtual const char* GetNameAt(uint64_t index) = 0;
  /// Slot 17. A new list with the names (`IString`) of the required properties that have no value,
  /// in the order of registration. The caller releases the list.
  /// @return false with "Pointer to a pointer of struct Data::Interfaces::IObjectList must not be
  ///         null! Address of return must be specified!" or "Pointer of struct
  ///         Data::Interfaces::IObjectList must be null in order to avoid memory leaks!"
  virtual bool GetMissing(IObjectList** out, Core::IErrorCode** error) = 0;

 protected:
  ~IProperties() = default;
};

}  // namespace Data::Interfaces
