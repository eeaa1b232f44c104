#pragma once

#include <string_view>

#include "Core/ValueTypes.h"
#include "DateTime/Calendar.h"

namespace Data::impl {

/// Reads a trimmed text that is no number as a date-time, if it has the shape of
/// one: a date of three parts, however its time looks, or an hour and minute
/// behind a `T`.
/// @return false for any other text; `out` is then unspecified
bool DetectDateTime(std::string_view text, CalendarFields& out) noexcept;

/// Classifies a text with space around it: Unknown for an empty one, Int64,
/// Double, DateTime or String.
Core::ValueType DetectValueType(std::string_view text) noexcept;

}  // namespace Data::impl
