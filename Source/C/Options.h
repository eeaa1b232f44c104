#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace Data::c {

/// A copy of the caller's options, whose first member is their size in bytes. A record of an older
/// version is shorter; what it lacks is zero, the default. One of a newer version is longer; what
/// is beyond this version's must be zero.
/// @param options  null for the defaults
/// @throws std::runtime_error "The size of the options is wrong!", "The options ask for something
///         that this version does not know!"
template <class Options>
Options ReadOptions(const Options* options) {
  static_assert(alignof(Options) == sizeof options->size);
  constexpr std::uint64_t kMostBytes = 4096;
  Options known{};
  if (!options) return known;
  const std::uint64_t size = options->size;
  // No version of a record ends inside a member.
  if (size < sizeof size || size > kMostBytes || size % alignof(Options) != 0)
    throw std::runtime_error("The size of the options is wrong!");
  std::memcpy(&known, options, std::min<std::uint64_t>(size, sizeof known));
  const char* const bytes = reinterpret_cast<const char*>(options);
  const auto isSet = [](char byte) { return byte != 0; };
  if (size > sizeof known && std::any_of(bytes + sizeof known, bytes + size, isSet))
    throw std::runtime_error("The options ask for something that this version does not know!");
  return known;
}

/// Names that options list.
/// @throws std::runtime_error "The names of columns must not be null!"
inline std::vector<std::string_view> ListedNames(const char* const* names, std::uint64_t count) {
  constexpr std::uint64_t kMostNames = std::uint64_t{1} << 32;
  if (count > kMostNames) throw std::runtime_error("The length is too large!");
  std::vector<std::string_view> list;
  for (std::uint64_t i = 0; i < count; ++i) {
    if (!names || !names[i]) throw std::runtime_error("The names of columns must not be null!");
    list.emplace_back(names[i]);
  }
  return list;
}

}  // namespace Data::c
