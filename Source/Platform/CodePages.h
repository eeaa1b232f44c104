#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Conversion between UTF-16 and the code pages of Windows: 65001 is UTF-8, 0 and 1 are the ANSI
/// and the OEM page of the system (1252 and 437 on Linux). For the pages that Linux knows, both
/// systems give the same results, even for best-fit characters, undefined bytes and incomplete
/// characters. Conversions never fail; the result for an unknown page is empty.
///
/// The caller provides a buffer for the longest possible result; no terminator is
/// written.
namespace Data::Platform {

/// Maximum length in UTF-16 units of `byteCount` bytes in any page.
constexpr std::size_t MaxWideLength(std::size_t byteCount) { return byteCount; }

/// Maximum length in bytes of `unitCount` UTF-16 units in a page; 0 for an unknown
/// page.
std::size_t MaxByteLength(std::uint32_t codePage, std::size_t unitCount);

/// Converts to UTF-16.
/// @param out  room for `MaxWideLength` units
/// @return units written
std::size_t ToWide(std::uint32_t codePage, std::string_view bytes, char16_t* out);

/// Converts from UTF-16.
/// @param out  room for `MaxByteLength` bytes
/// @return bytes written
std::size_t ToMultiByte(std::uint32_t codePage, std::u16string_view text, char* out);

}  // namespace Data::Platform
