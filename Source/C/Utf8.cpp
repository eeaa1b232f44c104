#include "C/Utf8.h"

#include <cstdint>
#include <cstring>

namespace Data::c {

namespace {

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

struct Piece {
  Byte end;
  bool isCharacter;  ///< otherwise the longest beginning of one, or a byte that begins none
};

/// What begins at a byte that is not ASCII.
Piece NextPiece(Byte at, Byte end) {
  const unsigned lead = *at++;
  if (lead < 0xC2 || lead > 0xF4) return {at, false};
  // The second byte excludes long forms, surrogates and characters beyond U+10FFFF.
  unsigned least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  unsigned most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  for (int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1; more != 0; --more) {
    if (at == end || *at < least || *at > most) return {at, false};
    ++at;
    least = 0x80;
    most = 0xBF;
  }
  return {at, true};
}

}  // namespace

bool IsUtf8(std::string_view text) {
  Byte at = reinterpret_cast<Byte>(text.data());
  const Byte end = at + text.size();
  while ((at = SkipAscii(at, end)) != end) {
    const Piece piece = NextPiece(at, end);
    if (!piece.isCharacter) return false;
    at = piece.end;
  }
  return true;
}

std::string RepairUtf8(std::string_view text) {
  std::string repaired;
  Byte at = reinterpret_cast<Byte>(text.data()), kept = at;
  const Byte end = at + text.size();
  while ((at = SkipAscii(at, end)) != end) {
    const Piece piece = NextPiece(at, end);
    if (!piece.isCharacter) {
      repaired.append(kept, at) += "\uFFFD";
      kept = piece.end;
    }
    at = piece.end;
  }
  return repaired.append(kept, end);
}

}  // namespace Data::c
