#pragma once

#include <cstddef>
#include <cstdint>

#include "DateTime/Calendar.h"

/// Calendar fields as ISO 8601 text. Fields are padded with zeros and never truncated.
namespace Data::impl {

/// The longest text of any fields.
constexpr std::size_t kIso8601Room = 56;

// These write where the caller has room, and return the end of the text.
char* PutIso8601Date(char* to, const CalendarFields& fields);     ///< 2024-11-14
char* PutIso8601Seconds(char* to, const CalendarFields& fields);  ///< 2024-11-14T10:20:30
char* PutIso8601Time(char* to, const CalendarFields& fields);     ///< T10:20:30.123000000Z
char* PutIso8601DateTime(char* to,
                         const CalendarFields& fields);         ///< 2024-11-14T10:20:30.123000000Z
char* PutIso8601Basic(char* to, const CalendarFields& fields);  ///< 20241114T102030Z

/// The millisecond field in nanoseconds.
constexpr std::uint32_t NanosecondsOf(const CalendarFields& fields) {
  return fields.millisecond * 1'000'000u;
}

}  // namespace Data::impl
