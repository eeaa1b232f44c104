#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "LayerData/Error.h"
#include "LayerData/layerdata.h"

/// What the classes of this layer are made of: owning handles, and calls that throw.
namespace layerdata::detail {

/// Owns one reference to an object of the C interface.
template <class Object>
class Handle {
 public:
  Handle() noexcept = default;
  /// Takes over a reference that a function of the C interface has given.
  explicit Handle(Object* received) noexcept : object_(received) {}
  Handle(const Handle& other) noexcept : object_(other.object_) { ld_retain(object_); }
  Handle(Handle&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Handle& operator=(Handle other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Handle() { ld_release(object_); }

  Object* Get() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }

  /// A handle that shares an object of the caller's.
  static Handle Share(Object* object) noexcept {
    ld_retain(object);
    return Handle(object);
  }

 private:
  Object* object_ = nullptr;
};

[[noreturn]] inline void Throw(ld_error* failure) {
  const Handle<ld_error> held(failure);
  if (!failure) throw Error("std::bad_alloc");  // there was no memory for an error object either
  throw Error(ld_error_message(failure), ld_error_code(failure));
}

/// Calls a function of the C interface with these arguments.
template <class Function, class... Arguments>
void Call(Function function, Arguments... arguments) {
  ld_error* failure = nullptr;
  if (!function(arguments..., &failure)) Throw(failure);
}

/// Calls a function of the C interface whose last argument is the address of its result.
template <class Result, class Function, class... Arguments>
Result Ask(Function function, Arguments... arguments) {
  Result result{};
  Call(function, arguments..., &result);
  return result;
}

/// Calls a function of the C interface that gives an object, which may be null.
template <class Object, class Function, class... Arguments>
Handle<Object> Receive(Function function, Arguments... arguments) {
  return Handle<Object>(Ask<Object*>(function, arguments...));
}

/// The names of a list, or of its entries, as the C interface takes them. They point into the list.
template <class Entry, class NameOf = std::identity>
std::vector<const char*> Names(const std::vector<Entry>& entries, NameOf nameOf = {}) {
  std::vector<const char*> names;
  names.reserve(entries.size());
  for (const Entry& entry : entries) names.push_back(std::invoke(nameOf, entry).c_str());
  return names;
}

}  // namespace layerdata::detail
