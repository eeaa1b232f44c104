#pragma once

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>
#if __has_include(<cxxabi.h>)
#include <cxxabi.h>
#endif

namespace Core {

/// The undecorated name of a type: "Data::impl::TableImpl", "char".
inline std::string UndecoratedName(const std::type_info& type) {
#if __has_include(<cxxabi.h>)
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> name(
      abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
  return name ? name.get() : type.name();
#else
  const std::string name = type.name();  // decorated with its class key
  return name.starts_with("struct ") ? name.substr(7) : name;
#endif
}

/// The name of a type as messages show it: "struct Data::Interfaces::IArray"
/// for interfaces, implementations and records, "char" for built-in types.
/// The same text on every compiler.
template <class T>
std::string TypeName() {
  using Plain = std::remove_cv_t<T>;
  return (std::is_class_v<Plain> ? "struct " : "") + UndecoratedName(typeid(Plain));
}

/// The class of an object with virtual functions; null if it was compiled without
/// type information.
template <class T>
const std::type_info* ClassOf(T& object) {
#if __has_include(<cxxabi.h>)
  // Its address stands before the virtual table, where `typeid` trusts it to be.
  const std::type_info* const* table = nullptr;
  std::memcpy(&table, static_cast<const void*>(&object), sizeof table);
  return table[-1];
#else
  return &typeid(object);
#endif
}

/// The name of an object's implementation, "struct Data::impl::ArrayImpl".
template <class T>
std::string RuntimeTypeName(T& object) {
  const std::type_info* type = ClassOf(object);
  return "struct " + (type ? UndecoratedName(*type) : std::string("unknown"));
}

}  // namespace Core
