#include "imaging/png_unfilter.h"

#if defined(__SSE2__)

#include <emmintrin.h>

#include <cstring>

namespace kestrelon::png {
namespace {

// A pixel of Step bytes in the low lanes. Three-byte pixels are loaded and stored with the byte
// that follows them, which the next step overwrites.
template <size_t Step>
__m128i load(const uint8_t* p) {
  if constexpr (Step <= 4) {
    int word;
    std::memcpy(&word, p, 4);
    return _mm_cvtsi32_si128(word);
  } else {
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
  }
}

template <size_t Step>
void store(uint8_t* p, __m128i pixel) {
  if constexpr (Step <= 4) {
    const int word = _mm_cvtsi128_si32(pixel);
    std::memcpy(p, &word, 4);
  } else {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), pixel);
  }
}

template <size_t Step>
void undo_sub(uint8_t* dst, const uint8_t* src, size_t size) {
  __m128i left = _mm_setzero_si128();
  for (size_t i = 0; i < size; i += Step) {
    left = _mm_add_epi8(left, load<Step>(src + i));
    store<Step>(dst + i, left);
  }
}

void undo_up(uint8_t* dst, const uint8_t* src, const uint8_t* above, size_t size) {
  for (size_t i = 0; i < size; i += 16) {
    const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + i));
    const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(above + i));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i), _mm_add_epi8(a, b));
  }
}

template <size_t Step>
void undo_average(uint8_t* dst, const uint8_t* src, const uint8_t* above, size_t size) {
  const __m128i one = _mm_set1_epi8(1);
  __m128i left = _mm_setzero_si128();
  for (size_t i = 0; i < size; i += Step) {
    const __m128i b = above ? load<Step>(above + i) : _mm_setzero_si128();
    // The instruction rounds up; the odd bit takes that back.
    const __m128i odd = _mm_and_si128(_mm_xor_si128(left, b), one);
    const __m128i mean = _mm_sub_epi8(_mm_avg_epu8(left, b), odd);
    left = _mm_add_epi8(mean, load<Step>(src + i));
    store<Step>(dst + i, left);
  }
}

__m128i select(__m128i mask, __m128i yes, __m128i no) {
  return _mm_or_si128(_mm_and_si128(mask, yes), _mm_andnot_si128(mask, no));
}

// With lo and hi the smaller and larger of left and above, and t = 3 * upper left - left - above,
// the predictor is lo if t >= hi, hi if t <= lo, and the upper left one otherwise: two comparisons
// instead of three distances. Only t, lo and hi wait for the pixel to the left.
template <size_t Step>
void undo_paeth(uint8_t* dst, const uint8_t* src, const uint8_t* above, size_t size) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i byte_mask = _mm_set1_epi16(255);
  __m128i left = zero, upper_left = zero;
  for (size_t i = 0; i < size; i += Step) {
    const __m128i b = _mm_unpacklo_epi8(load<Step>(above + i), zero);
    const __m128i x = _mm_unpacklo_epi8(load<Step>(src + i), zero);
    const __m128i base =
        _mm_sub_epi16(_mm_add_epi16(_mm_add_epi16(upper_left, upper_left), upper_left), b);
    const __m128i t = _mm_sub_epi16(base, left);
    const __m128i lo = _mm_min_epi16(left, b);
    const __m128i hi = _mm_max_epi16(left, b);
    const __m128i below = select(_mm_cmpgt_epi16(hi, t), upper_left, lo);
    const __m128i predicted = select(_mm_cmpgt_epi16(t, lo), below, hi);
    left = _mm_and_si128(_mm_add_epi16(predicted, x), byte_mask);
    upper_left = b;
    store<Step>(dst + i, _mm_packus_epi16(left, left));
  }
}

template <size_t Step>
bool undo(Filter filter, uint8_t* dst, const uint8_t* src, const uint8_t* above, size_t size) {
  switch (filter) {
    case Filter::Sub:
      undo_sub<Step>(dst, src, size);
      return true;
    case Filter::Average:
      undo_average<Step>(dst, src, above, size);
      return true;
    case Filter::Paeth:
      if (above) {
        undo_paeth<Step>(dst, src, above, size);
      } else {
        undo_sub<Step>(dst, src, size);
      }
      return true;
    default:
      return false;
  }
}

}  // namespace

bool unfilter_row_sse2(uint8_t filter, uint8_t* dst, const uint8_t* src, const uint8_t* above,
                       size_t size, size_t step) {
  const auto kind = static_cast<Filter>(filter);
  if (kind == Filter::Up) {
    if (above) undo_up(dst, src, above, size);
    return above != nullptr;
  }
  switch (step) {
    case 3:
      return undo<3>(kind, dst, src, above, size);
    case 4:
      return undo<4>(kind, dst, src, above, size);
    case 6:
      return undo<6>(kind, dst, src, above, size);
    case 8:
      return undo<8>(kind, dst, src, above, size);
    default:
      return false;
  }
}

}  // namespace kestrelon::png

#else

namespace kestrelon::png {

bool unfilter_row_sse2(uint8_t, uint8_t*, const uint8_t*, const uint8_t*, size_t, size_t) {
  return false;
}

}  // namespace kestrelon::png

#endif
