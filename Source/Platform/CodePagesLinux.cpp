#include <algorithm>

#include "Platform/AsciiBlocks.h"
#include "Platform/CodePages.h"
#include "Platform/CodePages/CodePageTables.h"

namespace Data::Platform {

namespace {

constexpr std::uint32_t kUtf8 = 65001;
constexpr char16_t kReplacement = 0xFFFD;

std::uint32_t ResolveAlias(std::uint32_t codePage) {
  if (codePage == 0) return 1252;
  if (codePage == 1) return 437;
  return codePage;
}

const SingleBytePage* FindSingleBytePage(std::uint32_t id) {
  const auto page = std::ranges::lower_bound(kSingleBytePages, id, {}, &SingleBytePage::id);
  return page != kSingleBytePages.end() && page->id == id ? &*page : nullptr;
}

const DoubleBytePage* FindDoubleBytePage(std::uint32_t id) {
  for (const auto* page : {&kPage932, &kPage936, &kPage949, &kPage950})
    if (page->id == id) return page;
  return nullptr;
}

/// Converts a text: ASCII in blocks, other text by `step`, which reads one character from its first
/// argument and writes it to its third. A block that is not all ASCII goes through `step` as a
/// whole, so mixed text does not switch paths at every word.
template <class In, class Out, class Step>
std::size_t Convert(std::basic_string_view<In> text, Out* const out, Step step) {
  const In* in = text.data();
  const In* const end = in + text.size();
  Out* to = out;
  while (in != end) {
    const auto left = static_cast<std::size_t>(end - in);
    if (left >= kAsciiBlock && ConvertAsciiBlock(in, to)) {
      in += kAsciiBlock;
      to += kAsciiBlock;
      continue;
    }
    const In* const blockEnd = in + std::min(left, kAsciiBlock);
    while (in < blockEnd) step(in, end, to);
  }
  return static_cast<std::size_t>(to - out);
}

unsigned Byte(char c) { return static_cast<unsigned char>(c); }

/// Reads one character; a maximal ill-formed subpart becomes one replacement
/// character.
void StepFromUtf8(const char*& in, const char* end, char16_t*& to) {
  const unsigned lead = Byte(*in++);
  if (lead < 0x80) {
    *to++ = static_cast<char16_t>(lead);
    return;
  }
  const bool isLead = lead >= 0xC2 && lead <= 0xF4;
  const int continuations = !isLead ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  // The range of the second byte excludes overlong forms, surrogates and values above
  // U+10FFFF.
  unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  unsigned character = isLead ? lead & (0x3Fu >> continuations) : kReplacement;
  for (int i = 0; i < continuations; ++i) {
    if (in == end || Byte(*in) < lowest || Byte(*in) > highest) {
      character = kReplacement;
      break;
    }
    character = character << 6 | (Byte(*in++) & 0x3F);
    lowest = 0x80;
    highest = 0xBF;
  }
  if (character > 0xFFFF) {
    *to++ = static_cast<char16_t>(0xD7C0 + (character >> 10));
    character = 0xDC00 | (character & 0x3FF);
  }
  *to++ = static_cast<char16_t>(character);
}

bool IsHighSurrogate(unsigned unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(unsigned unit) { return (unit & 0xFC00) == 0xDC00; }

/// Writes one continuation byte for each shift: the lowest six bits after it.
template <class... Shifts>
void PutContinuations(char*& to, unsigned character, Shifts... shifts) {
  ((*to++ = static_cast<char>(0x80 | (character >> shifts & 0x3F))), ...);
}

void StepToUtf8(const char16_t*& in, const char16_t* end, char*& to) {
  unsigned character = *in++;
  if (character < 0x80) {
    *to++ = static_cast<char>(character);
  } else if (character < 0x800) {
    *to++ = static_cast<char>(0xC0 | character >> 6);
    PutContinuations(to, character, 0);
  } else if (IsHighSurrogate(character) && in != end && IsLowSurrogate(*in)) {
    character = (character - 0xD7C0) << 10 | (*in++ & 0x3FFu);
    *to++ = static_cast<char>(0xF0 | character >> 18);
    PutContinuations(to, character, 12, 6, 0);
  } else {
    if (IsHighSurrogate(character) || IsLowSurrogate(character)) character = kReplacement;
    *to++ = static_cast<char>(0xE0 | character >> 12);
    PutContinuations(to, character, 6, 0);
  }
}

std::size_t FromSingleBytes(const SingleBytePage& page, std::string_view bytes, char16_t* out) {
  return Convert(bytes, out, [units = page.units](const char*& in, const char*, char16_t*& to) {
    *to++ = units[Byte(*in++)];
  });
}

std::size_t ToSingleBytes(const SingleBytePage& page, std::u16string_view text, char* out) {
  constexpr unsigned bits = SingleBytePage::kBlockBits;
  return Convert(text, out, [&page](const char16_t*& in, const char16_t*, char*& to) {
    const unsigned unit = *in++;
    const unsigned block = page.blocks[unit >> bits];
    *to++ = static_cast<char>(kSingleByteCodes[block << bits | (unit & ((1u << bits) - 1))]);
  });
}

/// A lead byte consumes the byte after it, valid or not, unless that is zero.
std::size_t FromDoubleBytes(const DoubleBytePage& page, std::string_view bytes, char16_t* out) {
  return Convert(bytes, out, [&page](const char*& in, const char* end, char16_t*& to) {
    const unsigned first = Byte(*in++);
    const unsigned row = page.rows[first];
    if (row == 0) {
      *to++ = page.units[first];
      return;
    }
    const unsigned trail = in != end ? Byte(*in) : 0;
    if (trail != 0) ++in;
    const unsigned column = trail - DoubleBytePage::kFirstTrail;
    const bool isTrail = column < DoubleBytePage::kTrailCount;
    *to++ = isTrail ? page.pairs[(row - 1) * DoubleBytePage::kTrailCount + column] : page.broken;
  });
}

std::size_t ToDoubleBytes(const DoubleBytePage& page, std::u16string_view text, char* out) {
  constexpr unsigned bits = DoubleBytePage::kBlockBits;
  return Convert(text, out, [&page](const char16_t*& in, const char16_t*, char*& to) {
    const unsigned unit = *in++;
    const unsigned block = page.blocks[unit >> bits];
    const unsigned code = page.codes[block << bits | (unit & ((1u << bits) - 1))];
    if (code > 0xFF) *to++ = static_cast<char>(code >> 8);
    *to++ = static_cast<char>(code);
  });
}

}  // namespace

std::size_t MaxByteLength(std::uint32_t codePage, std::size_t unitCount) {
  const std::uint32_t id = ResolveAlias(codePage);
  if (id == kUtf8) return 3 * unitCount;
  if (FindSingleBytePage(id)) return unitCount;
  return FindDoubleBytePage(id) ? 2 * unitCount : 0;
}

std::size_t ToWide(std::uint32_t codePage, std::string_view bytes, char16_t* out) {
  const std::uint32_t id = ResolveAlias(codePage);
  if (id == kUtf8) return Convert(bytes, out, StepFromUtf8);
  if (const auto* page = FindSingleBytePage(id)) return FromSingleBytes(*page, bytes, out);
  if (const auto* page = FindDoubleBytePage(id)) return FromDoubleBytes(*page, bytes, out);
  return 0;
}

std::size_t ToMultiByte(std::uint32_t codePage, std::u16string_view text, char* out) {
  const std::uint32_t id = ResolveAlias(codePage);
  if (id == kUtf8) return Convert(text, out, StepToUtf8);
  if (const auto* page = FindSingleBytePage(id)) return ToSingleBytes(*page, text, out);
  if (const auto* page = FindDoubleBytePage(id)) return ToDoubleBytes(*page, text, out);
  return 0;
}

}  // namespace Data::Platform
