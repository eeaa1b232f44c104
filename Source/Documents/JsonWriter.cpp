#include "Documents/JsonWriter.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "Documents/JsonReader.h"
#include "Documents/JsonText.h"

namespace Data::impl {

namespace {

/// The letter of a two-character escape; 'u' for control characters without one.
constexpr char EscapeLetter(char byte) {
  switch (byte) {
    case '"':
    case '\\':
      return byte;
    case '\b':
      return 'b';
    case '\t':
      return 't';
    case '\n':
      return 'n';
    case '\f':
      return 'f';
    case '\r':
      return 'r';
    default:
      return 'u';
  }
}

void AppendEscape(TextBuffer& buffer, char byte) {
  constexpr char kHexDigits[] = "0123456789ABCDEF";
  const char letter = EscapeLetter(byte);
  const char escape[] = {
      '\\', letter, '0', '0', kHexDigits[byte >> 4 & 0xF], kHexDigits[byte & 0xF]};
  buffer.Append({escape, letter == 'u' ? sizeof escape : 2});
}

/// Writes a number of at most six decimals and 15 digits, as most measured values are. Different
/// numbers of at most 15 digits are different doubles, so this text is the shortest.
/// @return the end of the text; null for any other number
char* WriteShortDecimal(char* to, double magnitude) {
  constexpr int kDecimals = 6;
  constexpr double kScale = 1e6, kLimit = 1e15;
  constexpr double kRounder = 0x1p52;  // adding and subtracting it rounds to an integer
  if (!(magnitude < kLimit / kScale)) return nullptr;
  const double whole = magnitude * kScale + kRounder - kRounder;
  if (whole / kScale != magnitude) return nullptr;

  const auto scaled = static_cast<std::uint64_t>(whole);
  constexpr auto kUnit = static_cast<std::uint64_t>(kScale);
  char* const point = std::to_chars(to, to + 16, scaled / kUnit).ptr;
  // The leading 1 keeps the zeros after it; the point then overwrites it.
  char* end = std::to_chars(point, point + 1 + kDecimals, kUnit + scaled % kUnit).ptr;
  *point = '.';
  while (end[-1] == '0' && end - point > 2) --end;
  return end;
}

/// Writes any number, in rapidjson's notation.
char* WriteShortest(char* to, double magnitude) {
  char scientific[32];  // d.ddde+dd
  char* const end =
      std::to_chars(scientific, std::end(scientific), magnitude, std::chars_format::scientific).ptr;
  char* const exponentAt = std::find(scientific, end, 'e');
  const char* const digitsEnd = std::remove_copy(scientific, exponentAt, to, '.');
  int exponent = 0;  // of the first digit
  std::from_chars(exponentAt + (exponentAt[1] == '+' ? 2 : 1), end, exponent);
  const int digits = static_cast<int>(digitsEnd - to);
  return rapidjson::internal::Prettify(to, digits, exponent - digits + 1,
                                       JsonWriter::kDefaultMaxDecimalPlaces);
}

}  // namespace

void AppendJsonString(TextBuffer& buffer, std::string_view text) {
  buffer.Reserve(text.size() + 2);
  buffer.PutUnsafe('"');
  const char* run = text.data();
  const char* const end = run + text.size();
  for (;;) {
    const char* const runEnd = EndOfPlainRun(run, end);
    buffer.Append({run, static_cast<std::size_t>(runEnd - run)});
    if (runEnd == end) break;
    AppendEscape(buffer, *runEnd);
    run = runEnd + 1;
  }
  buffer.Put('"');
}

void AppendJsonInteger(TextBuffer& buffer, std::int64_t value) {
  constexpr std::size_t kMaxLength = 20;
  char* const begin = buffer.Tail(kMaxLength);
  buffer.EndAt(std::to_chars(begin, begin + kMaxLength, value).ptr);
}

bool AppendJsonDouble(TextBuffer& buffer, double value) {
  if (!std::isfinite(value)) return false;
  constexpr std::size_t kMaxLength = 32;
  char* begin = buffer.Tail(kMaxLength);
  if (std::signbit(value)) *begin++ = '-';
  char* const end = WriteShortDecimal(begin, std::fabs(value));
  buffer.EndAt(end ? end : WriteShortest(begin, std::fabs(value)));
  return true;
}

void AppendCompactJson(TextBuffer& buffer, std::string_view text) {
  buffer.Reserve(text.size());
  JsonWriter writer(buffer);
  if (ParseJson(text, writer)) return;
  buffer.Clear();
  buffer.Append("null");
}

}  // namespace Data::impl
