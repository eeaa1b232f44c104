#include <windows.h>

#include <algorithm>

#include "Platform/AsciiBlocks.h"
#include "Platform/CodePages.h"

namespace Data::Platform {

namespace {

constexpr std::uint32_t kUtf8 = CP_UTF8;

/// The system's lengths are of type int, so longer texts are converted in chunks.
constexpr std::size_t kChunkLength = std::size_t{1} << 24;

std::uint32_t ResolveAlias(std::uint32_t codePage) {
  if (codePage == CP_ACP) return GetACP();
  if (codePage == CP_OEMCP) return GetOEMCP();
  return codePage;
}

/// Whether a page is known to extend ASCII, unlike EBCDIC, UTF-7 and others.
bool ExtendsAscii(std::uint32_t page) {
  constexpr std::uint32_t ids[] = {437, 850, 852, 866, 874, 932, 936, 949, 950, 20866, kUtf8};
  return std::ranges::find(ids, page) != std::end(ids) || (page >= 1250 && page <= 1258) ||
         (page >= 28591 && page <= 28605);
}

/// Converts leading ASCII and removes it from the text.
/// @return characters converted
template <class Text, class Out>
std::size_t TakeAscii(Text& text, Out* out) {
  std::size_t length = 0;
  while (text.size() - length >= kAsciiBlock &&
         ConvertAsciiBlock(text.data() + length, out + length))
    length += kAsciiBlock;
  text.remove_prefix(length);
  return length;
}

/// 0 for a page that the system does not have.
std::size_t MaxBytesPerCharacter(std::uint32_t page) {
  CPINFO info;
  return GetCPInfo(page, &info) ? info.MaxCharSize : 0;
}

std::size_t MaxBytesPerUnit(std::uint32_t page) {
  // A page that switches character sets may need an escape sequence before and after
  // a single character.
  constexpr std::size_t kWithEscapes = 8;
  if (page == kUtf8) return 3;
  const std::size_t bytes = MaxBytesPerCharacter(page);
  return bytes <= 2 ? bytes : kWithEscapes;
}

bool IsContinuation(char byte) { return (byte & 0xC0) == 0x80; }

/// The last position up to `at` that is not inside a UTF-8 character. Four
/// continuation bytes in a row cannot belong to one character.
std::size_t CutUtf8(std::string_view bytes, std::size_t at) {
  for (std::size_t back = 0; back < 4; ++back)
    if (!IsContinuation(bytes[at - back])) return at - back;
  return at;
}

/// The last position up to `at` that is not inside a double-byte character. A byte
/// that is not a lead byte ends a character, and the lead bytes after it pair up: if
/// their number is odd, the last one belongs to the byte at the cut.
std::size_t CutDoubleBytes(std::uint32_t page, std::string_view bytes, std::size_t at) {
  std::size_t leads = 0;
  while (leads < at && IsDBCSLeadByteEx(page, static_cast<BYTE>(bytes[at - leads - 1]))) ++leads;
  return at - leads % 2;
}

/// Pages with longer characters or with shift states are in their initial state
/// after each line.
std::size_t CutAfterLine(std::string_view bytes, std::size_t at) {
  const std::size_t lineEnd = bytes.rfind('\n', at - 1);
  return lineEnd == std::string_view::npos ? at : lineEnd + 1;
}

std::size_t NextChunk(std::uint32_t page, std::string_view bytes) {
  if (bytes.size() <= kChunkLength) return bytes.size();
  if (page == kUtf8) return CutUtf8(bytes, kChunkLength);
  if (MaxBytesPerCharacter(page) <= 2) return CutDoubleBytes(page, bytes, kChunkLength);
  return CutAfterLine(bytes, kChunkLength);
}

std::size_t NextChunk(std::u16string_view text) {
  if (text.size() <= kChunkLength) return text.size();
  const bool isPair = IS_SURROGATE_PAIR(text[kChunkLength - 1], text[kChunkLength]);
  return kChunkLength - (isPair ? 1 : 0);
}

}  // namespace

std::size_t MaxByteLength(std::uint32_t codePage, std::size_t unitCount) {
  return unitCount * MaxBytesPerUnit(ResolveAlias(codePage));
}

std::size_t ToWide(std::uint32_t codePage, std::string_view bytes, char16_t* out) {
  const std::uint32_t page = ResolveAlias(codePage);
  if (!IsValidCodePage(page)) return 0;
  std::size_t length = ExtendsAscii(page) ? TakeAscii(bytes, out) : 0;
  while (!bytes.empty()) {
    const std::size_t chunk = NextChunk(page, bytes);
    const int units =
        MultiByteToWideChar(page, 0, bytes.data(), static_cast<int>(chunk),
                            reinterpret_cast<wchar_t*>(out + length), static_cast<int>(chunk));
    if (units == 0) return 0;
    length += static_cast<std::size_t>(units);
    bytes.remove_prefix(chunk);
  }
  return length;
}

std::size_t ToMultiByte(std::uint32_t codePage, std::u16string_view text, char* out) {
  const std::uint32_t page = ResolveAlias(codePage);
  const std::size_t maxBytes = MaxBytesPerUnit(page);
  if (maxBytes == 0) return 0;
  std::size_t length = ExtendsAscii(page) ? TakeAscii(text, out) : 0;
  while (!text.empty()) {
    const std::size_t chunk = NextChunk(text);
    const int bytes = WideCharToMultiByte(page, 0, reinterpret_cast<const wchar_t*>(text.data()),
                                          static_cast<int>(chunk), out + length,
                                          static_cast<int>(chunk * maxBytes), nullptr, nullptr);
    if (bytes == 0) return 0;
    length += static_cast<std::size_t>(bytes);
    text.remove_prefix(chunk);
  }
  return length;
}

}  // namespace Data::Platform
