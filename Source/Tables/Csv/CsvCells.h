#pragma once

#include <string_view>

#include "Core/ObjectPool.h"
#include "Data/Structures/Variant.h"

namespace Data::impl {

/// Fills a Null cell with a trimmed value; an empty one leaves it. A text loses
/// every quote at its ends, and pairs of quotes inside it become single ones; so
/// does what looks like a number but has no value.
/// @param pool  where the texts and date-times are made; null for the heap
void ReadCell(std::string_view value, Core::ObjectPool* pool, Structures::_VARIANT& cell);

}  // namespace Data::impl
