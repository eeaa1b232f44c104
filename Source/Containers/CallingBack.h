#pragma once

#include <optional>

#include "Containers/ArrayImpl.h"
#include "Core/Variant.h"
#include "DateTime/DateTimeImpl.h"
#include "Text/MultiByteStringImpl.h"

/// Values may refer to objects of the caller's own classes, whose operations may call the very
/// container that uses them. The library's strings, date-times and arrays never do, so values of
/// these kinds are used in place; all other objects are held while they are used.
namespace Data::impl {

/// Whether using an object (copying, reading, comparing or releasing it) may run the caller's code.
inline bool CallsBack(Core::IObject& object) {
  const std::type_info* type = Core::ClassOf(object);
  return type != &typeid(MultiByteStringImpl) && type != &typeid(DateTimeImpl) &&
         type != &typeid(ArrayImpl);
}

/// As above for the object of a record; false for every record that holds its value itself.
inline bool CallsBack(const Structures::_VARIANT& value) {
  Core::IObject* object = Core::ReferencedObject(value);
  return object && CallsBack(*object);
}

inline bool AnyCallsBack(const Structures::_VARIANT* values, std::uint64_t count) {
  for (std::uint64_t i = 0; i < count; ++i)
    if (CallsBack(values[i])) return true;
  return false;
}

/// A reference to hold while the caller's code may run; null otherwise, which costs nothing.
template <class Object>
Core::Ptr<Object> HeldIf(bool callsBack, Object* object) {
  return Core::Ptr<Object>(callsBack ? object : nullptr);
}

/// A record to read: a copy that holds its object if the caller's code may run meanwhile, otherwise
/// the record itself.
class HeldValue {
 public:
  HeldValue(const Structures::_VARIANT& value, bool callsBack) : value_(&value) {
    if (callsBack) value_ = &held_.emplace(value);
  }
  HeldValue(const HeldValue&) = delete;
  HeldValue& operator=(const HeldValue&) = delete;

  operator const Structures::_VARIANT&() const { return *value_; }

 private:
  std::optional<Core::Variant> held_;
  const Structures::_VARIANT* value_;
};

}  // namespace Data::impl
