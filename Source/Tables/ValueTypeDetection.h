#pragma once

#include <string_view>

#include "Core/ValueTypes.h"
#include "DateTime/Calendar.h"

namespace Data::impl {

/// Reads a trimmed text that is not a number as a date-time if it looks like one: a date of three
/// parts, whatever follows, or an hour and minute after a `T`.
/// @return false for any other text; `out` is then unspecified
bool DetectDateTime(std::string_view text, CalendarFields& out) noexcept;

/// The type of a text, which is trimmed first: Unknown if it is empty, else Int64, Double, DateTime
/// or String.
Core::ValueType DetectValueType(std::string_view text) noexcept;

}  // namespace Data::impl
