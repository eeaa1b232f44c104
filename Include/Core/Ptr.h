#pragma once

#include <cstddef>
#include <stdexcept>
#include <utility>

#include "Core/Cast.h"
#include "Core/Failures.h"

namespace Core {

/// Owns one reference to an object. Copying it, and constructing it from a raw pointer, adds a
/// reference; destruction releases one, and assignment releases the previous object's. Threads may
/// use separate copies, but not one `Ptr` while any of them changes it.
///
///     Core::Ptr<ITable> table;
///     if (!Data_CreateTable(table.Receive(), error.Receive())) ...
template <class T>
class Ptr {
 public:
  /// Null.
  Ptr() noexcept = default;
  /// Null.
  Ptr(std::nullptr_t) noexcept {}
  /// Shares an object: adds a reference.
  Ptr(T* object) : object_(object) {
    if (object_) object_->AddReference();
  }
  Ptr(const Ptr& other) : Ptr(other.object_) {}
  Ptr(Ptr&& other) noexcept : object_(other.Detach()) {}
  /// The same object as one of its bases.
  template <class U>
  requires std::is_convertible_v<U*, T*> Ptr(const Ptr<U>& other) : Ptr(other.Get()) {}
  /// The same object as one of its bases.
  template <class U>
  requires std::is_convertible_v<U*, T*> Ptr(Ptr<U>&& other)
  noexcept : object_(other.Detach()) {}
  ~Ptr() {
    if (object_) object_->Release();
  }
  Ptr& operator=(Ptr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  /// Takes over a reference that the caller owns, such as one that a factory returned.
  [[nodiscard]] static Ptr Adopt(T* object) noexcept {
    Ptr result;
    result.object_ = object;
    return result;
  }

  /// The address to pass as an out-pointer. Releases the previous object first, so that the
  /// out-pointer is null.
  [[nodiscard]] T** Receive() {
    Reset();
    return &object_;
  }
  /// Passes the reference to the caller; this pointer becomes null.
  [[nodiscard]] T* Detach() noexcept { return std::exchange(object_, nullptr); }
  /// Releases the object; this pointer becomes null.
  void Reset() { *this = Ptr(); }

  /// The raw pointer, which may be null. Adds no reference.
  T* Get() const noexcept { return object_; }
  /// @throws std::runtime_error "Null pointer exception! Interface is not accessible: " + type
  T* operator->() const {
    if (!object_) ThrowNullInterface<T>();
    return object_;
  }
  /// As `operator->`.
  T& operator*() const { return *operator->(); }
  /// Whether this pointer is not null.
  explicit operator bool() const noexcept { return object_ != nullptr; }

  /// The raw pointer, after `CheckInterface` has checked the object's run-time type.
  T* Checked() const { return CheckInterface(object_); }

  friend bool operator==(const Ptr& left, const Ptr& right) noexcept {
    return left.object_ == right.object_;
  }

 private:
  T* object_ = nullptr;
};

/// Refers to an object without owning a reference. A `Ptr<>` must keep the object alive for as long
/// as the `WeakPtr` is used.
template <class T>
class WeakPtr {
 public:
  /// Null.
  WeakPtr() noexcept = default;
  /// Refers to an object, which may be null.
  WeakPtr(T* object) noexcept : object_(object) {}
  WeakPtr(const Ptr<T>& object) noexcept : object_(object.Get()) {}

  /// The raw pointer, which may be null.
  T* Get() const noexcept { return object_; }
  /// As `Ptr`.
  T* operator->() const {
    if (!object_) ThrowNullInterface<T>();
    return object_;
  }
  /// Whether this pointer is not null.
  explicit operator bool() const noexcept { return object_ != nullptr; }
  /// As `Ptr::Checked`.
  T* Checked() const { return CheckInterface(object_); }
  /// An owning pointer to the object, or null.
  Ptr<T> Share() const { return Ptr<T>(object_); }

 private:
  T* object_ = nullptr;
};

/// Creates an object; the result owns its only reference.
template <class Implementation, class... Arguments>
Ptr<Implementation> MakePtr(Arguments&&... arguments) {
  return Ptr<Implementation>::Adopt(new Implementation(std::forward<Arguments>(arguments)...));
}

/// The object as another of its interfaces, with one more reference.
/// @throws std::runtime_error "Null pointer exception! Interface is not accessible: " + type for
///         null, "Cannot cast to desired interface: Interface: " + type + " Desired Interface: " +
///         type for an object that does not implement the target
template <class Target, class Source>
Ptr<Target> CastToInterface(const Ptr<Source>& source) {
  if (!source) ThrowNullInterface<Source>();
  if (auto* target = InterfaceOf<Target>(source.Get())) return Ptr<Target>(target);
  throw std::runtime_error("Cannot cast to desired interface: Interface: " + TypeName<Source>() +
                           " Desired Interface: " + TypeName<Target>());
}

/// As above.
template <class Target, class Source>
Ptr<Target> CastToInterface(Source* source) {
  return CastToInterface<Target>(Ptr<Source>(source));
}

}  // namespace Core
