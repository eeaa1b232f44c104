#pragma once

#include <cstddef>
#include <string_view>

/// Character classes of ASCII, independent of any locale.
namespace Data::impl {

constexpr bool IsDigit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

/// TAB, LF, VT, FF, CR and SPACE.
constexpr bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// The text without the characters of a class at both ends.
template <class Predicate>
constexpr std::string_view Trim(std::string_view text, Predicate isTrimmed) {
  const char* first = text.data();
  const char* last = first + text.size();
  while (first != last && isTrimmed(*first)) ++first;
  while (first != last && isTrimmed(last[-1])) --last;
  return {first, static_cast<std::size_t>(last - first)};
}

constexpr std::string_view Trim(std::string_view text) { return Trim(text, IsSpace); }

}  // namespace Data::impl
