#include "Encodings.h"

#include <LayerData/Text.h>

#include <algorithm>
#include <charconv>

#include "Commands.h"
#include "Console.h"

namespace program {

namespace {

/// Lower-case letters and digits.
std::string Simplified(std::string_view name) {
  std::string simple;
  for (const char c : name) {
    if (c >= 'A' && c <= 'Z') simple += static_cast<char>(c - 'A' + 'a');
    if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) simple += c;
  }
  return simple;
}

constexpr struct {
  std::string_view name;
  std::uint32_t codePage;
} kEncodings[] = {
    {"auto", 0},
    {"utf8", kUtf8},
    {"utf16", kUtf16},
    {"utf16le", kUtf16},
    {"utf16be", kUtf16BigEndian},
    {"latin1", 28591},
    {"latin2", 28592},
    {"latin9", 28605},
    {"shiftjis", 932},
    {"gbk", 936},
    {"euckr", 949},
    {"big5", 950},
    {"koi8r", 20866},
    {"tis620", 874},
};

std::uint32_t NumberIn(std::string_view text) {
  std::uint32_t number = 0;
  const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
  return problem == std::errc() && end == text.data() + text.size() ? number : 0;
}

/// Whether this code page is one that the library knows.
bool IsKnown(std::uint32_t codePage) {
  return codePage > 1 && (codePage == kUtf16 || codePage == kUtf16BigEndian ||
                          !layerdata::Text::FromCodePage("a", codePage).IsEmpty());
}

/// The number behind one of the prefixes that code pages are written with.
std::uint32_t NumberedCodePage(std::string_view name) {
  if (name.starts_with("iso8859")) {
    const std::uint32_t part = NumberIn(name.substr(7));
    return part >= 1 && part <= 15 ? 28590 + part : 0;
  }
  for (const std::string_view prefix : {"windows", "cp", "ibm", "ms"})
    if (name.starts_with(prefix)) return NumberIn(name.substr(prefix.size()));
  return NumberIn(name);
}

std::string Utf16Bytes(std::u16string_view text, bool isBigEndian) {
  std::string bytes;
  bytes.reserve(2 * text.size());
  for (const char16_t unit : text) {
    const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
    bytes += isBigEndian ? high : low;
    bytes += isBigEndian ? low : high;
  }
  return bytes;
}

}  // namespace

std::uint32_t CodePageOf(const std::string& name) {
  const std::string simple = Simplified(name);
  for (const auto& [known, codePage] : kEncodings)
    if (simple == known) return codePage;
  if (const std::uint32_t codePage = NumberedCodePage(simple); IsKnown(codePage)) return codePage;
  throw UsageError("There is no encoding \"" + name +
                   "\". Known are utf-8, utf-16le, utf-16be, latin1, iso-8859-1 to 15, "
                   "windows-1250 to 1258, cp437, cp850, cp852, cp866, koi8-r, shift-jis, gbk, "
                   "euc-kr, big5.");
}

std::string Encode(std::string_view utf8, std::uint32_t codePage, const std::string& what) {
  const layerdata::Text text(utf8);
  if (codePage == kUtf16 || codePage == kUtf16BigEndian)
    return Utf16Bytes(u'\uFEFF' + text.ToUtf16(), codePage == kUtf16BigEndian);
  std::string bytes = text.ToCodePage(codePage);
  if (layerdata::Text::FromCodePage(bytes, codePage) != text)
    Warn(what + ": some characters are not in code page " + std::to_string(codePage) +
         " and were replaced");
  return bytes;
}

std::string SeparatorOf(const std::string& text) {
  constexpr struct {
    const char *name, *separator;
  } kNames[] = {{"tab", "\t"}, {"comma", ","}, {"semicolon", ";"}, {"pipe", "|"}, {"space", " "}};
  for (const auto& [name, separator] : kNames)
    if (text == name) return separator;
  std::string separator;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isEscape = text[i] == '\\' && i + 1 < text.size();
    if (isEscape && text[i + 1] == 't') {
      separator += '\t', ++i;
    } else if (isEscape && text[i + 1] == '\\') {
      separator += '\\', ++i;
    } else {
      separator += text[i];
    }
  }
  if (separator.find_first_of("\"\r\n") != std::string::npos)
    throw UsageError("A separator cannot contain quotes or line breaks");
  return separator;
}

}  // namespace program
