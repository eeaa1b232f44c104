#pragma once

#include <string_view>

#include "Core/ObjectPool.h"
#include "Data/Structures/Variant.h"

namespace Data::impl {

/// Reads a trimmed value into a cell that is Null; an empty value leaves it so. A value that is
/// neither a number nor a date-time is text: all quotes at its ends are removed, and doubled quotes
/// inside become single ones. What looks like a number but has no value is text, too.
/// @param pool  where texts and date-times are allocated; null for the heap
void ReadCell(std::string_view value, Core::ObjectPool* pool, Structures::_VARIANT& cell);

}  // namespace Data::impl
