#pragma once

#include <string_view>

#include "Core/ValueTypes.h"
#include "DateTime/Calendar.h"

namespace Data::impl {

/// Reads a trimmed text that is not a number as a date-time if it looks like one: it has at most 36
/// characters, begins with a digit or `T`, and contains either two dashes and at most two colons,
/// or fewer dashes, one colon and a `T`.
/// @return false for any other text; `out` is then unspecified
bool DetectDateTime(std::string_view text, CalendarFields& out) noexcept;

/// The type of a text, which is trimmed first: Unknown if it is empty, else Int64, Double, DateTime
/// or String.
Core::ValueType DetectValueType(std::string_view text) noexcept;

}  // namespace Data::impl
