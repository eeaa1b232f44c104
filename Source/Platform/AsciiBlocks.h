#pragma once

#include <cstddef>
#include <type_traits>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Most text is ASCII, which is the same in every common code page. It is converted
/// in blocks of 16 characters.
namespace Data::Platform {

constexpr std::size_t kAsciiBlock = 16;

#if defined(__SSE2__)

/// Converts a block if all of it is ASCII.
/// @return false if it is not; nothing is written then
inline bool ConvertAsciiBlock(const char* in, char16_t* out) {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
  if (_mm_movemask_epi8(bytes) != 0) return false;
  auto* to = reinterpret_cast<__m128i*>(out);
  _mm_storeu_si128(to, _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
  _mm_storeu_si128(to + 1, _mm_unpackhi_epi8(bytes, _mm_setzero_si128()));
  return true;
}

inline bool ConvertAsciiBlock(const char16_t* in, char* out) {
  const auto* from = reinterpret_cast<const __m128i*>(in);
  const __m128i low = _mm_loadu_si128(from), high = _mm_loadu_si128(from + 1);
  const __m128i others = _mm_and_si128(_mm_or_si128(low, high), _mm_set1_epi16(~0x7F));
  if (_mm_movemask_epi8(_mm_cmpeq_epi16(others, _mm_setzero_si128())) != 0xFFFF) return false;
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(low, high));
  return true;
}

#else

/// Converts a block if all of it is ASCII.
/// @return false if it is not; nothing is written then
template <class In, class Out>
bool ConvertAsciiBlock(const In* in, Out* out) {
  unsigned all = 0;
  for (std::size_t i = 0; i < kAsciiBlock; ++i) all |= static_cast<std::make_unsigned_t<In>>(in[i]);
  if (all >= 0x80) return false;
  for (std::size_t i = 0; i < kAsciiBlock; ++i) out[i] = static_cast<Out>(in[i]);
  return true;
}

#endif

}  // namespace Data::Platform
