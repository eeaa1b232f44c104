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
  if (text.size() > kLongestDateTime) return false;
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

TypedText ReadTypedText(std::string_view text) noexcept {
  TypedText result;
  if (text.empty()) return result;
  result.number = ReadNumber(text);
  result.type = result.number.type;
  if (result.type == ValueType::String && IsDateTimeCandidate(text) &&
      ReadIso8601(text, result.dateTime) == Iso8601Result::Read)
    result.type = ValueType::DateTime;
  return result;
}

ValueType DetectValueType(std::string_view text) noexcept {
  return ReadTypedText(TrimValue(text)).type;
}

}  // namespace Data::impl
