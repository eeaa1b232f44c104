#pragma once

#include "Documents/RapidJson.h"

namespace Data::impl {

/// Whether two values are equal as rapidjson's `==` has it: members by name in
/// any order, numbers by value; of members that repeat a name on the right only
/// the first counts. Unlike that operator it needs no stack for nested values
/// and no quadratic time for wide objects.
bool AreEqual(const JsonValue& left, const JsonValue& right);

}  // namespace Data::impl
