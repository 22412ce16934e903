#include "imaging/row_kernels.h"

#if defined(__AVX2__)

#include <immintrin.h>

#include "imaging/row_kernels_simd.h"

namespace kestrelon {
namespace {

struct Avx2 {
  using Int = __m256i;
  static constexpr size_t kPixels = 8;

  static Int load(const uint8_t* p) { return _mm256_loadu_si256(reinterpret_cast<const Int*>(p)); }
  static void store(uint8_t* p, Int v) { _mm256_storeu_si256(reinterpret_cast<Int*>(p), v); }
  static Int zero() { return _mm256_setzero_si256(); }
  static Int set16(int16_t v) { return _mm256_set1_epi16(v); }
  static Int set32(uint32_t v) { return _mm256_set1_epi32(static_cast<int>(v)); }
  static Int set16_pattern(int16_t a, int16_t b, int16_t c, int16_t d) {
    return _mm256_setr_epi16(a, b, c, d, a, b, c, d, a, b, c, d, a, b, c, d);
  }
  static __m256 set_float(float v) { return _mm256_set1_ps(v); }
  static Int bit_and(Int a, Int b) { return _mm256_and_si256(a, b); }
  static Int bit_or(Int a, Int b) { return _mm256_or_si256(a, b); }
  static Int bit_xor(Int a, Int b) { return _mm256_xor_si256(a, b); }
  static Int and_not(Int mask, Int v) { return _mm256_andnot_si256(mask, v); }
  static Int add16(Int a, Int b) { return _mm256_add_epi16(a, b); }
  static Int mul16(Int a, Int b) { return _mm256_mullo_epi16(a, b); }
  static Int mul_high16(Int a, Int b) { return _mm256_mulhi_epu16(a, b); }
  static Int multiply_add16(Int a, Int b) { return _mm256_madd_epi16(a, b); }
  static Int shift_right16(Int v, int n) { return _mm256_srli_epi16(v, n); }
  static Int shift_left16(Int v, int n) { return _mm256_slli_epi16(v, n); }
  static Int shift_left32(Int v, int n) { return _mm256_slli_epi32(v, n); }
  static Int add32(Int a, Int b) { return _mm256_add_epi32(a, b); }
  static Int equal32(Int a, Int b) { return _mm256_cmpeq_epi32(a, b); }
  static Int greater32(Int a, Int b) { return _mm256_cmpgt_epi32(a, b); }
  static Int equal8(Int a, Int b) { return _mm256_cmpeq_epi8(a, b); }
  static bool all(Int mask) { return _mm256_movemask_epi8(mask) == -1; }
  static Int add_saturated8(Int a, Int b) { return _mm256_adds_epu8(a, b); }
  static Int sub_saturated8(Int a, Int b) { return _mm256_subs_epu8(a, b); }
  static Int min8(Int a, Int b) { return _mm256_min_epu8(a, b); }
  static Int widen_low8(Int v) { return _mm256_unpacklo_epi8(v, zero()); }
  static Int widen_high8(Int v) { return _mm256_unpackhi_epi8(v, zero()); }
  static __m256 to_float(Int v) { return _mm256_cvtepi32_ps(v); }
  static __m256 multiply(__m256 a, __m256 b) { return _mm256_mul_ps(a, b); }
  static Int truncate(__m256 v) { return _mm256_cvttps_epi32(v); }
  static Int reverse32(Int v) {
    return _mm256_permutevar8x32_epi32(v, _mm256_setr_epi32(7, 6, 5, 4, 3, 2, 1, 0));
  }

  /// The alpha of each pixel in both of its 16-bit lanes.
  static Int spread_alpha16(Int v) {
    const Int order = _mm256_setr_epi8(3, -1, 3, -1, 7, -1, 7, -1, 11, -1, 11, -1, 15, -1, 15, -1,
                                       3, -1, 3, -1, 7, -1, 7, -1, 11, -1, 11, -1, 15, -1, 15, -1);
    return _mm256_shuffle_epi8(v, order);
  }
  /// Sums of neighbouring 32-bit lanes; undoes the order that widen_low8 and widen_high8 make.
  static Int add_pairs32(Int a, Int b) { return _mm256_hadd_epi32(a, b); }
  static Int look_up_alpha(const uint32_t* table, const uint8_t*, Int pixels) {
    return _mm256_i32gather_epi32(reinterpret_cast<const int*>(table),
                                  _mm256_srli_epi32(pixels, 24), 4);
  }
};

void mix_rows(float* out, const uint8_t* upper, const uint8_t* lower, size_t count,
              int32_t upper_weight, int32_t lower_weight) {
  const __m256i weights = _mm256_set1_epi32((lower_weight << 16) | upper_weight);
  size_t i = 0;
  for (; i + 16 <= count; i += 16) {
    const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(upper + i));
    const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(lower + i));
    const __m256i low = _mm256_cvtepu8_epi16(_mm_unpacklo_epi8(a, b));
    const __m256i high = _mm256_cvtepu8_epi16(_mm_unpackhi_epi8(a, b));
    _mm256_storeu_ps(out + i, _mm256_cvtepi32_ps(_mm256_madd_epi16(low, weights)));
    _mm256_storeu_ps(out + i + 8, _mm256_cvtepi32_ps(_mm256_madd_epi16(high, weights)));
  }
  plain_row_kernels().mix_rows(out + i, upper + i, lower + i, count - i, upper_weight,
                               lower_weight);
}

// Both source pixels of a column, each times its weight.
__m256 weighted_pair(const float* v, const ColumnWeight<float>& column) {
  const __m256 pair = _mm256_loadu_ps(v + size_t{column.index} * 4);
  const __m256 both =
      _mm256_castpd_ps(_mm256_broadcast_sd(reinterpret_cast<const double*>(&column.near)));
  const __m256 weights = _mm256_permutevar_ps(both, _mm256_setr_epi32(0, 0, 0, 0, 1, 1, 1, 1));
  return _mm256_mul_ps(pair, weights);
}

__m256i mixed_two(const float* v, const ColumnWeight<float>* columns, __m256 bias) {
  const __m256 first = weighted_pair(v, columns[0]), second = weighted_pair(v, columns[1]);
  const __m256 near = _mm256_permute2f128_ps(first, second, 0x20);
  const __m256 far = _mm256_permute2f128_ps(first, second, 0x31);
  return _mm256_cvttps_epi32(_mm256_add_ps(_mm256_add_ps(near, far), bias));
}

void mix_columns(uint8_t* dst, const float* v, const ColumnWeight<float>* columns, size_t count,
                 float bias) {
  const __m256 b = _mm256_set1_ps(bias);
  const __m256i order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
  size_t x = 0;
  for (; x + 8 <= count; x += 8) {
    const __m256i a =
        _mm256_packs_epi32(mixed_two(v, columns + x, b), mixed_two(v, columns + x + 2, b));
    const __m256i c =
        _mm256_packs_epi32(mixed_two(v, columns + x + 4, b), mixed_two(v, columns + x + 6, b));
    const __m256i packed = _mm256_packus_epi16(a, c);
    Avx2::store(dst + x * 4, _mm256_permutevar8x32_epi32(packed, order));
  }
  plain_row_kernels().mix_columns(dst + x * 4, v, columns + x, count - x, bias);
}

void mix_columns_wide(uint8_t* dst, const float* v, const ColumnWeight<double>* columns,
                      size_t count, double bias) {
  const __m256d b = _mm256_set1_pd(bias);
  for (size_t x = 0; x < count; ++x) {
    const float* from = v + size_t{columns[x].index} * 4;
    const __m256d near =
        _mm256_mul_pd(_mm256_cvtps_pd(_mm_loadu_ps(from)), _mm256_broadcast_sd(&columns[x].near));
    const __m256d far = _mm256_mul_pd(_mm256_cvtps_pd(_mm_loadu_ps(from + 4)),
                                      _mm256_broadcast_sd(&columns[x].far));
    const __m128i whole = _mm256_cvttpd_epi32(_mm256_add_pd(_mm256_add_pd(near, far), b));
    const __m128i packed = _mm_packus_epi16(_mm_packs_epi32(whole, whole), whole);
    const int pixel = _mm_cvtsi128_si32(packed);
    __builtin_memcpy(dst + x * 4, &pixel, 4);
  }
}

using Rows = VectorRows<Avx2>;

}  // namespace

const RowKernels* avx2_row_kernels() {
  static const bool supported = __builtin_cpu_supports("avx2");
  if (!supported) return nullptr;
  // Rotation gathers single pixels, where wider registers gain nothing.
  static const RowKernels kernels = {
      "AVX2",      Rows::blend,      Rows::light,
      Rows::gray,  Rows::reverse,    mix_rows,
      mix_columns, mix_columns_wide, sse2_row_kernels()->rotate_bilinear};
  return &kernels;
}

}  // namespace kestrelon

#else

namespace kestrelon {
const RowKernels* avx2_row_kernels() {
  return nullptr;
}
}  // namespace kestrelon

#endif
