#pragma once

#include <cstdint>
#include <string_view>

#include "DateTime/Calendar.h"

namespace Data::impl {

enum class Iso8601Result : std::uint8_t { Read, Empty, BadTime, BadDate, MonthZero, DayZero };

/// Reads a date, a date and time, or a time alone ("T08:15", on 0001-01-01).
///
/// The number of each piece between separators is its leading digits: "2x" is 2 and an empty piece
/// is 0. A month or day of 0 is rejected; no other range is checked. An unreadable time after a
/// date is ignored. A date without a time is at noon. Offsets are never applied. Does not allocate.
/// @param out  its day of week is 0; unspecified on failure
Iso8601Result ReadIso8601(std::string_view text, CalendarFields& out) noexcept;

/// Like `ReadIso8601`.
/// @throws std::runtime_error as documented at `Data_CreateDateTimeFromIso8601`
CalendarFields FieldsOfIso8601(std::string_view text);

}  // namespace Data::impl
