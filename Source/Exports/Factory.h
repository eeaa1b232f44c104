#pragma once

#include "Core/Guard.h"
#include "Core/Ptr.h"

namespace Data::impl {

/// Hands a new object to the caller with one reference, once it has passed the
/// run-time type check.
template <class Interface>
void HandOut(Core::Ptr<Interface> object, Interface** out) {
  object.Checked();
  *out = object.Detach();
}

/// A factory without an error argument: false for a null out-pointer, whatever
/// the out-pointer held is overwritten, exceptions reach the caller.
template <class Implementation, class Interface, class... Arguments>
bool Create(Interface** out, Arguments&&... arguments) {
  if (!out) return false;
  HandOut<Interface>(Core::MakePtr<Implementation>(std::forward<Arguments>(arguments)...), out);
  return true;
}

/// A guarded factory: the out-pointer is checked before anything is allocated.
template <class Implementation, class Interface>
bool CreateGuarded(Interface** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    HandOut<Interface>(Core::MakePtr<Implementation>(), out);
  });
}

}  // namespace Data::impl
