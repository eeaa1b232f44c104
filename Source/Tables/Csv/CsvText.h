#pragma once

#include <string_view>

#include "Text/Characters.h"

/// The special characters of delimited text.
namespace Data::impl {

inline constexpr char kQuote = '"';
inline constexpr char kLineEnd = '\n';

/// The characters trimmed around a line. Zero bytes around a value are kept.
constexpr bool IsLineSpace(char c) { return IsSpace(c) || c == '\0'; }

constexpr std::string_view TrimLine(std::string_view text) { return Trim(text, IsLineSpace); }

}  // namespace Data::impl
