// What the kit does with one row of pixels. SSE2 is the floor of the product; elsewhere the plain
// tail loop does all of the row.
#pragma once

#include <cstdint>

#include "frame/kit/pixel_view.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace kestrelon {

inline void fill_row(uint32_t* to, int count, uint32_t pixel) {
  int i = 0;
#ifdef __SSE2__
  const __m128i four = _mm_set1_epi32(static_cast<int>(pixel));
  for (; i + 4 <= count; i += 4) _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), four);
#endif
  for (; i < count; ++i) to[i] = pixel;
}

/// Copies the pixels whose colour is not the key's; leaves the others as they are.
inline void copy_row_except(uint32_t* to, const uint32_t* from, int count, uint32_t key) {
  int i = 0;
  key &= kColorBits;
#ifdef __SSE2__
  const __m128i keys = _mm_set1_epi32(static_cast<int>(key));
  const __m128i color_bits = _mm_set1_epi32(kColorBits);
  for (; i + 4 <= count; i += 4) {
    const __m128i source = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i));
    const __m128i under = _mm_loadu_si128(reinterpret_cast<const __m128i*>(to + i));
    const __m128i keep = _mm_cmpeq_epi32(_mm_and_si128(source, color_bits), keys);
    const __m128i mixed = _mm_or_si128(_mm_and_si128(keep, under), _mm_andnot_si128(keep, source));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), mixed);
  }
#endif
  for (; i < count; ++i)
    if ((from[i] & kColorBits) != key) to[i] = from[i];
}

/// The first place from `start` on where "has the colour `key`" is `wanted`; `count` if there is
/// none.
inline int find_in_row(const uint32_t* row, int start, int count, uint32_t key, bool wanted) {
  int i = start;
  key &= kColorBits;
#ifdef __SSE2__
  const __m128i keys = _mm_set1_epi32(static_cast<int>(key));
  const __m128i color_bits = _mm_set1_epi32(kColorBits);
  const int passes_by = wanted ? 0 : 0xFFFF;
  for (; i + 4 <= count; i += 4) {
    const __m128i four = _mm_loadu_si128(reinterpret_cast<const __m128i*>(row + i));
    const __m128i same = _mm_cmpeq_epi32(_mm_and_si128(four, color_bits), keys);
    if (_mm_movemask_epi8(same) != passes_by) break;
  }
#endif
  while (i < count && ((row[i] & kColorBits) == key) != wanted) ++i;
  return i;
}

}  // namespace kestrelon
