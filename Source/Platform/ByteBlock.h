#pragma once

#include <cstddef>
#include <cstdint>
#if defined(__SSE2__)
#include <emmintrin.h>
#else
#include <array>
#include <cstring>
#endif

namespace Data::Platform {

#if defined(__SSE2__)

/// 16 bytes that are compared at once. A comparison gives a block whose bytes are all ones where it
/// holds, else zero.
class ByteBlock {
 public:
  static constexpr std::size_t kSize = 16;

  explicit ByteBlock(const void* from)
      : bytes_(_mm_loadu_si128(static_cast<const __m128i*>(from))) {}

  void Store(void* to) const { _mm_storeu_si128(static_cast<__m128i*>(to), bytes_); }
  ByteBlock Equal(char byte) const {
    return ByteBlock(_mm_cmpeq_epi8(bytes_, _mm_set1_epi8(byte)));
  }
  /// Compares as unsigned numbers.
  /// @param most  the largest byte for which it holds
  ByteBlock AtMost(unsigned char most) const {
    const __m128i above = _mm_subs_epu8(bytes_, _mm_set1_epi8(static_cast<char>(most)));
    return ByteBlock(_mm_cmpeq_epi8(above, _mm_setzero_si128()));
  }
  friend ByteBlock operator|(ByteBlock left, ByteBlock right) {
    return ByteBlock(_mm_or_si128(left.bytes_, right.bytes_));
  }
  /// The highest bit of each byte, that of the first in the lowest bit.
  std::uint32_t Bits() const { return static_cast<std::uint32_t>(_mm_movemask_epi8(bytes_)); }

 private:
  explicit ByteBlock(__m128i bytes) : bytes_(bytes) {}

  __m128i bytes_;
};

#else

/// 16 bytes that are compared at once. A comparison gives a block whose bytes are all ones where it
/// holds, else zero.
class ByteBlock {
 public:
  static constexpr std::size_t kSize = 16;

  explicit ByteBlock(const void* from) { std::memcpy(bytes_.data(), from, kSize); }

  void Store(void* to) const { std::memcpy(to, bytes_.data(), kSize); }
  ByteBlock Equal(char byte) const {
    return Where([=](unsigned char c) { return c == static_cast<unsigned char>(byte); });
  }
  /// Compares as unsigned numbers.
  /// @param most  the largest byte for which it holds
  ByteBlock AtMost(unsigned char most) const {
    return Where([=](unsigned char c) { return c <= most; });
  }
  friend ByteBlock operator|(ByteBlock left, ByteBlock right) {
    for (std::size_t i = 0; i < kSize; ++i) left.bytes_[i] |= right.bytes_[i];
    return left;
  }
  /// The highest bit of each byte, that of the first in the lowest bit.
  std::uint32_t Bits() const {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < kSize; ++i) bits |= std::uint32_t{bytes_[i]} >> 7 << i;
    return bits;
  }

 private:
  template <class Condition>
  ByteBlock Where(Condition holds) const {
    ByteBlock marks = *this;
    for (unsigned char& byte : marks.bytes_) byte = holds(byte) ? 0xFF : 0;
    return marks;
  }

  std::array<unsigned char, kSize> bytes_;
};

#endif

}  // namespace Data::Platform
