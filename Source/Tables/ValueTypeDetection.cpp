#include "Tables/ValueTypeDetection.h"

#include "DateTime/Iso8601.h"
#include "Tables/CsvText.h"

namespace Data::impl {

using Core::ValueType;

namespace {

constexpr std::size_t kLongestDateTime = 36;

/// Whether a text is worth reading as a date-time: only an hour and minute
/// behind a `T`, or a date of three parts, however its time looks.
bool IsDateTimeCandidate(std::string_view text) {
  if (text.empty() || text.size() > kLongestDateTime) return false;
  if (!IsDigit(text.front()) && text.front() != 'T') return false;
  int colons = 0, dashes = 0;
  bool hasT = false;
  for (const char c : text) {
    colons += c == ':';
    dashes += c == '-';
    hasT |= c == 'T';
  }
  return colons <= 2 && (dashes == 2 || (dashes < 2 && colons == 1 && hasT));
}

}  // namespace

bool ReadDateTime(std::string_view text, CalendarFields& out) noexcept {
  return IsDateTimeCandidate(text) && ReadIso8601(text, out) == Iso8601Result::Read;
}

TypedText ReadTypedText(std::string_view text) noexcept {
  TypedText result;
  if (text.empty()) return result;
  result.number = ReadNumber(text);
  result.type = result.number.type;
  if (result.type == ValueType::String && ReadDateTime(text, result.dateTime))
    result.type = ValueType::DateTime;
  return result;
}

ValueType DetectValueType(std::string_view text) noexcept {
  return ReadTypedText(TrimValue(text)).type;
}

}  // namespace Data::impl
