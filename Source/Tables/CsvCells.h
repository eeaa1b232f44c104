#pragma once

#include <string_view>

#include "Core/ObjectPool.h"
#include "Data/Structures/Variant.h"

namespace Data::impl {

/// The cell of a trimmed value. The caller owns the reference that it may hold.
/// An empty value is Null. A text loses every quote at its ends, and pairs of
/// quotes inside it become single ones; so does what looks like a number but
/// has no value.
/// @param pool  where the texts and date-times are made; null for the heap
Structures::_VARIANT MakeCell(std::string_view value, Core::ObjectPool* pool);

}  // namespace Data::impl
