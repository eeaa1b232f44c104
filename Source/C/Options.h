#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace Data::c {

/// A copy of the caller's options, whose first member is their size in bytes. A record of an older
/// version is shorter; what it lacks is zero, the default. One of a newer version is longer; what
/// is beyond this version's must be zero.
/// @param options  null for the defaults
/// @throws std::runtime_error "The size of the options is wrong!", "The options ask for something
///         that this version does not know!"
template <class Options>
Options ReadOptions(const Options* options) {
  constexpr std::uint64_t kMostBytes = 4096;
  Options known{};
  if (!options) return known;
  const std::uint64_t size = options->size;
  if (size < sizeof size || size > kMostBytes)
    throw std::runtime_error("The size of the options is wrong!");
  std::memcpy(&known, options, std::min<std::uint64_t>(size, sizeof known));
  const char* const bytes = reinterpret_cast<const char*>(options);
  const auto isSet = [](char byte) { return byte != 0; };
  if (size > sizeof known && std::any_of(bytes + sizeof known, bytes + size, isSet))
    throw std::runtime_error("The options ask for something that this version does not know!");
  return known;
}

}  // namespace Data::c
