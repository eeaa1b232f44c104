#include "Documents/JsonWriter.h"

#include <algorithm>
#include <bit>
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

/// Appends a text that begins with a byte that must be escaped.
void AppendEscaped(TextBuffer& buffer, std::string_view text) {
  const char* escaped = text.data();
  const char* const end = escaped + text.size();
  while (escaped != end) {
    AppendEscape(buffer, *escaped);
    const char* const run = escaped + 1;
    escaped = EndOfPlainRun(run, end);
    buffer.Append({run, static_cast<std::size_t>(escaped - run)});
  }
}

/// Writes a number of at most nine decimals and 15 digits, as most measured values are. Different
/// numbers of at most 15 digits are different doubles, so this text is the shortest.
/// @return the end of the text; null for any other number, and for one that has an exponent
char* PutShortDecimal(char* to, double magnitude) {
  constexpr double kRounder = 0x1p52;  // adding and subtracting it rounds to an integer
  constexpr std::uint64_t kUnit = 1'000'000'000, kLeast = 1'000;  // billionths
  const bool isLarge = magnitude >= 1e6;
  const double scale = isLarge ? 1e6 : 1e9;
  if (!(magnitude < 1e9)) return nullptr;
  const double rounded = magnitude * scale + kRounder - kRounder;
  if (rounded / scale != magnitude) return nullptr;

  const std::uint64_t billionths = static_cast<std::uint64_t>(rounded) * (isLarge ? 1'000 : 1);
  if (billionths < kLeast && billionths != 0) return nullptr;
  char* const point = PutInteger(to, billionths / kUnit);
  const auto fraction = static_cast<std::uint32_t>(billionths % kUnit);
  const std::uint64_t digits = EightDigits(fraction % 100'000'000);  // after the first
  point[0] = '.';
  point[1] = static_cast<char>('0' + fraction / 100'000'000);
  return PutEightDigits(point + 2, digits) - std::countl_zero(digits) / 8;
}

/// Writes any number, in rapidjson's notation.
char* PutShortest(char* to, double magnitude) {
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
  Structures::_VARIANT room;
  AppendJsonString(buffer, PaddedText(text, room));
}

void AppendJsonString(TextBuffer& buffer, const PaddedText& text) {
  const auto special = [](const Platform::ByteBlock& block) {
    return block.Equal('"') | block.Equal('\\') | block.AtMost(0x1F);
  };
  char* const begin = buffer.Tail(1 + text.Size() + Platform::ByteBlock::kSize);
  *begin = '"';
  const std::size_t plain = text.CopyPlain(begin + 1, special);
  buffer.EndAt(begin + 1 + plain);
  if (plain != text.Size()) AppendEscaped(buffer, text.View().substr(plain));
  buffer.Put('"');
}

bool AppendJsonDouble(TextBuffer& buffer, double value) {
  if (!std::isfinite(value)) return false;
  constexpr std::size_t kMostBytes = 32;
  char* const begin = PutSign(buffer.Tail(kMostBytes), std::signbit(value));
  char* const end = PutShortDecimal(begin, std::fabs(value));
  buffer.EndAt(end ? end : PutShortest(begin, std::fabs(value)));
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
