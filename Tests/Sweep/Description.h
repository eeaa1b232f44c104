#pragma once

#include "Prelude.h"

namespace Data::tests {

/// All that can be read from an object of any interface, as text; "null" for none.
std::string Describe(IObject* object);
/// A record's type and display text.
std::string Describe(const Structures::_VARIANT& record);

}  // namespace Data::tests
