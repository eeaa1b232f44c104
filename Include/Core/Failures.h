#pragma once

#include <stdexcept>
#include <string>
#include <type_traits>

#include "Core/Cast.h"
#include "Core/StringFormat.h"

/// Failures shared by the library and its callers, so that each message is written once. They are
/// std::runtime_error unless stated otherwise.
namespace Core {

/// The failure of using a null pointer as an interface.
template <class T>
[[noreturn]] void ThrowNullInterface() {
  throw std::runtime_error("Null pointer exception! Interface is not accessible: " + TypeName<T>());
}

/// The failure of a null record or name.
[[noreturn]] inline void ThrowCannotBeNull() { throw std::runtime_error("Cannot be nullptr!"); }

/// The failure of using an object as an interface that it does not have.
[[noreturn]] inline void ThrowInvalidAddress(const void* address) {
  throw std::runtime_error(StringFormat(
      "Memory address [%p] is invalid and was probably already reclaimed by the OS. This means "
      "that object that was held by current Ptr<> was already released somewhere else. If WeakPtr "
      "is used then this can happen if object lifecycle is not maintained properly. This can also "
      "happen on AddReference and Release methods misuse. Other possible causes can be heap "
      "corruption or miscompiled binaries.",
      address));
}

/// The failure of a lookup whose name or key does not exist: std::out_of_range.
[[noreturn]] inline void ThrowMissingKey() {
  throw std::out_of_range("invalid unordered_map<K, T> key");
}

/// Checks the run-time type of an object and returns the object.
/// @throws std::runtime_error "Null pointer exception! Interface is not accessible: " + type for
///         null, "Memory address [%p] is invalid ..." for an object of another interface
template <class Interface>
Interface* CheckInterface(Interface* object) {
  if (!object) ThrowNullInterface<Interface>();
  if (IsOfAnotherInterface(object)) ThrowInvalidAddress(object);
  return object;
}

/// Rejects a null argument. An object must also pass `CheckInterface`.
/// @throws std::runtime_error "Pointer of " + type + " must not be null!"
template <class T>
void CheckArgument(T* argument) {
  if (!argument) throw std::runtime_error("Pointer of " + TypeName<T>() + " must not be null!");
  if constexpr (std::is_base_of_v<IObject, T>) CheckInterface(argument);
}

/// Rejects an out-pointer that is null, or that still holds an object, which would leak.
/// @throws std::runtime_error "Pointer to a pointer of " + type + " must not be null! Address of
///         return must be specified!", "Pointer of " + type + " must be null in order to avoid
///         memory leaks!"
template <class T>
void CheckOutPointer(T** out) {
  if (!out)
    throw std::runtime_error("Pointer to a pointer of " + TypeName<T>() +
                             " must not be null! Address of return must be specified!");
  if (*out)
    throw std::runtime_error("Pointer of " + TypeName<T>() +
                             " must be null in order to avoid memory leaks!");
}

}  // namespace Core
