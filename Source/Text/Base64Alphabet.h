#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace Data::impl {

/// The characters of an encoding, and what follows from them.
struct Base64Alphabet {
  static constexpr std::uint8_t kForeign = 0xFF;

  std::string_view characters;  ///< by value, 0 to 63
  bool isPadded;
  /// By character: its value, or `kForeign`.
  std::array<std::uint8_t, 256> values;

  // For vector code, by the high and low half of a character (and by 16 at a time):
  // a character is foreign if the bits of its two halves meet.
  std::array<std::uint8_t, 16> foreignLow, foreignHigh;
  /// What turns a character into its value, by its high half; `lastShift` moves
  /// the last character, which may share its high half with others, to a place
  /// of its own.
  std::array<std::int8_t, 16> valueOffsets;
  std::int8_t lastShift;
};

constexpr Base64Alphabet MakeBase64Alphabet(std::string_view characters, bool isPadded) {
  Base64Alphabet alphabet{characters, isPadded, {}, {}, {}, {}, 0};
  alphabet.values.fill(Base64Alphabet::kForeign);
  for (unsigned value = 0; value < 64; ++value)
    alphabet.values[static_cast<unsigned char>(characters[value])] =
        static_cast<std::uint8_t>(value);

  // A bit for each high half of ASCII. The others take the bit of the control
  // characters, which are foreign with every low half.
  for (unsigned c = 0; c < 128; ++c)
    if (alphabet.values[c] == Base64Alphabet::kForeign)
      alphabet.foreignLow[c & 0xF] |= static_cast<std::uint8_t>(1u << (c >> 4));
  for (unsigned high = 0; high < 16; ++high)
    alphabet.foreignHigh[high] = static_cast<std::uint8_t>(high < 8 ? 1u << high : 1u);

  // Letters and digits first, then the two others: either the last character or
  // the one before it shares its high half with none of these.
  for (int value = 0; value < 63; ++value) {
    const int c = static_cast<unsigned char>(characters[static_cast<unsigned>(value)]);
    alphabet.valueOffsets[static_cast<unsigned>(c >> 4)] = static_cast<std::int8_t>(value - c);
  }
  constexpr int kFreePlace = 1;  // of control characters
  const int last = static_cast<unsigned char>(characters[63]);
  alphabet.valueOffsets[kFreePlace] = static_cast<std::int8_t>(63 - last);
  alphabet.lastShift = static_cast<std::int8_t>(kFreePlace - (last >> 4));
  return alphabet;
}

inline constexpr Base64Alphabet kBase64 =
    MakeBase64Alphabet("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/", true);
inline constexpr Base64Alphabet kBase64Url =
    MakeBase64Alphabet("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_", false);

}  // namespace Data::impl
