#pragma once

#include "Documents/RapidJson.h"

namespace Data::impl {

/// Whether two values are equal by the rules of rapidjson's `==`: members by name in any order,
/// integers by their 64 bits, an integer and a double as doubles. Where names repeat, each member
/// on the left is compared with the first of its name on the right. Unlike that operator it needs
/// no stack for nested values and no quadratic time for wide objects.
bool AreEqual(const JsonValue& left, const JsonValue& right);

}  // namespace Data::impl
