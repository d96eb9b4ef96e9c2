#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>

#include "cobol/characters.hpp"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace cobol {

#ifdef __SSE2__
/// Sixteen bytes and which of them a word may hold.
struct WordBytes {
  __m128i capitals;
  unsigned wordChars; ///< a bit a byte
};

inline WordBytes wordBytesAt(const char* from) {
  const auto isIn = [](__m128i bytes, char first, char last) {
    const __m128i distance = _mm_sub_epi8(bytes, _mm_set1_epi8(first));
    return _mm_cmpeq_epi8(_mm_min_epu8(distance, _mm_set1_epi8(static_cast<char>(last - first))), distance);
  };
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
  const __m128i capitals = _mm_xor_si128(bytes, _mm_and_si128(isIn(bytes, 'a', 'z'), _mm_set1_epi8('a' - 'A')));
  const __m128i letters = _mm_or_si128(isIn(capitals, '@', 'Z'), _mm_cmpeq_epi8(bytes, _mm_set1_epi8('_')));
  const __m128i others = _mm_or_si128(isIn(bytes, '#', '$'), _mm_cmpeq_epi8(bytes, _mm_set1_epi8('-')));
  const __m128i word = _mm_or_si128(_mm_or_si128(letters, others), isIn(bytes, '0', '9'));
  return {capitals, static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(word, bytes)))}; // or above 0x7F
}
#endif

/// As many bytes behind the word may be written by `takeWord`.
inline constexpr std::size_t kWordOverhang = 16;

/// Writes the word that begins at `from` in capitals to `to` and gives its length; it ends before `end` at the latest.
/// Sixteen bytes at once, as far as these can be read, which is up to `readable`.
inline std::size_t takeWord(const char* from, const char* end, const char* readable, char* to) {
  const auto limit = static_cast<std::size_t>(end - from);
  std::size_t length = 0;
#ifdef __SSE2__
  for (; length < limit && readable - (from + length) >= 16; length += 16) {
    const auto [capitals, wordChars] = wordBytesAt(from + length);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to + length), capitals);
    if (wordChars != 0xFFFF) return std::min(limit, length + static_cast<std::size_t>(std::countr_one(wordChars)));
  }
#endif
  while (length < limit && (to[length] = kWordCapitals[static_cast<unsigned char>(from[length])]) != 0)
    ++length;
  return std::min(limit, length);
}

} // namespace cobol
