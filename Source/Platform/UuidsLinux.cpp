#include <array>
#include <cstdint>
#include <cstring>

#include "Platform/RandomBytes.h"
#include "Platform/Uuids.h"

namespace Data::Platform {

namespace {

using Structures::_UUID;

/// The 16 bytes in the order in which they are printed.
using Octets = std::array<std::uint8_t, 16>;

Octets ToOctets(const _UUID& uuid) {
  Octets octets;
  for (unsigned i = 0; i < 4; ++i)
    octets[i] = static_cast<std::uint8_t>(uuid.data1 >> (24 - 8 * i));
  for (unsigned i = 0; i < 2; ++i) {
    octets[4 + i] = static_cast<std::uint8_t>(uuid.data2 >> (8 - 8 * i));
    octets[6 + i] = static_cast<std::uint8_t>(uuid.data3 >> (8 - 8 * i));
  }
  std::memcpy(&octets[8], uuid.data4, sizeof uuid.data4);
  return octets;
}

_UUID FromOctets(const Octets& octets) {
  _UUID uuid{};
  for (unsigned i = 0; i < 4; ++i) uuid.data1 = uuid.data1 << 8 | octets[i];
  uuid.data2 = static_cast<std::uint16_t>(octets[4] << 8 | octets[5]);
  uuid.data3 = static_cast<std::uint16_t>(octets[6] << 8 | octets[7]);
  std::memcpy(uuid.data4, &octets[8], sizeof uuid.data4);
  return uuid;
}

constexpr bool IsDash(std::size_t position) {
  return position == 8 || position == 13 || position == 18 || position == 23;
}

/// The value of a hexadecimal digit; -1 for any other character.
int DigitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const char lower = static_cast<char>(c | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

}  // namespace

void NewUuid(_UUID& uuid) {
  FillWithRandomBytes(&uuid, sizeof uuid);
  // Version 4, variant of RFC 4122; the other 122 bits stay random.
  uuid.data3 = static_cast<std::uint16_t>((uuid.data3 & 0x0FFF) | 0x4000);
  uuid.data4[0] = static_cast<std::uint8_t>((uuid.data4[0] & 0x3F) | 0x80);
}

bool UuidToText(const _UUID& uuid, char16_t* text) {
  constexpr char16_t kDigits[] = u"0123456789abcdef";
  std::size_t position = 0;
  for (const unsigned octet : ToOctets(uuid)) {
    if (IsDash(position)) text[position++] = u'-';
    text[position++] = kDigits[octet >> 4];
    text[position++] = kDigits[octet & 0xF];
  }
  return true;
}

bool UuidFromText(const char* text, _UUID& uuid) {
  Octets octets{};
  std::size_t digits = 0;
  // A shorter text fails at its terminator, which is neither a dash nor a digit.
  for (std::size_t position = 0; position < kUuidTextLength; ++position) {
    const char c = text[position];
    if (IsDash(position)) {
      if (c != '-') return false;
      continue;
    }
    const int value = DigitValue(c);
    if (value < 0) return false;
    auto& octet = octets[digits++ / 2];
    octet = static_cast<std::uint8_t>(octet << 4 | value);
  }
  if (text[kUuidTextLength] != '\0') return false;
  uuid = FromOctets(octets);
  return true;
}

}  // namespace Data::Platform
