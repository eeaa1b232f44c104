#pragma once

#include <cstddef>
#include <string_view>

/// The characters that mean something in delimited text.
namespace Data::impl {

inline constexpr char kQuote = '"';
inline constexpr char kLineEnd = '\n';

/// Around values: TAB, LF, VT, FF, CR and SPACE.
constexpr bool IsValueSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
/// Around lines a zero byte goes with them.
constexpr bool IsLineSpace(char c) { return IsValueSpace(c) || c == '\0'; }

template <class Predicate>
constexpr std::string_view Trim(std::string_view text, Predicate isSpace) {
  const char* first = text.data();
  const char* last = first + text.size();
  while (first != last && isSpace(*first)) ++first;
  while (first != last && isSpace(last[-1])) --last;
  return {first, static_cast<std::size_t>(last - first)};
}

constexpr std::string_view TrimValue(std::string_view text) { return Trim(text, IsValueSpace); }
constexpr std::string_view TrimLine(std::string_view text) { return Trim(text, IsLineSpace); }

}  // namespace Data::impl
