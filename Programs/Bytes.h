#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace program {

/// The bytes of a file, or of standard input for "-".
/// @throws layerdata::Error `Cannot read "PATH": ` and the reason
std::string ReadBytes(const std::string& path);

/// How messages call a file: its path, or "standard input".
std::string DisplayName(const std::string& path);

/// Where the first byte stands that belongs to no UTF-8; npos for valid UTF-8.
std::size_t FindInvalidUtf8(std::string_view bytes);

/// The number of the line, counted from 1, in which a byte stands.
std::uint64_t LineOf(std::string_view bytes, std::size_t position);

}  // namespace program
