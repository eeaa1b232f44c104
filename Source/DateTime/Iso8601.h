#pragma once

#include <cstdint>
#include <string_view>

#include "DateTime/Calendar.h"

namespace Data::impl {

enum class Iso8601Result : std::uint8_t { Read, Empty, BadTime, BadDate, MonthZero, DayZero };

/// Reads a date, a date with time or a time alone ("T08:15", on 0001-01-01).
///
/// Pieces between separators are read as decimal prefixes, so "2x" is 2 and an
/// empty piece 0; nothing but zero for month and day is out of range. A time
/// that cannot be read behind a date is ignored. Without a time it is noon.
/// Offsets are never applied. Neither throws nor allocates.
/// @param out  the day of week is left 0; unspecified on failure
Iso8601Result ReadIso8601(std::string_view text, CalendarFields& out) noexcept;

/// Raises the failure of a text that could not be read.
[[noreturn]] void ThrowIso8601Failure(Iso8601Result failure, std::string_view text);

}  // namespace Data::impl
