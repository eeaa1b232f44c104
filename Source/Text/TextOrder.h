#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace Data::impl {

template <class Unit>
constexpr auto AsUnsigned(Unit unit) {
  return static_cast<std::make_unsigned_t<Unit>>(unit);
}

/// A to Z as a to z; every other unit as it is.
template <class Unit>
constexpr auto FoldCase(Unit unit) {
  const auto value = AsUnsigned(unit);
  const bool isUpper = value >= 'A' && value <= 'Z';
  return static_cast<std::make_unsigned_t<Unit>>(isUpper ? value | 0x20 : value);
}

/// Units that are looked at together: loops of this fixed length become a few
/// vector instructions.
constexpr std::size_t kUnitBlock = 32;

template <class Unit, class Key>
bool AreBlocksEqual(const Unit* left, const Unit* right, Key key) {
  using Bits = std::make_unsigned_t<Unit>;  // any wider and the vectors are widened, too
  Bits difference = 0;
  for (std::size_t i = 0; i < kUnitBlock; ++i)
    difference = static_cast<Bits>(difference | (key(left[i]) ^ key(right[i])));
  return difference == 0;
}

template <class Unit>
bool HasZero(const Unit* block) {
  using Bits = std::make_unsigned_t<Unit>;
  Bits zeros = 0;
  for (std::size_t i = 0; i < kUnitBlock; ++i)
    zeros = static_cast<Bits>(zeros | (block[i] == 0 ? 0xFF : 0));
  return zeros != 0;
}

/// Orders texts by the keys of their units, then by length: -1, 0 or 1.
template <class Unit, class Key>
std::int32_t CompareByKey(std::basic_string_view<Unit> left, std::basic_string_view<Unit> right,
                          Key key) {
  const std::size_t shorter = std::min(left.size(), right.size());
  std::size_t i = 0;
  while (shorter - i >= kUnitBlock && AreBlocksEqual(left.data() + i, right.data() + i, key))
    i += kUnitBlock;
  for (; i < shorter; ++i)
    if (key(left[i]) != key(right[i])) return key(left[i]) < key(right[i]) ? -1 : 1;
  return left.size() < right.size() ? -1 : left.size() > right.size() ? 1 : 0;
}

/// Orders texts by their units as unsigned numbers, -1, 0 or 1; without
/// `caseSensitive` the case of A to Z does not count.
template <class Unit>
std::int32_t CompareTexts(std::basic_string_view<Unit> left, std::basic_string_view<Unit> right,
                          bool caseSensitive) {
  if (caseSensitive) return CompareByKey(left, right, [](Unit unit) { return AsUnsigned(unit); });
  return CompareByKey(left, right, [](Unit unit) { return FoldCase(unit); });
}

/// The text up to its first zero unit.
template <class Unit>
std::basic_string_view<Unit> UpToFirstZero(std::basic_string_view<Unit> text) {
  std::size_t i = 0;
  while (text.size() - i >= kUnitBlock && !HasZero(text.data() + i)) i += kUnitBlock;
  while (i < text.size() && text[i] != 0) ++i;
  return text.substr(0, i);
}

}  // namespace Data::impl
