#pragma once

#include <typeinfo>

#include "Core/IObject.h"

namespace Core {

/// The object if it is exactly of this library's own class, else null: a single
/// comparison, where asking for an interface walks through the bases.
template <class Implementation>
Implementation* ImplementationOf(IObject* object) {
  const bool isOwn = object && typeid(*object) == typeid(Implementation);
  return isOwn ? static_cast<Implementation*>(object) : nullptr;
}

}  // namespace Core
