#pragma once

#include <string_view>
#include <type_traits>
#include <typeinfo>

#include "Core/IObject.h"
#include "Core/TypeName.h"

namespace Core {

namespace detail {

#if __has_include(<cxxabi.h>)
/// Whether a class, or one of the bases in its single-inheritance chain, has
/// the given name. A library and a program that were built with different C++
/// runtimes each carry their own type information for the same interface, so
/// only the names can be compared.
inline bool ChainHasName(const std::type_info& implementation, std::string_view name) {
  const std::type_info* type = &implementation;
  while (type->name() != name) {
    const std::string_view kind = typeid(*type).name();
    if (kind != "N10__cxxabiv120__si_class_type_infoE") return false;
    // The ABI stores the address of the base class behind the `type_info`.
    type = *reinterpret_cast<const std::type_info* const*>(type + 1);
  }
  return true;
}
#endif

}  // namespace detail

/// The object as the interface `Target`, by a run-time type check that compares
/// the names of types; null for null and for an object that does not implement
/// it. Adds no reference. The object must have been built by a compiler of this ABI.
template <class Target, class Source>
Target* InterfaceOf(Source* object) {
  static_assert(std::is_base_of_v<IObject, Target> && std::is_base_of_v<IObject, Source>);
  IObject* root = object;
  if (!root || !ClassOf(*root)) return nullptr;
  if (auto* target = dynamic_cast<Target*>(root)) return target;
#if __has_include(<cxxabi.h>)
  // Single inheritance all the way: the interfaces share one address.
  if (detail::ChainHasName(typeid(*root), typeid(Target).name())) return static_cast<Target*>(root);
#endif
  return nullptr;
}

/// True if the object provably lacks the interface; false when that cannot be
/// determined: for an object without type information, or of a class that repeats
/// the slots without deriving from `IObject`, as other languages do.
template <class Interface>
bool IsOfAnotherInterface(Interface* object) {
  if (InterfaceOf<Interface>(object) == object) return false;
#if __has_include(<cxxabi.h>)
  const std::type_info* type = ClassOf(*object);
  return type && detail::ChainHasName(*type, typeid(IObject).name());
#else
  return true;
#endif
}

}  // namespace Core
