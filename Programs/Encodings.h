#pragma once

#include <cstdint>
#include <string>

namespace program {

constexpr std::uint32_t kUtf16 = 1200, kUtf16BigEndian = 1201, kUtf8 = 65001;

/// The code page of an encoding: "utf-8", "utf-16le", "latin1", "windows-1252", "cp437", "1252".
/// @throws UsageError for a name that is unknown
std::uint32_t CodePageOf(const std::string& name);

/// UTF-8 in another encoding. What it lacks is replaced, which is told as a warning.
/// @param what  the name of the text in the warning
std::string Encode(std::string_view utf8, std::uint32_t codePage, const std::string& what);

/// The separator that the user means: "tab", "comma", "semicolon", "pipe" and "space" by name, and
/// anything else as written, with "\t" and "\\" understood.
/// @throws UsageError for quotes and line breaks
std::string SeparatorOf(const std::string& text);

}  // namespace program
