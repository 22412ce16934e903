#include "imaging/row_kernels.h"

#if defined(__SSE2__)

#include <emmintrin.h>

#include "imaging/row_kernels_simd.h"

namespace kestrelon {
namespace {

struct Sse2 {
  using Int = __m128i;
  static constexpr size_t kPixels = 4;

  static Int load(const uint8_t* p) { return _mm_loadu_si128(reinterpret_cast<const Int*>(p)); }
  static void store(uint8_t* p, Int v) { _mm_storeu_si128(reinterpret_cast<Int*>(p), v); }
  static Int zero() { return _mm_setzero_si128(); }
  static Int set16(int16_t v) { return _mm_set1_epi16(v); }
  static Int set32(uint32_t v) { return _mm_set1_epi32(static_cast<int>(v)); }
  static Int set16_pattern(int16_t a, int16_t b, int16_t c, int16_t d) {
    return _mm_setr_epi16(a, b, c, d, a, b, c, d);
  }
  static __m128 set_float(float v) { return _mm_set1_ps(v); }
  static Int bit_and(Int a, Int b) { return _mm_and_si128(a, b); }
  static Int bit_or(Int a, Int b) { return _mm_or_si128(a, b); }
  static Int bit_xor(Int a, Int b) { return _mm_xor_si128(a, b); }
  static Int and_not(Int mask, Int v) { return _mm_andnot_si128(mask, v); }
  static Int add16(Int a, Int b) { return _mm_add_epi16(a, b); }
  static Int mul16(Int a, Int b) { return _mm_mullo_epi16(a, b); }
  static Int mul_high16(Int a, Int b) { return _mm_mulhi_epu16(a, b); }
  static Int multiply_add16(Int a, Int b) { return _mm_madd_epi16(a, b); }
  static Int shift_right16(Int v, int n) { return _mm_srli_epi16(v, n); }
  static Int shift_left16(Int v, int n) { return _mm_slli_epi16(v, n); }
  static Int shift_left32(Int v, int n) { return _mm_slli_epi32(v, n); }
  static Int add32(Int a, Int b) { return _mm_add_epi32(a, b); }
  static Int equal32(Int a, Int b) { return _mm_cmpeq_epi32(a, b); }
  static Int greater32(Int a, Int b) { return _mm_cmpgt_epi32(a, b); }
  static Int equal8(Int a, Int b) { return _mm_cmpeq_epi8(a, b); }
  static bool all(Int mask) { return _mm_movemask_epi8(mask) == 0xFFFF; }
  static Int add_saturated8(Int a, Int b) { return _mm_adds_epu8(a, b); }
  static Int sub_saturated8(Int a, Int b) { return _mm_subs_epu8(a, b); }
  static Int min8(Int a, Int b) { return _mm_min_epu8(a, b); }
  static Int widen_low8(Int v) { return _mm_unpacklo_epi8(v, zero()); }
  static Int widen_high8(Int v) { return _mm_unpackhi_epi8(v, zero()); }
  static __m128 to_float(Int v) { return _mm_cvtepi32_ps(v); }
  static __m128 multiply(__m128 a, __m128 b) { return _mm_mul_ps(a, b); }
  static Int truncate(__m128 v) { return _mm_cvttps_epi32(v); }
  static Int reverse32(Int v) { return _mm_shuffle_epi32(v, 0x1B); }

  /// The alpha of each pixel in both of its 16-bit lanes.
  static Int spread_alpha16(Int v) {
    const Int alpha = _mm_srli_epi32(v, 24);
    return _mm_or_si128(alpha, _mm_slli_epi32(alpha, 16));
  }
  /// Sums of neighbouring 32-bit lanes, those of `a` below those of `b`.
  static Int add_pairs32(Int a, Int b) {
    const __m128 x = _mm_castsi128_ps(a), y = _mm_castsi128_ps(b);
    return _mm_add_epi32(_mm_castps_si128(_mm_shuffle_ps(x, y, 0x88)),
                         _mm_castps_si128(_mm_shuffle_ps(x, y, 0xDD)));
  }
  static Int look_up_alpha(const uint32_t* table, const uint8_t* p, Int) {
    return _mm_setr_epi32(static_cast<int>(table[p[3]]), static_cast<int>(table[p[7]]),
                          static_cast<int>(table[p[11]]), static_cast<int>(table[p[15]]));
  }
};

void mix_rows(float* out, const uint8_t* upper, const uint8_t* lower, size_t count,
              int32_t upper_weight, int32_t lower_weight) {
  const __m128i weights = _mm_set1_epi32((lower_weight << 16) | upper_weight);
  const __m128i zero = _mm_setzero_si128();
  size_t i = 0;
  for (; i + 16 <= count; i += 16) {
    const __m128i a = Sse2::load(upper + i), b = Sse2::load(lower + i);
    const __m128i low = _mm_unpacklo_epi8(a, b), high = _mm_unpackhi_epi8(a, b);
    const __m128i parts[4] = {_mm_unpacklo_epi8(low, zero), _mm_unpackhi_epi8(low, zero),
                              _mm_unpacklo_epi8(high, zero), _mm_unpackhi_epi8(high, zero)};
    for (size_t k = 0; k < 4; ++k)
      _mm_storeu_ps(out + i + k * 4, _mm_cvtepi32_ps(_mm_madd_epi16(parts[k], weights)));
  }
  plain_row_kernels().mix_rows(out + i, upper + i, lower + i, count - i, upper_weight,
                               lower_weight);
}

__m128i mixed_pixel(const float* v, const ColumnWeight<float>& column, __m128 bias) {
  const float* from = v + size_t{column.index} * 4;
  const __m128 near = _mm_mul_ps(_mm_loadu_ps(from), _mm_set1_ps(column.near));
  const __m128 far = _mm_mul_ps(_mm_loadu_ps(from + 4), _mm_set1_ps(column.far));
  return _mm_cvttps_epi32(_mm_add_ps(_mm_add_ps(near, far), bias));
}

void mix_columns(uint8_t* dst, const float* v, const ColumnWeight<float>* columns, size_t count,
                 float bias) {
  const __m128 b = _mm_set1_ps(bias);
  size_t x = 0;
  for (; x + 4 <= count; x += 4) {
    const __m128i first =
        _mm_packs_epi32(mixed_pixel(v, columns[x], b), mixed_pixel(v, columns[x + 1], b));
    const __m128i second =
        _mm_packs_epi32(mixed_pixel(v, columns[x + 2], b), mixed_pixel(v, columns[x + 3], b));
    Sse2::store(dst + x * 4, _mm_packus_epi16(first, second));
  }
  plain_row_kernels().mix_columns(dst + x * 4, v, columns + x, count - x, bias);
}

void mix_columns_wide(uint8_t* dst, const float* v, const ColumnWeight<double>* columns,
                      size_t count, double bias) {
  const __m128d b = _mm_set1_pd(bias);
  for (size_t x = 0; x < count; ++x) {
    const float* from = v + size_t{columns[x].index} * 4;
    const __m128 left = _mm_loadu_ps(from), right = _mm_loadu_ps(from + 4);
    const __m128d near = _mm_set1_pd(columns[x].near), far = _mm_set1_pd(columns[x].far);
    const __m128d low =
        _mm_add_pd(_mm_mul_pd(_mm_cvtps_pd(left), near), _mm_mul_pd(_mm_cvtps_pd(right), far));
    const __m128d high = _mm_add_pd(_mm_mul_pd(_mm_cvtps_pd(_mm_movehl_ps(left, left)), near),
                                    _mm_mul_pd(_mm_cvtps_pd(_mm_movehl_ps(right, right)), far));
    const __m128i whole = _mm_unpacklo_epi64(_mm_cvttpd_epi32(_mm_add_pd(low, b)),
                                             _mm_cvttpd_epi32(_mm_add_pd(high, b)));
    const __m128i packed = _mm_packus_epi16(_mm_packs_epi32(whole, whole), whole);
    const int pixel = _mm_cvtsi128_si32(packed);
    __builtin_memcpy(dst + x * 4, &pixel, 4);
  }
}

__m128 widened(__m128i bytes, int which) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i words = _mm_unpacklo_epi8(bytes, zero);
  return _mm_cvtepi32_ps(which == 0 ? _mm_unpacklo_epi16(words, zero)
                                    : _mm_unpackhi_epi16(words, zero));
}

// Two neighbouring pixels; at the last column the one pixel twice.
__m128i load_pair(const uint8_t* p, bool has_right) {
  if (has_right) return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
  int pixel;
  __builtin_memcpy(&pixel, p, 4);
  return _mm_set1_epi32(pixel);
}

void rotate_bilinear(uint8_t* dst, const RotatedRun& run, size_t count) {
  constexpr int64_t kHalf = int64_t{1} << 31;
  const __m128 bias = _mm_set1_ps(0x1p-13f), one = _mm_set1_ps(1);
  int64_t px = run.x - kHalf, py = run.y - kHalf;
  for (; count > 0; --count, dst += 4, px += run.dx, py += run.dy) {
    const int64_t x = px < 0 ? 0 : px, y = py < 0 ? 0 : py;
    const auto column = static_cast<ptrdiff_t>(x >> 32);
    const auto line = static_cast<ptrdiff_t>(y >> 32);
    const __m128 fx =
        _mm_set1_ps(static_cast<float>(static_cast<int32_t>((x >> 8) & 0xFFFFFF)) * 0x1p-24f);
    const __m128 fy =
        _mm_set1_ps(static_cast<float>(static_cast<int32_t>((y >> 8) & 0xFFFFFF)) * 0x1p-24f);
    const uint8_t* from = run.top + line * run.stride + column * 4;
    const bool has_right = column < run.last_x;
    const __m128i upper = load_pair(from, has_right);
    const __m128i lower = load_pair(from + (line < run.last_y ? run.stride : 0), has_right);
    const __m128 gx = _mm_sub_ps(one, fx), gy = _mm_sub_ps(one, fy);
    const __m128 left =
        _mm_add_ps(_mm_mul_ps(widened(upper, 0), gy), _mm_mul_ps(widened(lower, 0), fy));
    const __m128 right =
        _mm_add_ps(_mm_mul_ps(widened(upper, 1), gy), _mm_mul_ps(widened(lower, 1), fy));
    const __m128 sum = _mm_add_ps(_mm_mul_ps(left, gx), _mm_mul_ps(right, fx));
    const __m128i whole = _mm_cvttps_epi32(_mm_add_ps(sum, bias));
    const int pixel = _mm_cvtsi128_si32(_mm_packus_epi16(_mm_packs_epi32(whole, whole), whole));
    __builtin_memcpy(dst, &pixel, 4);
  }
}

using Rows = VectorRows<Sse2>;
constexpr RowKernels kSse2 = {"SSE2",      Rows::blend,      Rows::light,
                              Rows::gray,  Rows::reverse,    mix_rows,
                              mix_columns, mix_columns_wide, rotate_bilinear};

}  // namespace

const RowKernels* sse2_row_kernels() {
  return &kSse2;
}

}  // namespace kestrelon

#else

namespace kestrelon {
const RowKernels* sse2_row_kernels() {
  return nullptr;
}
}  // namespace kestrelon

#endif
