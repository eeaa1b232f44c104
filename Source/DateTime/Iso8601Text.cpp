#include "DateTime/Iso8601Text.h"

#include <algorithm>
#include <cstring>

#include "Text/Digits.h"

namespace Data::impl {

namespace {

char* PutMark(char* to, char mark) {
  *to = mark;
  return to + 1;
}

/// Like printf's "%0*d".
char* PutPadded(char* to, std::int32_t value, int width) {
  const bool isNegative = value < 0;
  const auto word = static_cast<std::uint32_t>(value);
  char digits[kIntegerRoom];
  const char* const end = PutInteger(digits, std::uint64_t{isNegative ? 0 - word : word});
  if (isNegative) *to++ = '-';
  const auto zeros = width - isNegative - (end - digits);
  if (zeros > 0) to = std::fill_n(to, zeros, '0');
  return std::copy(static_cast<const char*>(digits), end, to);
}

char* PutPair(char* to, std::uint16_t value) {
  return value < 100 ? PutTwoDigits(to, value) : PutPadded(to, value, 2);
}

char* PutYear(char* to, std::uint16_t year) {
  if (year >= 10'000) return PutPadded(to, year, 4);
  return PutTwoDigits(PutTwoDigits(to, year / 100u), year % 100u);
}

char* PutNanoseconds(char* to, const CalendarFields& fields) {
  const std::uint32_t milliseconds = fields.millisecond;
  if (milliseconds >= 1000)
    return PutPadded(to, static_cast<std::int32_t>(NanosecondsOf(fields)), 9);
  return PutMark(PutEightDigits(to, EightDigits(milliseconds * 100'000)), '0');
}

char* PutDate(char* to, const CalendarFields& fields) {
  to = PutMark(PutYear(to, fields.year), '-');
  to = PutMark(PutPair(to, fields.month), '-');
  return PutPair(to, fields.day);
}

char* PutSeconds(char* to, const CalendarFields& fields) {
  to = PutMark(PutPair(PutMark(to, 'T'), fields.hour), ':');
  to = PutMark(PutPair(to, fields.minute), ':');
  return PutPair(to, fields.second);
}

/// The end of a time.
char* PutFraction(char* to, const CalendarFields& fields) {
  return PutMark(PutNanoseconds(PutMark(to, '.'), fields), 'Z');
}

}  // namespace

char* PutIso8601Date(char* to, const CalendarFields& fields) { return PutDate(to, fields); }

char* PutIso8601Seconds(char* to, const CalendarFields& fields) {
  return PutSeconds(PutDate(to, fields), fields);
}

char* PutIso8601Time(char* to, const CalendarFields& fields) {
  return PutFraction(PutSeconds(to, fields), fields);
}

char* PutIso8601DateTime(char* to, const CalendarFields& fields) {
  return PutFraction(PutSeconds(PutDate(to, fields), fields), fields);
}

char* PutIso8601Basic(char* to, const CalendarFields& fields) {
  to = PutPair(PutPair(PutYear(to, fields.year), fields.month), fields.day);
  to = PutPair(PutPair(PutMark(to, 'T'), fields.hour), fields.minute);
  return PutMark(PutPair(to, fields.second), 'Z');
}

}  // namespace Data::impl
