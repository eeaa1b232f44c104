#pragma once

#include <cstdint>
#include <span>

/// The constant tables behind the code pages, made by Tools/CodePages from the
/// answers of the Windows conversion functions.
namespace Data::Platform {

/// A page in which every character is one byte.
struct SingleBytePage {
  std::uint32_t id;
  /// The UTF-16 unit of each byte, 256 in all.
  const char16_t* units;
  /// The byte of each UTF-16 unit, in two stages: the unit's high bits choose a
  /// block, its low bits a byte there. Blocks are shared between pages.
  const std::uint8_t* blocks;

  static constexpr unsigned kBlockBits = 7;
};

/// A page in which a character is one byte, or a lead and a trail byte.
struct DoubleBytePage {
  std::uint32_t id;
  /// The UTF-16 unit of each byte that is no lead byte, 256 in all.
  const char16_t* units;
  /// The row of each lead byte among the pairs, from 1; 0 for other bytes.
  const std::uint8_t* rows;
  /// The UTF-16 unit of each lead byte's row and trail byte.
  const char16_t* pairs;
  /// What a lead byte gives without its trail byte, or with an impossible one.
  char16_t broken;
  /// The code of each UTF-16 unit, in two stages as for single bytes; a code
  /// above 0xFF is a lead and a trail byte.
  const std::uint16_t* blocks;
  const std::uint16_t* codes;

  static constexpr unsigned kBlockBits = 6;
  static constexpr unsigned kFirstTrail = 0x40;
  static constexpr unsigned kTrailCount = 0xFF - kFirstTrail;
};

/// Ordered by `id`.
extern const std::span<const SingleBytePage> kSingleBytePages;
/// Where the blocks of all single-byte pages lie.
extern const std::uint8_t kSingleByteCodes[];

extern const DoubleBytePage kPage932;
extern const DoubleBytePage kPage936;
extern const DoubleBytePage kPage949;
extern const DoubleBytePage kPage950;

}  // namespace Data::Platform
