#pragma once

#include <typeinfo>

#include "Core/IObject.h"
#include "Core/TypeName.h"

namespace Core {

/// The object if it is exactly of this library's own class, else null: a single
/// comparison, where asking for an interface walks through the bases.
template <class Implementation>
Implementation* ImplementationOf(IObject* object) {
  const std::type_info* type = object ? ClassOf(*object) : nullptr;
  return type && *type == typeid(Implementation) ? static_cast<Implementation*>(object) : nullptr;
}

}  // namespace Core
