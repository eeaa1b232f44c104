#pragma once

#include <stdint.h>

namespace Data::Structures {

/// The precision of a date-time comparison, or a calendar period.
enum class DateTimeUnit : int32_t {
  Year = 0,
  Month = 1,
  Week = 2,
  Day = 3,
  Hour = 4,
  Minute = 5,
  Second = 6,
  Millisecond = 7
};

}  // namespace Data::Structures
