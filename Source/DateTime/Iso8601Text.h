#pragma once

#include <cstdint>
#include <string_view>

#include "DateTime/Calendar.h"

namespace Data::impl {

/// Calendar fields as ISO 8601 text, in a buffer inside the object. Fields are padded with zeros
/// and never truncated.
class Iso8601Text {
 public:
  static Iso8601Text DateTime(const CalendarFields& fields);  ///< 2024-11-14T10:20:30.123000000Z
  static Iso8601Text Time(const CalendarFields& fields);      ///< T10:20:30.123000000Z
  static Iso8601Text Date(const CalendarFields& fields);      ///< 2024-11-14
  static Iso8601Text Basic(const CalendarFields& fields);     ///< 20241114T102030Z

  operator std::string_view() const { return {text_, length_}; }

 private:
  Iso8601Text& Number(std::int32_t value, int width);
  Iso8601Text& Mark(char mark);
  Iso8601Text& AddDate(const CalendarFields& fields);
  Iso8601Text& AddTime(const CalendarFields& fields);

  std::size_t length_ = 0;
  char text_[56];
};

/// The millisecond field in nanoseconds.
constexpr std::uint32_t NanosecondsOf(const CalendarFields& fields) {
  return fields.millisecond * 1'000'000u;
}

}  // namespace Data::impl
