#include "imaging/premultiply.h"

#include <array>
#include <cmath>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kestrelon {
namespace {

void premultiply_pixel(uint8_t* dst, const uint8_t* src) {
  const uint32_t alpha = src[3];
  for (int c = 0; c < 3; ++c) dst[c] = premultiply_byte(src[c], alpha);
  dst[3] = static_cast<uint8_t>(alpha);
}

void unpremultiply_pixel(uint8_t* dst, const uint8_t* src) {
  const uint32_t alpha = src[3];
  for (int c = 0; c < 3; ++c) dst[c] = unpremultiply_byte(src[c], alpha);
  dst[3] = static_cast<uint8_t>(alpha);
}

#if defined(__SSE2__)

// Two pixels as 16-bit lanes. The alpha lane is multiplied by 255, so that it comes out unchanged.
__m128i premultiply_pair(__m128i pixels, __m128i alpha_lane, __m128i alpha_255) {
  __m128i alpha = _mm_shufflehi_epi16(_mm_shufflelo_epi16(pixels, 0xFF), 0xFF);
  alpha = _mm_or_si128(_mm_andnot_si128(alpha_lane, alpha), alpha_255);
  const __m128i x = _mm_add_epi16(_mm_mullo_epi16(pixels, alpha), _mm_set1_epi16(1));
  return _mm_srli_epi16(_mm_add_epi16(x, _mm_srli_epi16(x, 8)), 8);
}

// Factor 255 / alpha per alpha, never below the exact value. The excess is under 2^-22 of it, so a
// product of at most 255 is less than 1/254 too large and truncates to the exact quotient.
std::array<float, 256> make_factors() {
  std::array<float, 256> factors{};
  for (int a = 1; a < 256; ++a) {
    const double exact = 255.0 / a;
    float factor = static_cast<float>(exact);
    if (static_cast<double>(factor) < exact) factor = std::nextafter(factor, 512.0f);
    factors[static_cast<size_t>(a)] = factor;
  }
  return factors;
}

__m128i unpremultiply_lanes(__m128i lanes, float factor) {
  const __m128 scaled = _mm_mul_ps(_mm_cvtepi32_ps(lanes), _mm_set1_ps(factor));
  return _mm_cvttps_epi32(scaled);
}

#endif

}  // namespace

void premultiply_row(uint8_t* dst, const uint8_t* src, size_t count) {
  size_t i = 0;
#if defined(__SSE2__)
  const __m128i zero = _mm_setzero_si128();
  const __m128i alpha_lane = _mm_set_epi16(-1, 0, 0, 0, -1, 0, 0, 0);
  const __m128i alpha_255 = _mm_and_si128(alpha_lane, _mm_set1_epi16(255));
  for (; i + 4 <= count; i += 4) {
    const __m128i p = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + i * 4));
    const __m128i lo = premultiply_pair(_mm_unpacklo_epi8(p, zero), alpha_lane, alpha_255);
    const __m128i hi = premultiply_pair(_mm_unpackhi_epi8(p, zero), alpha_lane, alpha_255);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i * 4), _mm_packus_epi16(lo, hi));
  }
#endif
  for (; i < count; ++i) premultiply_pixel(dst + i * 4, src + i * 4);
}

void unpremultiply_row(uint8_t* dst, const uint8_t* src, size_t count) {
  size_t i = 0;
#if defined(__SSE2__)
  static const std::array<float, 256> factors = make_factors();
  const __m128i zero = _mm_setzero_si128();
  const __m128i alpha_mask = _mm_set1_epi32(static_cast<int>(0xFF000000u));
  for (; i + 4 <= count; i += 4) {
    const uint8_t* s = src + i * 4;
    const __m128i p = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s));
    const __m128i lo = _mm_unpacklo_epi8(p, zero);
    const __m128i hi = _mm_unpackhi_epi8(p, zero);
    const __m128i first = unpremultiply_lanes(_mm_unpacklo_epi16(lo, zero), factors[s[3]]);
    const __m128i second = unpremultiply_lanes(_mm_unpackhi_epi16(lo, zero), factors[s[7]]);
    const __m128i third = unpremultiply_lanes(_mm_unpacklo_epi16(hi, zero), factors[s[11]]);
    const __m128i fourth = unpremultiply_lanes(_mm_unpackhi_epi16(hi, zero), factors[s[15]]);
    // The packs saturate: bytes above their alpha become 255.
    const __m128i colour =
        _mm_packus_epi16(_mm_packs_epi32(first, second), _mm_packs_epi32(third, fourth));
    const __m128i out =
        _mm_or_si128(_mm_andnot_si128(alpha_mask, colour), _mm_and_si128(alpha_mask, p));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i * 4), out);
  }
#endif
  for (; i < count; ++i) unpremultiply_pixel(dst + i * 4, src + i * 4);
}

}  // namespace kestrelon
