#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "Text/Base64Alphabet.h"

/// The vector code of Base64. It converts whole blocks from the front of its input
/// and leaves the rest to the caller: all of it on a processor without AVX2.
namespace Data::impl {

/// @param out  room for all of the encoded input
/// @return bytes encoded, a multiple of 3
std::size_t EncodeBase64Blocks(const Base64Alphabet& alphabet, std::span<const std::uint8_t> bytes,
                               char* out);

/// Stops before a block with an invalid character.
/// @param out  room for all of the decoded input
/// @return characters decoded, a multiple of 4
std::size_t DecodeBase64Blocks(const Base64Alphabet& alphabet, std::string_view text,
                               std::uint8_t* out);

}  // namespace Data::impl
