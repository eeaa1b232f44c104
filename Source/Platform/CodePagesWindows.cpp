#include <windows.h>

#include <algorithm>

#include "Platform/AsciiBlocks.h"
#include "Platform/CodePages.h"

namespace Data::Platform {

namespace {

constexpr std::uint32_t kUtf8 = CP_UTF8;

/// The system counts in 32 bits, so that a longer text goes to it in pieces.
constexpr std::size_t kPieceLength = std::size_t{1} << 24;

std::uint32_t ResolveAlias(std::uint32_t codePage) {
  if (codePage == CP_ACP) return GetACP();
  if (codePage == CP_OEMCP) return GetOEMCP();
  return codePage;
}

/// Whether ASCII is known to be itself in a page, as it is in the common ones
/// and is not in EBCDIC, UTF-7 and their like.
bool ExtendsAscii(std::uint32_t page) {
  constexpr std::uint32_t ids[] = {437, 850, 852, 866, 874, 932, 936, 949, 950, 20866, kUtf8};
  return std::ranges::find(ids, page) != std::end(ids) || (page >= 1250 && page <= 1258) ||
         (page >= 28591 && page <= 28605);
}

/// Converts the ASCII that the text starts with and takes it off the text.
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
std::size_t MostBytesPerCharacter(std::uint32_t page) {
  CPINFO info;
  return GetCPInfo(page, &info) ? info.MaxCharSize : 0;
}

std::size_t MostBytesPerUnit(std::uint32_t page) {
  // A page that switches between character sets may need an escape sequence
  // there and one back around a single character.
  constexpr std::size_t kWithEscapes = 8;
  if (page == kUtf8) return 3;
  const std::size_t most = MostBytesPerCharacter(page);
  return most <= 2 ? most : kWithEscapes;
}

bool IsFollowingByte(char byte) { return (byte & 0xC0) == 0x80; }

/// A place that no UTF-8 character lies across. Four following bytes in a row
/// belong to no character together.
std::size_t CutUtf8(std::string_view bytes, std::size_t at) {
  for (std::size_t back = 0; back < 4; ++back)
    if (!IsFollowingByte(bytes[at - back])) return at - back;
  return at;
}

/// A byte that is no lead byte always ends a character, and lead bytes after it
/// pair up, so that an odd one out takes the byte behind the cut with it.
std::size_t CutDoubleBytes(std::uint32_t page, std::string_view bytes, std::size_t at) {
  std::size_t leads = 0;
  while (leads < at && IsDBCSLeadByteEx(page, static_cast<BYTE>(bytes[at - leads - 1]))) ++leads;
  return at - leads % 2;
}

/// Pages with longer characters or with shifts are back in their first state
/// at the end of a line.
std::size_t CutAfterLine(std::string_view bytes, std::size_t at) {
  const std::size_t lineEnd = bytes.rfind('\n', at - 1);
  return lineEnd == std::string_view::npos ? at : lineEnd + 1;
}

std::size_t NextPiece(std::uint32_t page, std::string_view bytes) {
  if (bytes.size() <= kPieceLength) return bytes.size();
  if (page == kUtf8) return CutUtf8(bytes, kPieceLength);
  if (MostBytesPerCharacter(page) <= 2) return CutDoubleBytes(page, bytes, kPieceLength);
  return CutAfterLine(bytes, kPieceLength);
}

std::size_t NextPiece(std::u16string_view text) {
  if (text.size() <= kPieceLength) return text.size();
  const bool isPair = IS_SURROGATE_PAIR(text[kPieceLength - 1], text[kPieceLength]);
  return kPieceLength - (isPair ? 1 : 0);
}

}  // namespace

std::size_t MaxByteLength(std::uint32_t codePage, std::size_t unitCount) {
  return unitCount * MostBytesPerUnit(ResolveAlias(codePage));
}

std::size_t ToWide(std::uint32_t codePage, std::string_view bytes, char16_t* out) {
  const std::uint32_t page = ResolveAlias(codePage);
  if (!IsValidCodePage(page)) return 0;
  std::size_t length = ExtendsAscii(page) ? TakeAscii(bytes, out) : 0;
  while (!bytes.empty()) {
    const std::size_t piece = NextPiece(page, bytes);
    const int units =
        MultiByteToWideChar(page, 0, bytes.data(), static_cast<int>(piece),
                            reinterpret_cast<wchar_t*>(out + length), static_cast<int>(piece));
    if (units == 0) return 0;
    length += static_cast<std::size_t>(units);
    bytes.remove_prefix(piece);
  }
  return length;
}

std::size_t ToMultiByte(std::uint32_t codePage, std::u16string_view text, char* out) {
  const std::uint32_t page = ResolveAlias(codePage);
  const std::size_t most = MostBytesPerUnit(page);
  if (most == 0) return 0;
  std::size_t length = ExtendsAscii(page) ? TakeAscii(text, out) : 0;
  while (!text.empty()) {
    const std::size_t piece = NextPiece(text);
    const int bytes = WideCharToMultiByte(page, 0, reinterpret_cast<const wchar_t*>(text.data()),
                                          static_cast<int>(piece), out + length,
                                          static_cast<int>(piece * most), nullptr, nullptr);
    if (bytes == 0) return 0;
    length += static_cast<std::size_t>(bytes);
    text.remove_prefix(piece);
  }
  return length;
}

}  // namespace Data::Platform
