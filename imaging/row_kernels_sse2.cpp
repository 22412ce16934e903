#include "imaging/row_kernels.h"

#if defined(__SSE2__)

#include <emmintrin.h>

#include "imaging/row_kernels_simd.h"
#include "imaging/row_mix_simd.h"

namespace kestrelon {
namespace {

struct Sse2 {
  using Int = __m128i;
  using Float = __m128;
  static constexpr size_t kPixels = 4;

  static Int load(const void* p) { return _mm_loadu_si128(static_cast<const Int*>(p)); }
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
  static Int equal16(Int a, Int b) { return _mm_cmpeq_epi16(a, b); }
  /// Bits under `mask`, whose 32-bit lanes are alike.
  static bool no_bits(Int v, Int mask) { return all(equal32(bit_and(v, mask), zero())); }
  static bool all_bits(Int v, Int mask) { return all(equal32(bit_and(v, mask), mask)); }
  static bool all(Int lanes) { return _mm_movemask_epi8(lanes) == 0xFFFF; }
  static Int add_saturated8(Int a, Int b) { return _mm_adds_epu8(a, b); }
  static Int sub_saturated8(Int a, Int b) { return _mm_subs_epu8(a, b); }
  static Int min8(Int a, Int b) { return _mm_min_epu8(a, b); }
  static Int widen_low8(Int v) { return _mm_unpacklo_epi8(v, zero()); }
  static Int widen_high8(Int v) { return _mm_unpackhi_epi8(v, zero()); }
  static __m128 to_float(Int v) { return _mm_cvtepi32_ps(v); }
  static __m128 multiply(__m128 a, __m128 b) { return _mm_mul_ps(a, b); }
  static Int truncate(__m128 v) { return _mm_cvttps_epi32(v); }
  static __m128 load_floats(const float* p) { return _mm_loadu_ps(p); }
  static __m128 add(__m128 a, __m128 b) { return _mm_add_ps(a, b); }
  static __m128 multiply_add(__m128 a, __m128 b, __m128 c) {
    return _mm_add_ps(_mm_mul_ps(a, b), c);
  }
  static __m128 subtract(__m128 a, __m128 b) { return _mm_sub_ps(a, b); }
  static __m128 least(__m128 a, __m128 b) { return _mm_min_ps(a, b); }
  static bool any_less(__m128 a, __m128 b) { return _mm_movemask_ps(_mm_cmplt_ps(a, b)) != 0; }
  static Int sub32(Int a, Int b) { return _mm_sub_epi32(a, b); }
  static Int sign32(Int v) { return _mm_srai_epi32(v, 31); }
  static Int mul_low32(Int a, Int b) {
    const Int even = _mm_mul_epu32(a, b);
    const Int odd = _mm_mul_epu32(_mm_srli_epi64(a, 32), _mm_srli_epi64(b, 32));
    return _mm_unpacklo_epi32(_mm_shuffle_epi32(even, 0x08), _mm_shuffle_epi32(odd, 0x08));
  }
  static Int unpack_low16(Int a, Int b) { return _mm_unpacklo_epi16(a, b); }
  static Int unpack_high16(Int a, Int b) { return _mm_unpackhi_epi16(a, b); }
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
  /// Bytes out of 32-bit lanes: pairs in the order that unpacking made, or all in rising order.
  static Int pack_unpacked(Int a, Int b, Int c, Int d) { return pack_in_order(a, b, c, d); }
  static Int pack_in_order(Int a, Int b, Int c, Int d) {
    return _mm_packus_epi16(_mm_packs_epi32(a, b), _mm_packs_epi32(c, d));
  }
  static Int look_up_alpha(const uint32_t* table, const uint8_t* p, Int) {
    return _mm_setr_epi32(static_cast<int>(table[p[3]]), static_cast<int>(table[p[7]]),
                          static_cast<int>(table[p[11]]), static_cast<int>(table[p[15]]));
  }
};

// The channels of a pixel and its right neighbour side by side, as 16-bit lanes.
__m128i load_side_by_side(const uint8_t* src, uint32_t index) {
  const __m128i both = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(src + size_t{index} * 4));
  return _mm_unpacklo_epi8(_mm_unpacklo_epi8(both, _mm_srli_epi64(both, 32)), _mm_setzero_si128());
}

__m128i mixed_narrow(const uint8_t* src, uint32_t index, const NarrowColumn* column) {
  const __m128i weights = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(column));
  return _mm_madd_epi16(load_side_by_side(src, index),
                        _mm_unpacklo_epi8(weights, _mm_setzero_si128()));
}

void mix_across(int16_t* dst, const uint8_t* src, const uint32_t* index, const ColumnQuads& quads,
                const NarrowColumn* columns, size_t count) {
  size_t x = 0;
  for (; x + 2 <= count; x += 2) {
    const __m128i sums = _mm_packs_epi32(mixed_narrow(src, index[x], columns + x),
                                         mixed_narrow(src, index[x + 1], columns + x + 1));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + x * 4), sums);
  }
  plain_row_kernels().mix_across(dst + x * 4, src, index + x, quads, columns + x, count - x);
}

void mix_across_wide(float* dst, const uint8_t* src, const uint32_t* index, const ColumnQuads&,
                     const WideColumn* columns, size_t count) {
  for (size_t x = 0; x < count; ++x) {
    int32_t weights;
    __builtin_memcpy(&weights, columns + x, 4);
    const __m128i sums = _mm_madd_epi16(load_side_by_side(src, index[x]), _mm_set1_epi32(weights));
    _mm_storeu_ps(dst + x * 4, _mm_cvtepi32_ps(sums));
  }
}

void store_pixel(uint8_t* dst, __m128i lanes) {
  const int pixel = _mm_cvtsi128_si32(_mm_packus_epi16(_mm_packs_epi32(lanes, lanes), lanes));
  __builtin_memcpy(dst, &pixel, 4);
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
using Mix = VectorMix<Sse2>;

// Picking single pixels has no better form here than the plain one.
void pick(uint8_t* dst, const uint8_t* src, size_t width, const int32_t* columns, size_t count) {
  plain_row_kernels().pick(dst, src, width, columns, count);
}

void rotate_nearest(uint8_t* dst, const RotatedRun& run, size_t count) {
  plain_row_kernels().rotate_nearest(dst, run, count);
}

constexpr RowKernels kSse2 = {"SSE2",          Rows::blend,
                              Rows::light,     Rows::gray,
                              Rows::reverse,   pick,
                              mix_across,      mix_across_wide,
                              Mix::mix_down,   Mix::mix_down_wide,
                              rotate_bilinear, rotate_nearest};

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
