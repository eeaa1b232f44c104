#include "DateTime/Iso8601.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "Text/Characters.h"

namespace Data::impl {

namespace {

// -- The fixed formats of nearly all dates --

/// The number of two digits; sets `bad` if they are not digits.
std::uint32_t TwoDigits(const char* text, std::uint32_t& bad) {
  const std::uint32_t tens = static_cast<unsigned char>(text[0]) - std::uint32_t{'0'};
  const std::uint32_t ones = static_cast<unsigned char>(text[1]) - std::uint32_t{'0'};
  bad |= (tens > 9) | (ones > 9);
  return tens * 10 + ones;
}

/// Reads ten characters: "2024-11-14".
bool ReadFixedDate(const char* text, CalendarFields& out) {
  std::uint32_t bad = text[4] != '-' || text[7] != '-';
  const std::uint32_t century = TwoDigits(text, bad), year = TwoDigits(text + 2, bad);
  const std::uint32_t month = TwoDigits(text + 5, bad), day = TwoDigits(text + 8, bad);
  out.year = static_cast<std::uint16_t>(century * 100 + year);
  out.month = static_cast<std::uint16_t>(month);
  out.day = static_cast<std::uint16_t>(day);
  return !bad;
}

/// Reads eight characters: "10:20:30".
bool ReadFixedTime(const char* text, CalendarFields& out) {
  std::uint32_t bad = text[2] != ':' || text[5] != ':';
  out.hour = static_cast<std::uint16_t>(TwoDigits(text, bad));
  out.minute = static_cast<std::uint16_t>(TwoDigits(text + 3, bad));
  out.second = static_cast<std::uint16_t>(TwoDigits(text + 6, bad));
  return !bad;
}

// -- The whole grammar --

/// Removes and returns the characters before the first of `stops`.
std::string_view TakeUntil(std::string_view& text, std::string_view stops) {
  const std::size_t length = std::min(text.find_first_of(stops), text.size());
  const std::string_view piece = text.substr(0, length);
  text.remove_prefix(length);
  return piece;
}

/// The number at the start of a piece of at most nine characters; 0 if there is none.
std::int32_t LeadingNumber(std::string_view piece) {
  const bool negative = !piece.empty() && piece[0] == '-';
  std::int32_t value = 0;
  for (std::size_t i = negative; i < piece.size() && IsDigit(piece[i]); ++i)
    value = value * 10 + (piece[i] - '0');
  return negative ? -value : value;
}

/// Reads a piece of at most `longest` characters. A negative number wraps to 16 bits.
bool ReadWord(std::string_view piece, std::size_t longest, std::uint16_t& out) {
  if (piece.size() > longest) return false;
  out = static_cast<std::uint16_t>(LeadingNumber(piece));
  return true;
}

/// Scales a fraction by the digits of its value, not of its text: ".05" and ".5"
/// are both 500 ms. Callers depend on it.
std::uint16_t MillisecondsOf(std::int32_t fraction) {
  constexpr std::int32_t kLeastOfNineDigits = 100'000'000;
  while (fraction != 0 && fraction < kLeastOfNineDigits) fraction *= 10;
  return static_cast<std::uint16_t>(fraction / 1'000'000);
}

/// Reads a piece of at most nine characters, up to the zone; what follows its digits is ignored.
bool ReadFraction(std::string_view text, CalendarFields& out) {
  constexpr std::size_t kMost = 9;
  std::int32_t fraction = 0;
  std::size_t digits = 0;
  for (; digits < std::min(text.size(), kMost) && IsDigit(text[digits]); ++digits)
    fraction = fraction * 10 + (text[digits] - '0');
  if (std::min(text.find_first_of("Z+-", digits), text.size()) > kMost) return false;
  out.millisecond = MillisecondsOf(fraction);
  return true;
}

/// Reads what follows the "T". An offset right after the seconds is read as the
/// fraction; what follows the fraction is ignored.
bool ReadTime(std::string_view text, CalendarFields& out) {
  if (!ReadWord(TakeUntil(text, ":"), 2, out.hour)) return false;
  if (text.empty()) return true;
  text.remove_prefix(1);
  if (!ReadWord(TakeUntil(text, ":"), 2, out.minute)) return false;
  if (text.empty()) return true;
  text.remove_prefix(1);
  if (!ReadWord(TakeUntil(text, ".Z+-"), 2, out.second)) return false;
  return text.empty() || ReadFraction(text.substr(1), out);
}

/// Reads the date; leaves the rest in `text`, starting at the "T" or space after the day.
bool ReadDate(std::string_view& text, CalendarFields& out) {
  if (!ReadWord(TakeUntil(text, "-"), 4, out.year)) return false;
  if (text.empty()) return true;
  text.remove_prefix(1);
  if (!ReadWord(TakeUntil(text, "-"), 2, out.month)) return false;
  if (text.empty()) return true;
  text.remove_prefix(1);
  return ReadWord(TakeUntil(text, "T "), 2, out.day);
}

constexpr bool IsBareYear(std::string_view text) {
  return text.size() == 4 && text.find('-') == std::string_view::npos;
}

constexpr CalendarFields Noon() {
  CalendarFields fields;
  fields.hour = 12;
  return fields;
}

/// The fields with the time of a text, or unchanged if the time is unreadable.
CalendarFields WithTime(const CalendarFields& fields, std::string_view text) {
  CalendarFields timed = fields;
  return ReadTime(text, timed) ? timed : fields;
}

Iso8601Result CheckDate(const CalendarFields& fields) {
  if (fields.month == 0) return Iso8601Result::MonthZero;
  return fields.day == 0 ? Iso8601Result::DayZero : Iso8601Result::Read;
}

Iso8601Result ReadTimeAlone(std::string_view text, CalendarFields& out) {
  out = kMinimumFields;
  return ReadTime(text.substr(1), out) ? Iso8601Result::Read : Iso8601Result::BadTime;
}

Iso8601Result ReadAnyShape(std::string_view text, CalendarFields& out) {
  std::string_view rest = text;
  out = Noon();
  if (!ReadDate(rest, out)) return Iso8601Result::BadDate;
  if (IsBareYear(text)) out.month = out.day = 1;
  // A space counts as "T" only after a date of ten characters.
  const bool hasTime = rest.size() > 1 && (rest[0] == 'T' || text.size() - rest.size() == 10);
  if (hasTime) out = WithTime(out, rest.substr(1));
  return CheckDate(out);
}

[[noreturn]] void ThrowFailure(Iso8601Result failure, std::string_view text) {
  switch (failure) {
    case Iso8601Result::Empty:
      throw std::runtime_error("Input lenght is 0");
    case Iso8601Result::BadTime:
      throw std::runtime_error("Invalid time format!" + std::string(text));
    case Iso8601Result::MonthZero:
      throw std::runtime_error("Month cannot be 0");
    case Iso8601Result::DayZero:
      throw std::runtime_error("Day cannot be 0");
    default:
      throw std::runtime_error("Invalid date time format!" + std::string(text));
  }
}

}  // namespace

Iso8601Result ReadIso8601(std::string_view text, CalendarFields& out) noexcept {
  if (text.empty()) return Iso8601Result::Empty;
  if (text[0] == 'T') return ReadTimeAlone(text, out);
  out = Noon();
  if (text.size() < 10 || !ReadFixedDate(text.data(), out)) return ReadAnyShape(text, out);
  if (text.size() == 10) return CheckDate(out);
  const bool separated = text[10] == 'T' || text[10] == ' ';
  if (text.size() < 19 || !separated || !ReadFixedTime(text.data() + 11, out))
    return ReadAnyShape(text, out);
  if (text.size() == 19) return CheckDate(out);
  const bool continued = text[19] == '.' || text[19] == 'Z' || text[19] == '+' || text[19] == '-';
  if (!continued || !ReadFraction(text.substr(20), out)) return ReadAnyShape(text, out);
  return CheckDate(out);
}

CalendarFields FieldsOfIso8601(std::string_view text) {
  CalendarFields fields;
  const Iso8601Result result = ReadIso8601(text, fields);
  if (result != Iso8601Result::Read) ThrowFailure(result, text);
  return fields;
}

}  // namespace Data::impl
