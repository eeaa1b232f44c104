#include "Tables/TextChanges.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <utility>

#include "Text/Characters.h"

namespace Data::impl {

using Core::ValueType;
using Structures::_VARIANT;

void ChangedTexts::Note(std::string_view text, std::uint64_t line) {
  if (count++ != 0) return;
  firstLine = line;
  firstText = text;
}

void ChangedTexts::Append(ChangedTexts&& later, std::uint64_t linesBefore) {
  if (count == 0 && later.count != 0) {
    firstLine = linesBefore + later.firstLine;
    firstText = std::move(later.firstText);
  }
  count += later.count;
}

namespace {

std::string_view WithoutSign(std::string_view number) {
  return number.substr(number.starts_with('-') ? 1 : 0);
}

bool HasLeadingZeros(std::string_view number) {
  const std::string_view digits = WithoutSign(number);
  return digits.size() > 1 && digits[0] == '0' && IsDigit(digits[1]);
}

/// Whether a text is the value in one of the forms in which it can be written exactly.
template <class Value, class... Format>
bool IsWrittenAs(std::string_view text, Value value, Format... format) {
  char written[400];
  const auto end = std::to_chars(written, written + sizeof written, value, format...).ptr;
  return text == std::string_view(written, static_cast<std::size_t>(end - written));
}

/// Up to 15 digits with a dot between them identify a double, so that they need not be written to
/// know that they come back, unless the last one is a zero.
bool IsPlainReal(std::string_view text) {
  constexpr std::size_t kAlwaysExact = 15;
  const std::string_view digits = WithoutSign(text);
  const std::size_t dot = digits.find('.');
  return digits.size() <= kAlwaysExact + 1 && dot != 0 && dot < digits.size() - 1 &&
         digits.back() != '0' && digits.find_first_not_of("0123456789.") == std::string_view::npos;
}

bool IsWritten(std::string_view text, double value) {
  if (IsPlainReal(text) || IsWrittenAs(text, value)) return true;
  // A whole number keeps its fraction, so that it stays a double.
  if (text.ends_with(".0")) text.remove_suffix(2);
  return IsWrittenAs(text, value, std::chars_format::fixed);
}

/// @param shape  "0" stands for any digit
bool HasShape(std::string_view text, std::string_view shape) {
  const auto fits = [](char c, char wanted) { return wanted == '0' ? IsDigit(c) : c == wanted; };
  return std::ranges::equal(text, shape, fits);
}

/// @param fraction  what follows the seconds: a dot and digits, or nothing
bool IsFractionOf(std::string_view fraction, std::uint16_t milliseconds) {
  if (fraction.empty()) return milliseconds == 0;
  std::uint32_t read = 0, unit = 100;
  for (const char c : fraction.substr(1)) {
    if (!IsDigit(c) || (unit == 0 && c != '0')) return false;
    read += static_cast<std::uint32_t>(c - '0') * unit;
    unit /= 10;
  }
  return fraction[0] == '.' && read == milliseconds;
}

}  // namespace

std::optional<TextChange> ChangeOfNumber(std::string_view text, const _VARIANT& number) {
  if (HasLeadingZeros(text)) return TextChange::LeadingZeros;
  const std::uint64_t word = number.value[0];
  const bool isWritten = Core::TypeOf(number) == ValueType::Int64
                             ? text != "-0"
                             : IsWritten(text, std::bit_cast<double>(word));
  return isWritten ? std::nullopt : std::optional(TextChange::NumberForm);
}

std::optional<TextChange> ChangeOfDateTime(std::string_view text, const CalendarFields& fields) {
  constexpr std::string_view kDate = "0000-00-00", kTime = "00:00:00";
  if (HasShape(text, kDate)) return TextChange::DateWithoutTime;
  if (text.ends_with('Z')) text.remove_suffix(1);
  constexpr std::size_t kFraction = kDate.size() + 1 + kTime.size();
  const bool isWritten = text.size() >= kFraction &&
                         HasShape(text.substr(0, kDate.size()), kDate) &&
                         (text[kDate.size()] == 'T' || text[kDate.size()] == ' ') &&
                         HasShape(text.substr(kDate.size() + 1, kTime.size()), kTime) &&
                         IsFractionOf(text.substr(kFraction), fields.millisecond);
  return isWritten ? std::nullopt : std::optional(TextChange::DateForm);
}

}  // namespace Data::impl
