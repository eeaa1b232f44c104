#pragma once

#include <string>
#include <string_view>

namespace Data::c {

/// Whether a text is well-formed UTF-8.
bool IsUtf8(std::string_view text);

/// The text with U+FFFD for each part that is not well-formed.
std::string RepairUtf8(std::string_view text);

}  // namespace Data::c
