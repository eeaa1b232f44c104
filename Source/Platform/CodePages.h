#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Conversion between UTF-16 and the byte encodings that Windows numbers as
/// code pages; 65001 is UTF-8, 0 and 1 are the ANSI and the OEM page. Both
/// systems give the same answers: best-fit characters, undefined bytes and
/// broken double bytes included. Nothing is reported: a text always converts
/// to something, and an unknown page to nothing.
///
/// The caller provides a buffer of the largest size that can be needed; no
/// terminator is written.
namespace Data::Platform {

/// The most UTF-16 units that `byteCount` bytes of any page can become.
constexpr std::size_t MaxWideLength(std::size_t byteCount) { return byteCount; }

/// The most bytes that `unitCount` UTF-16 units can become in a page; 0 for an
/// unknown one.
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
