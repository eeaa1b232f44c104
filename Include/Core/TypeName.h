#pragma once

#include <cstdlib>
#include <new>
#include <string>
#include <type_traits>
#include <typeinfo>

#if __has_include(<cxxabi.h>)
// Declared here instead of including <cxxabi.h>, which declares much that no caller needs.
namespace __cxxabiv1 {
extern "C" char* __cxa_demangle(const char* mangled, char* buffer, std::size_t* size, int* status);
}
#endif

namespace Core {

/// The undecorated name of a type: "Data::impl::TableImpl", "char".
inline std::string UndecoratedName(const std::type_info& type) {
#if __has_include(<cxxabi.h>)
  constexpr int kNoMemory = -1;
  struct Demangled {
    explicit Demangled(const char* mangled)
        : text(__cxxabiv1::__cxa_demangle(mangled, nullptr, nullptr, &status)) {}
    Demangled(const Demangled&) = delete;
    Demangled& operator=(const Demangled&) = delete;
    ~Demangled() { std::free(text); }
    int status = 0;
    char* text;
  };
  const Demangled name(type.name());
  if (name.status == kNoMemory) throw std::bad_alloc();
  return name.text ? name.text : type.name();
#else
  const std::string name = type.name();  // begins with "struct " or "class "
  return name.starts_with("struct ") ? name.substr(7) : name;
#endif
}

/// The name of a type in messages: "struct Data::Interfaces::IArray" for interfaces,
/// implementations and records, "char" for built-in types. Every compiler gives the same text.
template <class T>
std::string TypeName() {
  using Plain = std::remove_cv_t<T>;
  return (std::is_class_v<Plain> ? "struct " : "") + UndecoratedName(typeid(Plain));
}

/// The class of an object that has virtual functions, or null if the object was compiled without
/// type information.
template <class T>
const std::type_info* ClassOf(T& object) {
#if __has_include(<cxxabi.h>)
  // The ABI stores the address of the type information just before the virtual table. `typeid`
  // would not check that address for null.
  const std::type_info* const* table = nullptr;
  __builtin_memcpy(&table, static_cast<const void*>(&object), sizeof table);
  return table[-1];
#else
  return &typeid(object);
#endif
}

/// The name of an object's class: "struct Data::impl::ArrayImpl", or "struct unknown" without type
/// information.
template <class T>
std::string RuntimeTypeName(T& object) {
  const std::type_info* type = ClassOf(object);
  return "struct " + (type ? UndecoratedName(*type) : std::string("unknown"));
}

}  // namespace Core
