#pragma once

#include <typeinfo>

#include "Core/IObject.h"
#include "Core/TypeName.h"

namespace Core {

/// The object if its class is exactly this one of the library, else null. Takes one comparison,
/// whereas a cast to an interface walks through the base classes.
template <class Implementation>
Implementation* ExactCast(IObject* object) {
  const std::type_info* type = object ? ClassOf(*object) : nullptr;
  return type && *type == typeid(Implementation) ? static_cast<Implementation*>(object) : nullptr;
}

}  // namespace Core
