#pragma once

#include <string_view>
#include <type_traits>
#include <typeinfo>

#include "Core/IObject.h"
#include "Core/TypeName.h"

namespace Core {

namespace detail {

#if __has_include(<cxxabi.h>)
/// Whether a class, or a base in its single-inheritance chain, has the given name. A library and a
/// program that use different C++ runtimes each have their own type information for the same
/// interface, so only the names can be compared.
inline bool ChainHasName(const std::type_info& implementation, std::string_view name) {
  const std::type_info* type = &implementation;
  while (type->name() != name) {
    const std::string_view kind = typeid(*type).name();
    if (kind != "N10__cxxabiv120__si_class_type_infoE") return false;
    // The ABI stores the base class's address directly after the `type_info`.
    type = *reinterpret_cast<const std::type_info* const*>(type + 1);
  }
  return true;
}
#endif

}  // namespace detail

/// The object as the interface `Target`, or null if it is null or does not implement `Target`. This
/// is a run-time type check that falls back to comparing type names. Adds no reference. The object
/// must have been compiled for the same C++ ABI.
template <class Target, class Source>
Target* InterfaceOf(Source* object) {
  static_assert(std::is_base_of_v<IObject, Target> && std::is_base_of_v<IObject, Source>);
  IObject* root = object;
  if (!root || !ClassOf(*root)) return nullptr;
  if (auto* target = dynamic_cast<Target*>(root)) return target;
#if __has_include(<cxxabi.h>)
  // With single inheritance throughout, all interfaces of an object share one address.
  if (detail::ChainHasName(typeid(*root), typeid(Target).name())) return static_cast<Target*>(root);
#endif
  return nullptr;
}

/// True if the object provably lacks the interface. False if that cannot be determined: the object
/// has no type information, or its class repeats the slots without deriving from `IObject`, as
/// objects written in other languages do.
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
