#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "Text/Base64Alphabet.h"

/// The vector code of Base64: it takes what it can off the front of its input,
/// which is nothing on a processor without it.
namespace Data::impl {

/// @param out  room for the whole encoded input
/// @return bytes encoded, a multiple of 3
std::size_t EncodeBase64Blocks(const Base64Alphabet& alphabet, std::span<const std::uint8_t> bytes,
                               char* out);

/// Stops before a block with a foreign character.
/// @param out  room for the whole decoded input
/// @return characters decoded, a multiple of 4
std::size_t DecodeBase64Blocks(const Base64Alphabet& alphabet, std::string_view text,
                               std::uint8_t* out);

}  // namespace Data::impl
