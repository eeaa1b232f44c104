#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace Data::impl {

/// The characters of an encoding and the tables derived from them.
///
/// The vector code classifies and translates characters by table lookups on their
/// nibbles, the method of Mula and Lemire, "Faster Base64 Encoding and Decoding
/// Using AVX2 Instructions".
struct Base64Alphabet {
  static constexpr std::uint8_t kInvalid = 0xFF;

  std::string_view characters;  ///< by value, 0 to 63
  bool isPadded;
  /// By character: its value, or `kInvalid`.
  std::array<std::uint8_t, 256> values;

  /// By nibble: a character is invalid if the masks of its two nibbles share a bit.
  std::array<std::uint8_t, 16> lowNibbleMasks, highNibbleMasks;
  /// By high nibble: value minus character. The last character may share its high
  /// nibble with others, so `lastNibbleShift` moves it to an entry of its own.
  std::array<std::int8_t, 16> offsetByHighNibble;
  std::int8_t lastNibbleShift;
};

consteval Base64Alphabet MakeBase64Alphabet(std::string_view characters, bool isPadded) {
  Base64Alphabet alphabet{characters, isPadded, {}, {}, {}, {}, 0};
  alphabet.values.fill(Base64Alphabet::kInvalid);
  for (unsigned value = 0; value < 64; ++value)
    alphabet.values[static_cast<unsigned char>(characters[value])] =
        static_cast<std::uint8_t>(value);

  // One bit for each high nibble of ASCII. The other high nibbles share the bit of
  // the control characters, which are invalid with every low nibble.
  for (unsigned c = 0; c < 128; ++c)
    if (alphabet.values[c] == Base64Alphabet::kInvalid)
      alphabet.lowNibbleMasks[c & 0xF] |= static_cast<std::uint8_t>(1u << (c >> 4));
  for (unsigned high = 0; high < 16; ++high)
    alphabet.highNibbleMasks[high] = static_cast<std::uint8_t>(high < 8 ? 1u << high : 1u);

  // All characters of one high nibble have the same offset, except the last one.
  for (int value = 0; value < 63; ++value) {
    const int c = static_cast<unsigned char>(characters[static_cast<unsigned>(value)]);
    alphabet.offsetByHighNibble[static_cast<unsigned>(c >> 4)] =
        static_cast<std::int8_t>(value - c);
  }
  constexpr int kFreeNibble = 1;  // of control characters only
  const int last = static_cast<unsigned char>(characters[63]);
  alphabet.offsetByHighNibble[kFreeNibble] = static_cast<std::int8_t>(63 - last);
  alphabet.lastNibbleShift = static_cast<std::int8_t>(kFreeNibble - (last >> 4));
  return alphabet;
}

inline constexpr Base64Alphabet kBase64 =
    MakeBase64Alphabet("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/", true);
inline constexpr Base64Alphabet kBase64Url =
    MakeBase64Alphabet("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_", false);

}  // namespace Data::impl
