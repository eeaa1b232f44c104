#include "Text/Base64Blocks.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace Data::impl {

#if defined(__x86_64__)

// AVX2 is detected at run time, so only these functions may use it. Each works on
// two lanes of 16 characters or 12 bytes.

namespace {

[[gnu::target("avx2")]] std::size_t EncodeWithAvx2(const Base64Alphabet& alphabet,
                                                   std::span<const std::uint8_t> bytes, char* out) {
  const auto in = [&bytes](std::size_t at) {
    return reinterpret_cast<const __m128i*>(bytes.data() + at);
  };
  // Spread each group of three bytes over four: the second, first, third, second.
  const __m256i order =
      _mm256_broadcastsi128_si256(_mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
  // Character minus value, by range: a-z, ten entries for the digits, the last two
  // characters, A-Z.
  const auto at62 = static_cast<char>(alphabet.characters[62] - 62);
  const auto at63 = static_cast<char>(alphabet.characters[63] - 63);
  constexpr char lower = 'a' - 26, digit = '0' - 52;
  const __m256i offsets =
      _mm256_broadcastsi128_si256(_mm_setr_epi8(lower, digit, digit, digit, digit, digit, digit,
                                                digit, digit, digit, digit, at62, at63, 'A', 0, 0));
  std::size_t done = 0;
  for (; bytes.size() - done >= 28; done += 24, out += 32) {
    __m256i groups = _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(in(done))),
                                             _mm_loadu_si128(in(done + 12)), 1);
    groups = _mm256_shuffle_epi8(groups, order);
    // Multiply to shift: the first and third six bits of each group go to their
    // bytes, then the second and fourth.
    const __m256i odd = _mm256_mulhi_epu16(_mm256_and_si256(groups, _mm256_set1_epi32(0x0FC0FC00)),
                                           _mm256_set1_epi32(0x04000040));
    const __m256i even = _mm256_mullo_epi16(_mm256_and_si256(groups, _mm256_set1_epi32(0x003F03F0)),
                                            _mm256_set1_epi32(0x01000010));
    const __m256i values = _mm256_or_si256(odd, even);
    // Range of each value: 0 is a-z, 1 to 10 the digits, 11 and 12 the last two
    // characters, 13 A-Z.
    const __m256i isUpper = _mm256_cmpgt_epi8(_mm256_set1_epi8(26), values);
    const __m256i range = _mm256_or_si256(_mm256_subs_epu8(values, _mm256_set1_epi8(51)),
                                          _mm256_and_si256(isUpper, _mm256_set1_epi8(13)));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out),
                        _mm256_adds_epi8(values, _mm256_shuffle_epi8(offsets, range)));
  }
  return done;
}

[[gnu::target("avx2"), gnu::always_inline]] inline __m256i InBothLanes(const void* table) {
  return _mm256_broadcastsi128_si256(_mm_loadu_si128(static_cast<const __m128i*>(table)));
}

[[gnu::target("avx2")]] std::size_t DecodeWithAvx2(const Base64Alphabet& alphabet,
                                                   std::string_view text, std::uint8_t* out) {
  const __m256i lowNibbleMasks = InBothLanes(alphabet.lowNibbleMasks.data());
  const __m256i highNibbleMasks = InBothLanes(alphabet.highNibbleMasks.data());
  const __m256i offsetByHighNibble = InBothLanes(alphabet.offsetByHighNibble.data());
  const __m256i nibble = _mm256_set1_epi8(0xF);
  // The 24 bits of each group of four lie in its lowest three bytes; reverse and pack them.
  const __m256i order = _mm256_broadcastsi128_si256(
      _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
  std::size_t done = 0;
  // The store of the second lane writes 4 bytes past its own 12: 8 more characters
  // make sure that there is room.
  for (; text.size() - done >= 32 + 8; done += 32, out += 24) {
    const __m256i block = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text.data() + done));
    const __m256i high = _mm256_and_si256(_mm256_srli_epi32(block, 4), nibble);
    const __m256i low = _mm256_and_si256(block, nibble);
    if (!_mm256_testz_si256(_mm256_shuffle_epi8(lowNibbleMasks, low),
                            _mm256_shuffle_epi8(highNibbleMasks, high)))
      break;
    const __m256i isLast = _mm256_cmpeq_epi8(block, _mm256_set1_epi8(alphabet.characters[63]));
    const __m256i entry = _mm256_adds_epi8(
        high, _mm256_and_si256(isLast, _mm256_set1_epi8(alphabet.lastNibbleShift)));
    const __m256i values = _mm256_adds_epi8(block, _mm256_shuffle_epi8(offsetByHighNibble, entry));
    // Join the values of each pair to 12 bits, then the pairs of each group to 24.
    const __m256i pairs = _mm256_maddubs_epi16(values, _mm256_set1_epi32(0x01400140));
    const __m256i groups = _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000));
    const __m256i packed = _mm256_shuffle_epi8(groups, order);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm256_castsi256_si128(packed));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 12), _mm256_extracti128_si256(packed, 1));
  }
  return done;
}

bool HasAvx2() { return __builtin_cpu_supports("avx2") != 0; }

}  // namespace

std::size_t EncodeBase64Blocks(const Base64Alphabet& alphabet, std::span<const std::uint8_t> bytes,
                               char* out) {
  return HasAvx2() ? EncodeWithAvx2(alphabet, bytes, out) : 0;
}

std::size_t DecodeBase64Blocks(const Base64Alphabet& alphabet, std::string_view text,
                               std::uint8_t* out) {
  return HasAvx2() ? DecodeWithAvx2(alphabet, text, out) : 0;
}

#else

std::size_t EncodeBase64Blocks(const Base64Alphabet&, std::span<const std::uint8_t>, char*) {
  return 0;
}

std::size_t DecodeBase64Blocks(const Base64Alphabet&, std::string_view, std::uint8_t*) { return 0; }

#endif

}  // namespace Data::impl
