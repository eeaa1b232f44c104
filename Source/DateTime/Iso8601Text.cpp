#include "DateTime/Iso8601Text.h"

#include <cstring>

namespace Data::impl {

Iso8601Text Iso8601Text::DateTime(const CalendarFields& fields) {
  Iso8601Text text;
  return text.AddDate(fields).AddTime(fields);
}

Iso8601Text Iso8601Text::Time(const CalendarFields& fields) {
  Iso8601Text text;
  return text.AddTime(fields);
}

Iso8601Text Iso8601Text::Date(const CalendarFields& fields) {
  Iso8601Text text;
  return text.AddDate(fields);
}

Iso8601Text Iso8601Text::Basic(const CalendarFields& fields) {
  Iso8601Text text;
  text.Number(fields.year, 4).Number(fields.month, 2).Number(fields.day, 2).Mark('T');
  return text.Number(fields.hour, 2).Number(fields.minute, 2).Number(fields.second, 2).Mark('Z');
}

Iso8601Text& Iso8601Text::AddDate(const CalendarFields& fields) {
  Number(fields.year, 4).Mark('-').Number(fields.month, 2).Mark('-');
  return Number(fields.day, 2);
}

Iso8601Text& Iso8601Text::AddTime(const CalendarFields& fields) {
  Mark('T').Number(fields.hour, 2).Mark(':').Number(fields.minute, 2).Mark(':');
  Number(fields.second, 2).Mark('.');
  return Number(static_cast<std::int32_t>(NanosecondsOf(fields)), 9).Mark('Z');
}

Iso8601Text& Iso8601Text::Mark(char mark) {
  text_[length_++] = mark;
  return *this;
}

/// Like printf's "%0*d".
Iso8601Text& Iso8601Text::Number(std::int32_t value, int width) {
  char digits[12];
  char* const end = digits + sizeof digits;
  char* begin = end;
  const bool negative = value < 0;
  auto rest = static_cast<std::uint32_t>(value);
  if (negative) rest = 0 - rest;
  for (; rest != 0 || end - begin < width - negative; rest /= 10)
    *--begin = static_cast<char>('0' + rest % 10);
  if (negative) *--begin = '-';
  std::memcpy(text_ + length_, begin, static_cast<std::size_t>(end - begin));
  length_ += static_cast<std::size_t>(end - begin);
  return *this;
}

}  // namespace Data::impl
