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

/// A to Z become a to z; other units stay as they are.
template <class Unit>
constexpr auto FoldCase(Unit unit) {
  const auto value = AsUnsigned(unit);
  const bool isUpper = value >= 'A' && value <= 'Z';
  return static_cast<std::make_unsigned_t<Unit>>(isUpper ? value | 0x20 : value);
}

/// Texts are compared and searched in blocks of this many units: loops of fixed
/// length compile to a few vector instructions.
constexpr std::size_t kUnitBlock = 32;

template <class Unit, class Key>
bool AreBlocksEqual(const Unit* left, const Unit* right, Key key) {
  using Bits = std::make_unsigned_t<Unit>;  // a wider type would widen the vectors
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

/// Orders texts by their units as unsigned numbers, then by length: -1, 0 or 1.
/// Without `caseSensitive`, A to Z count as a to z.
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
