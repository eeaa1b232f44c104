#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

/// ASCII reads the same in every page that matters, and most texts are nothing
/// else. It is converted 16 characters at a time; the loops have a fixed length
/// so that compilers turn each into a few vector instructions.
namespace Data::Platform {

constexpr std::size_t kAsciiBlock = 16;

inline bool IsAsciiBlock(const char* bytes) {
  std::uint64_t words[2];
  std::memcpy(words, bytes, sizeof words);
  return ((words[0] | words[1]) & 0x8080808080808080) == 0;
}

inline bool IsAsciiBlock(const char16_t* text) {
  std::uint64_t words[4];
  std::memcpy(words, text, sizeof words);
  return ((words[0] | words[1] | words[2] | words[3]) & 0xFF80FF80FF80FF80) == 0;
}

template <class In, class Out>
void CopyAsciiBlock(const In* in, Out* out) {
  for (std::size_t i = 0; i < kAsciiBlock; ++i) out[i] = static_cast<Out>(in[i]);
}

}  // namespace Data::Platform
