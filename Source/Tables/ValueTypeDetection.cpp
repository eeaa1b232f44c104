#include "Tables/ValueTypeDetection.h"

#include "DateTime/Iso8601.h"
#include "Tables/ParsedNumber.h"
#include "Text/Characters.h"

namespace Data::impl {

using Core::ValueType;

namespace {

constexpr std::size_t kLongestDateTime = 36;

bool HasDateTimeShape(std::string_view text) {
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

bool DetectDateTime(std::string_view text, CalendarFields& out) noexcept {
  return HasDateTimeShape(text) && ReadIso8601(text, out) == Iso8601Result::Read;
}

ValueType DetectValueType(std::string_view text) noexcept {
  text = Trim(text);
  if (text.empty()) return ValueType::Unknown;
  const ValueType type = ParseNumber(text).type;
  CalendarFields dateTime;
  return type == ValueType::String && DetectDateTime(text, dateTime) ? ValueType::DateTime : type;
}

}  // namespace Data::impl
