#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Arrow values for which cells have no type of their own, as exact texts.
namespace Data::c {

/// -123.4500
/// @param bytes  a signed integer, the lowest byte first
/// @param scale  how many of its decimal digits stand after the point; below 0, how many zeros
///               follow them
std::string DecimalText(std::string_view bytes, std::int64_t scale);

/// 10:20:30.000125: a time of day, with the digits of its unit.
std::string TimeText(std::int64_t value, std::int64_t unitsPerSecond);

/// P1M2DT-3.500000S: an ISO 8601 duration. Its parts are signed, because the length of a month or
/// day is not known, and parts of 0 are left out.
std::string DurationText(std::int64_t months, std::int64_t days, std::int64_t units,
                         std::int64_t unitsPerSecond);

}  // namespace Data::c
