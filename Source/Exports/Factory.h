#pragma once

#include <utility>

#include "Core/Guard.h"
#include "Core/Ptr.h"

namespace Data::impl {

/// A factory without an error argument: false for a null out-pointer, whatever
/// the out-pointer held is overwritten, exceptions reach the caller.
template <class Implementation, class Interface, class... Arguments>
bool Create(Interface** out, Arguments&&... arguments) {
  if (!out) return false;
  *out = Core::MakePtr<Implementation>(std::forward<Arguments>(arguments)...).Detach();
  return true;
}

/// A guarded factory: the out-pointer is checked before anything is allocated.
template <class Implementation, class Interface, class... Arguments>
bool CreateGuarded(Interface** out, Core::IErrorCode** error, Arguments&&... arguments) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    *out = Core::MakePtr<Implementation>(std::forward<Arguments>(arguments)...).Detach();
  });
}

}  // namespace Data::impl
