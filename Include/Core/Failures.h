#pragma once

#include <stdexcept>
#include <string>
#include <type_traits>

#include "Core/Cast.h"
#include "Core/StringFormat.h"

/// Failures that several parts of the library and its callers raise, each text
/// written once. Where nothing else is said they are std::runtime_error.
namespace Core {

template <class T>
[[noreturn]] void ThrowNullInterface() {
  throw std::runtime_error("Null pointer exception! Interface is not accessible: " + TypeName<T>());
}

[[noreturn]] inline void ThrowCannotBeNull() { throw std::runtime_error("Cannot be nullptr!"); }

[[noreturn]] inline void ThrowInvalidAddress(const void* address) {
  throw std::runtime_error(StringFormat(
      "Memory address [%p] is invalid and was probably already reclaimed by the OS. This means "
      "that object that was held by current Ptr<> was already released somewhere else. If WeakPtr "
      "is used then this can happen if object lifecycle is not maintained properly. This can also "
      "happen on AddReference and Release methods misuse. Other possible causes can be heap "
      "corruption or miscompiled binaries.",
      address));
}

/// A lookup by name or key that finds nothing: std::out_of_range.
[[noreturn]] inline void ThrowMissingKey() {
  throw std::out_of_range("invalid unordered_map<K, T> key");
}

/// The object itself once it has passed the run-time type check.
/// @throws std::runtime_error "Null pointer exception! ..." for null, "Memory
///         address [%p] is invalid ..." for an object of another interface
template <class Interface>
Interface* CheckInterface(Interface* object) {
  if (!object) ThrowNullInterface<Interface>();
  if (IsOfAnotherInterface(object)) ThrowInvalidAddress(object);
  return object;
}

/// Rejects a null argument: "Pointer of struct Data::Interfaces::IArray must
/// not be null!". An object must also pass `CheckInterface`.
template <class T>
void CheckArgument(T* argument) {
  if (!argument) throw std::runtime_error("Pointer of " + TypeName<T>() + " must not be null!");
  if constexpr (std::is_base_of_v<IObject, T>) CheckInterface(argument);
}

/// Rejects an out-pointer that is null, or that still holds an object, which the
/// operation would overwrite and leak.
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
