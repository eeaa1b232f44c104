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
  char scientific[kMaxLength];  // d.ddde+dd
  char* const end = std::to_chars(scientific, scientific + kMaxLength, std::fabs(value),
                                  std::chars_format::scientific)
                        .ptr;
  char* digits = buffer.Tail(kMaxLength);
  if (std::signbit(value)) *digits++ = '-';
  char* const exponentAt = std::find(scientific, end, 'e');
  char* const digitsEnd = std::remove_copy(scientific, exponentAt, digits, '.');
  int exponent = 0;  // of the first digit
  std::from_chars(exponentAt + (exponentAt[1] == '+' ? 2 : 1), end, exponent);
  const int digitCount = static_cast<int>(digitsEnd - digits);
  buffer.EndAt(rapidjson::internal::Prettify(digits, digitCount, exponent - digitCount + 1,
                                             JsonWriter::kDefaultMaxDecimalPlaces));
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
