#include "C/Utf8.h"

#include <cstdint>
#include <cstring>

#include "Platform/CodePages.h"

namespace Data::c {

namespace {

constexpr std::uint32_t kUtf8CodePage = 65001;

using Byte = const unsigned char*;

/// The first byte from `at` on that is not ASCII.
Byte SkipAscii(Byte at, Byte end) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  for (std::uint64_t word = 0; end - at >= 8; at += 8) {
    std::memcpy(&word, at, sizeof word);
    if (word & kHighBits) break;
  }
  while (at != end && *at < 0x80) ++at;
  return at;
}

/// The end of the character of several bytes that begins at `at`; null if it is not well-formed.
Byte CharacterEnd(Byte at, Byte end) {
  const unsigned lead = *at;
  const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  if (lead < 0xC2 || lead > 0xF4 || end - at <= more) return nullptr;
  // The second byte excludes long forms, surrogates and characters beyond U+10FFFF.
  const unsigned least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (at[1] < least || at[1] > most) return nullptr;
  for (int i = 2; i <= more; ++i)
    if ((at[i] & 0xC0) != 0x80) return nullptr;
  return at + more + 1;
}

}  // namespace

bool IsUtf8(std::string_view text) {
  Byte at = reinterpret_cast<Byte>(text.data());
  const Byte end = at + text.size();
  while ((at = SkipAscii(at, end)) != end)
    if (!(at = CharacterEnd(at, end))) return false;
  return true;
}

std::string RepairUtf8(std::string_view text) {
  std::u16string wide(Platform::MaxWideLength(text.size()), u'\0');
  wide.resize(Platform::ToWide(kUtf8CodePage, text, wide.data()));
  std::string repaired(Platform::MaxByteLength(kUtf8CodePage, wide.size()), '\0');
  repaired.resize(Platform::ToMultiByte(kUtf8CodePage, wide, repaired.data()));
  return repaired;
}

}  // namespace Data::c
