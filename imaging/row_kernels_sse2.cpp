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

// Both pixels of a column, rows mixed, as four 32-bit sums each.
struct MixedPair {
  __m128i left, right;
};

MixedPair mixed_pair(const RowPair& rows, uint32_t index, __m128i weights) {
  const auto at = [&](const uint8_t* row) {
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(row + size_t{index} * 4));
  };
  const __m128i zero = _mm_setzero_si128();
  const __m128i both = _mm_unpacklo_epi8(at(rows.upper), at(rows.lower));
  return {_mm_madd_epi16(_mm_unpacklo_epi8(both, zero), weights),
          _mm_madd_epi16(_mm_unpackhi_epi8(both, zero), weights)};
}

__m128i row_weights(const RowPair& rows) {
  return _mm_set1_epi32(rows.lower_weight << 16 | rows.upper_weight);
}

__m128i mixed_pixel(const RowPair& rows, const ColumnWeight<float>& column, __m128i weights,
                    __m128 bias) {
  const MixedPair pair = mixed_pair(rows, column.index, weights);
  const __m128 near = _mm_mul_ps(_mm_cvtepi32_ps(pair.left), _mm_set1_ps(column.near_weight));
  const __m128 far = _mm_mul_ps(_mm_cvtepi32_ps(pair.right), _mm_set1_ps(column.far_weight));
  return _mm_cvttps_epi32(_mm_add_ps(_mm_add_ps(near, far), bias));
}

void mix(uint8_t* dst, const RowPair& rows, const ColumnWeight<float>* columns, size_t count,
         float bias) {
  const __m128 b = _mm_set1_ps(bias);
  const __m128i weights = row_weights(rows);
  size_t x = 0;
  for (; x + 4 <= count; x += 4) {
    __m128i pixels[4];
    for (size_t k = 0; k < 4; ++k) pixels[k] = mixed_pixel(rows, columns[x + k], weights, b);
    Sse2::store(dst + x * 4, _mm_packus_epi16(_mm_packs_epi32(pixels[0], pixels[1]),
                                              _mm_packs_epi32(pixels[2], pixels[3])));
  }
  plain_row_kernels().mix(dst + x * 4, rows, columns + x, count - x, bias);
}

__m128i mixed_half(__m128i left, __m128i right, const ColumnWeight<double>& column, __m128d bias) {
  const __m128d near = _mm_mul_pd(_mm_cvtepi32_pd(left), _mm_set1_pd(column.near_weight));
  const __m128d far = _mm_mul_pd(_mm_cvtepi32_pd(right), _mm_set1_pd(column.far_weight));
  return _mm_cvttpd_epi32(_mm_add_pd(_mm_add_pd(near, far), bias));
}

void store_pixel(uint8_t* dst, __m128i lanes) {
  const int pixel = _mm_cvtsi128_si32(_mm_packus_epi16(_mm_packs_epi32(lanes, lanes), lanes));
  __builtin_memcpy(dst, &pixel, 4);
}

void mix_wide(uint8_t* dst, const RowPair& rows, const ColumnWeight<double>* columns, size_t count,
              double bias) {
  const __m128d b = _mm_set1_pd(bias);
  const __m128i weights = row_weights(rows);
  for (size_t x = 0; x < count; ++x) {
    const MixedPair pair = mixed_pair(rows, columns[x].index, weights);
    const __m128i low = mixed_half(pair.left, pair.right, columns[x], b);
    const __m128i high =
        mixed_half(_mm_srli_si128(pair.left, 8), _mm_srli_si128(pair.right, 8), columns[x], b);
    store_pixel(dst + x * 4, _mm_unpacklo_epi64(low, high));
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
    store_pixel(dst, _mm_cvttps_epi32(_mm_add_ps(sum, bias)));
  }
}

using Rows = VectorRows<Sse2>;
// Picking single pixels has no better form here than the plain one.
void pick(uint8_t* dst, const uint8_t* src, const int32_t* columns, size_t count) {
  plain_row_kernels().pick(dst, src, columns, count);
}

constexpr RowKernels kSse2 = {"SSE2", Rows::blend, Rows::light, Rows::gray,     Rows::reverse,
                              pick,   mix,         mix_wide,    rotate_bilinear};

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
