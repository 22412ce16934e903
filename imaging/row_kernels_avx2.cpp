#include "imaging/row_kernels.h"

#if defined(__AVX2__)

#include <immintrin.h>

#include "imaging/row_kernels_simd.h"
#include "imaging/row_mix_simd.h"

namespace kestrelon {
namespace {

struct Avx2 {
  using Int = __m256i;
  using Float = __m256;
  static constexpr size_t kPixels = 8;

  static Int load(const void* p) { return _mm256_loadu_si256(static_cast<const Int*>(p)); }
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
  static Int equal16(Int a, Int b) { return _mm256_cmpeq_epi16(a, b); }
  static bool no_bits(Int v, Int mask) { return _mm256_testz_si256(v, mask) != 0; }
  static bool all_bits(Int v, Int mask) { return _mm256_testc_si256(v, mask) != 0; }
  static Int add_saturated8(Int a, Int b) { return _mm256_adds_epu8(a, b); }
  static Int sub_saturated8(Int a, Int b) { return _mm256_subs_epu8(a, b); }
  static Int min8(Int a, Int b) { return _mm256_min_epu8(a, b); }
  static Int widen_low8(Int v) { return _mm256_unpacklo_epi8(v, zero()); }
  static Int widen_high8(Int v) { return _mm256_unpackhi_epi8(v, zero()); }
  static __m256 to_float(Int v) { return _mm256_cvtepi32_ps(v); }
  static __m256 multiply(__m256 a, __m256 b) { return _mm256_mul_ps(a, b); }
  static Int truncate(__m256 v) { return _mm256_cvttps_epi32(v); }
  static __m256 load_floats(const float* p) { return _mm256_loadu_ps(p); }
  static __m256 add(__m256 a, __m256 b) { return _mm256_add_ps(a, b); }
  static __m256 multiply_add(__m256 a, __m256 b, __m256 c) { return _mm256_fmadd_ps(a, b, c); }
  static __m256 subtract(__m256 a, __m256 b) { return _mm256_sub_ps(a, b); }
  static __m256 least(__m256 a, __m256 b) { return _mm256_min_ps(a, b); }
  static bool any_less(__m256 a, __m256 b) {
    return _mm256_movemask_ps(_mm256_cmp_ps(a, b, _CMP_LT_OQ)) != 0;
  }
  static Int sub32(Int a, Int b) { return _mm256_sub_epi32(a, b); }
  static Int sign32(Int v) { return _mm256_srai_epi32(v, 31); }
  static Int mul_low32(Int a, Int b) { return _mm256_mullo_epi32(a, b); }
  static Int unpack_low16(Int a, Int b) { return _mm256_unpacklo_epi16(a, b); }
  static Int unpack_high16(Int a, Int b) { return _mm256_unpackhi_epi16(a, b); }
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
  /// Bytes out of 32-bit lanes: pairs in the order that unpacking made, or all in rising order.
  static Int pack_unpacked(Int a, Int b, Int c, Int d) {
    return _mm256_permute4x64_epi64(
        _mm256_packus_epi16(_mm256_packs_epi32(a, b), _mm256_packs_epi32(c, d)), 0xD8);
  }
  static Int pack_in_order(Int a, Int b, Int c, Int d) {
    return _mm256_permutevar8x32_epi32(
        _mm256_packus_epi16(_mm256_packs_epi32(a, b), _mm256_packs_epi32(c, d)),
        _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
  }
  static Int look_up_alpha(const uint32_t* table, const uint8_t*, Int pixels) {
    return _mm256_i32gather_epi32(reinterpret_cast<const int*>(table),
                                  _mm256_srli_epi32(pixels, 24), 4);
  }
};

// Eight pixels out of kBlocks registers' worth of the row, each place counted from the first of
// them; the shuffle looks at the lowest three bits of a place only. Gathers are slow where the
// processor guards them.
template <size_t kBlocks>
__m256i picked(const uint8_t* from, __m256i places) {
  const auto block = [&](size_t k) {
    return _mm256_permutevar8x32_epi32(Avx2::load(from + k * 32), places);
  };
  // Selections look at the highest bit of a lane.
  const auto either = [&](__m256i a, __m256i b, int bit) {
    return _mm256_castps_si256(
        _mm256_blendv_ps(_mm256_castsi256_ps(a), _mm256_castsi256_ps(b),
                         _mm256_castsi256_ps(_mm256_slli_epi32(places, 31 - bit))));
  };
  if constexpr (kBlocks == 1) return block(0);
  if constexpr (kBlocks == 2) return either(block(0), block(1), 3);
  if constexpr (kBlocks == 3) return either(either(block(0), block(1), 3), block(2), 4);
  if constexpr (kBlocks == 4)
    return either(either(block(0), block(1), 3), either(block(2), block(3), 3), 4);
}

template <size_t kBlocks>
void pick_near(uint8_t* dst, const uint8_t* src, size_t width, const int32_t* columns,
               size_t count) {
  constexpr int32_t kReach = kBlocks * 8;
  const size_t least = columns[0] <= columns[count - 1] ? 0 : 7;
  const auto last_base = static_cast<int32_t>(width) - kReach;
  size_t x = 0;
  for (; x + 8 <= count; x += 8) {
    const int32_t first = columns[x + least];
    const int32_t base = first < last_base ? first : last_base;
    if (columns[x + 7 - least] - base >= kReach) {
      plain_row_kernels().pick(dst + x * 4, src, width, columns + x, 8);
      continue;
    }
    const __m256i places = _mm256_sub_epi32(Avx2::load(columns + x), _mm256_set1_epi32(base));
    Avx2::store(dst + x * 4, picked<kBlocks>(src + ptrdiff_t{base} * 4, places));
  }
  plain_row_kernels().pick(dst + x * 4, src, width, columns + x, count - x);
}

void pick(uint8_t* dst, const uint8_t* src, size_t width, const int32_t* columns, size_t count) {
  if (count < 8) return plain_row_kernels().pick(dst, src, width, columns, count);
  // What eight columns span at most where they lie evenly.
  const int32_t all_signed = columns[count - 1] - columns[0];
  const auto all = static_cast<size_t>(all_signed < 0 ? -all_signed : all_signed);
  const size_t reach = all * 7 / (count - 1) + 2;
  if (reach <= 8 && width >= 8) return pick_near<1>(dst, src, width, columns, count);
  if (reach <= 16 && width >= 16) return pick_near<2>(dst, src, width, columns, count);
  if (reach <= 24 && width >= 24) return pick_near<3>(dst, src, width, columns, count);
  if (reach <= 32 && width >= 32) return pick_near<4>(dst, src, width, columns, count);
  plain_row_kernels().pick(dst, src, width, columns, count);
}

// A pixel and its right neighbour, in every 64-bit lane.
__m256i load_pair(const uint8_t* src, uint32_t index) {
  const uint8_t* p = src + size_t{index} * 4;
  return _mm256_broadcastq_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
}

// Eight of the eight pixels from `first`, in the order of their places.
__m256i quad(const uint8_t* src, int32_t first, const int32_t* places) {
  return _mm256_permutevar8x32_epi32(Avx2::load(src + ptrdiff_t{first} * 4), Avx2::load(places));
}

void mix_across(int16_t* dst, const uint8_t* src, const uint32_t* index, const ColumnQuads& quads,
                const NarrowColumn* columns, size_t count) {
  const __m256i side_by_side =
      _mm256_setr_epi8(0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15, 0, 4, 1, 5, 2, 6, 3, 7,
                       8, 12, 9, 13, 10, 14, 11, 15);
  const auto weigh = [&](size_t x, __m256i pixels) {
    const __m256i pairs = _mm256_shuffle_epi8(pixels, side_by_side);
    const __m256i weights = Avx2::load(columns + x);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + x * 4),
                        _mm256_maddubs_epi16(pairs, weights));
  };
  const auto mixed = [&](size_t x) {
    const __m256i low =
        _mm256_blend_epi32(load_pair(src, index[x]), load_pair(src, index[x + 1]), 0x0C);
    const __m256i high =
        _mm256_blend_epi32(load_pair(src, index[x + 2]), load_pair(src, index[x + 3]), 0xC0);
    weigh(x, _mm256_blend_epi32(low, high, 0xF0));
  };
  if (count < 4) return plain_row_kernels().mix_across(dst, src, index, quads, columns, count);
  for (size_t x = 0; x < count - 4; x += 4) {
    const int32_t first = quads.first(x / 4);
    if (first < 0) {
      mixed(x);
    } else {
      weigh(x, quad(src, first, quads.places(x / 4)));
    }
  }
  mixed(count - 4);  // may do some columns again
}

void mix_across_wide(float* dst, const uint8_t* src, const uint32_t* index,
                     const ColumnQuads& quads, const WideColumn* columns, size_t count) {
  const __m256i side_by_side =
      _mm256_setr_epi8(0, -1, 4, -1, 1, -1, 5, -1, 2, -1, 6, -1, 3, -1, 7, -1, 0, -1, 4, -1, 1, -1,
                       5, -1, 2, -1, 6, -1, 3, -1, 7, -1);
  const __m256i first = _mm256_setr_epi32(0, 0, 0, 0, 1, 1, 1, 1);
  const __m256i second = _mm256_setr_epi32(2, 2, 2, 2, 3, 3, 3, 3);
  const __m256i side_by_side_high = _mm256_or_si256(side_by_side, _mm256_set1_epi16(8));
  // Two columns at x: their pixels and weights.
  const auto weigh = [&](size_t x, __m256i pairs, __m256i weights) {
    _mm256_storeu_ps(dst + x * 4, _mm256_cvtepi32_ps(_mm256_madd_epi16(pairs, weights)));
  };
  const auto both = [&](size_t x) {
    return _mm256_shuffle_epi8(
        _mm256_blend_epi32(load_pair(src, index[x]), load_pair(src, index[x + 1]), 0xF0),
        side_by_side);
  };
  const auto four = [&](size_t x, __m256i first_pairs, __m256i second_pairs) {
    const __m256i weights =
        _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(columns + x)));
    weigh(x, first_pairs, _mm256_permutevar8x32_epi32(weights, first));
    weigh(x + 2, second_pairs, _mm256_permutevar8x32_epi32(weights, second));
  };
  if (count < 4) return plain_row_kernels().mix_across_wide(dst, src, index, quads, columns, count);
  for (size_t x = 0; x < count - 4; x += 4) {
    const int32_t start = quads.first(x / 4);
    if (start < 0) {
      four(x, both(x), both(x + 2));
    } else {
      const __m256i pixels = quad(src, start, quads.places(x / 4));
      four(x, _mm256_shuffle_epi8(pixels, side_by_side),
           _mm256_shuffle_epi8(pixels, side_by_side_high));
    }
  }
  four(count - 4, both(count - 4), both(count - 2));  // may do some columns again
}

void store_pixel(uint8_t* dst, __m128i lanes) {
  const int pixel = _mm_cvtsi128_si32(_mm_packus_epi16(_mm_packs_epi32(lanes, lanes), lanes));
  __builtin_memcpy(dst, &pixel, 4);
}

// Two neighbouring pixels as floats, the left one in the lower half; at the last column one twice.
__m256 sample_pair(const uint8_t* p, bool has_right) {
  __m128i bytes;
  if (has_right) {
    bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
  } else {
    int pixel;
    __builtin_memcpy(&pixel, p, 4);
    bytes = _mm_set1_epi32(pixel);
  }
  return _mm256_cvtepi32_ps(_mm256_cvtepu8_epi32(bytes));
}

__m128 fraction(int64_t position) {
  const auto bits = static_cast<int32_t>(position >> 8 & 0xFFFFFF);
  return _mm_mul_ss(_mm_cvtsi32_ss(_mm_setzero_ps(), bits), _mm_set_ss(0x1p-24f));
}

constexpr float kRotationBias = 0x1p-13f;
constexpr int64_t kHalfPixel = int64_t{1} << 31;

// One sample, at the edges too.
void rotate_pixel(uint8_t* dst, const RotatedRun& run, int64_t px, int64_t py) {
  const int64_t x = px < 0 ? 0 : px, y = py < 0 ? 0 : py;
  const auto column = static_cast<ptrdiff_t>(x >> 32);
  const auto line = static_cast<ptrdiff_t>(y >> 32);
  const uint8_t* from = run.top + line * run.stride + column * 4;
  const bool has_right = column < run.last_x;
  const __m256 one = _mm256_set1_ps(1);
  const __m256 fy = _mm256_broadcastss_ps(fraction(y));
  const __m128 fx = _mm_broadcastss_ps(fraction(x));
  const __m256 upper = sample_pair(from, has_right);
  const __m256 lower = sample_pair(from + (line < run.last_y ? run.stride : 0), has_right);
  const __m256 mixed =
      _mm256_add_ps(_mm256_mul_ps(upper, _mm256_sub_ps(one, fy)), _mm256_mul_ps(lower, fy));
  const __m128 left =
      _mm_mul_ps(_mm256_castps256_ps128(mixed), _mm_sub_ps(_mm256_castps256_ps128(one), fx));
  const __m128 right = _mm_mul_ps(_mm256_extractf128_ps(mixed, 1), fx);
  store_pixel(dst,
              _mm_cvttps_epi32(_mm_add_ps(_mm_add_ps(left, right), _mm_set1_ps(kRotationBias))));
}

// Two neighbouring pixels as floats, by a shuffle that stays inside its lanes.
__m256 widened_pair(const uint8_t* p) {
  const __m256i order =
      _mm256_setr_epi8(0, -1, -1, -1, 1, -1, -1, -1, 2, -1, -1, -1, 3, -1, -1, -1, 4, -1, -1, -1, 5,
                       -1, -1, -1, 6, -1, -1, -1, 7, -1, -1, -1);
  return _mm256_cvtepi32_ps(_mm256_shuffle_epi8(load_pair(p, 0), order));
}

// Four samples away from the edges, the first at (x, y). Factors go through memory, as shuffles are
// what the loop has least room for.
void rotate_four(uint8_t* dst, const RotatedRun& run, int64_t x, int64_t y, __m256i steps_x,
                 __m256i steps_y) {
  const __m256i low_bits = _mm256_set1_epi64x(0xFFFFFF);
  const auto fraction_bits = [&](int64_t first, __m256i steps) {
    const __m256i places = _mm256_add_epi64(_mm256_set1_epi64x(first), steps);
    return _mm256_and_si256(_mm256_srli_epi64(places, 8), low_bits);
  };
  // Of each sample the fraction across, then that down, and what is left of 1.
  const __m256i bits =
      _mm256_or_si256(fraction_bits(x, steps_x), _mm256_slli_epi64(fraction_bits(y, steps_y), 32));
  const __m256 fractions = _mm256_mul_ps(_mm256_cvtepi32_ps(bits), _mm256_set1_ps(0x1p-24f));
  alignas(32) float far[8], near[8];
  _mm256_store_ps(far, fractions);
  _mm256_store_ps(near, _mm256_sub_ps(_mm256_set1_ps(1), fractions));
  __m256 sides[4];
#pragma GCC unroll 4
  for (int k = 0; k < 4; ++k, x += run.dx, y += run.dy) {
    const uint8_t* from = run.top + static_cast<ptrdiff_t>(y >> 32) * run.stride +
                          static_cast<ptrdiff_t>(x >> 32) * 4;
    const __m256 upper = _mm256_mul_ps(widened_pair(from), _mm256_broadcast_ss(&near[2 * k + 1]));
    const __m256 lower =
        _mm256_mul_ps(widened_pair(from + run.stride), _mm256_broadcast_ss(&far[2 * k + 1]));
    const __m256 across =
        _mm256_blend_ps(_mm256_broadcast_ss(&near[2 * k]), _mm256_broadcast_ss(&far[2 * k]), 0xF0);
    sides[k] = _mm256_mul_ps(_mm256_add_ps(upper, lower), across);
  }
  const __m256 bias = _mm256_set1_ps(kRotationBias);
  const auto sums = [&](__m256 a, __m256 b) {
    const __m256 sum =
        _mm256_add_ps(_mm256_permute2f128_ps(a, b, 0x20), _mm256_permute2f128_ps(a, b, 0x31));
    return _mm256_cvttps_epi32(_mm256_add_ps(sum, bias));
  };
  const __m256i words = _mm256_packs_epi32(sums(sides[0], sides[1]), sums(sides[2], sides[3]));
  const __m256i bytes = _mm256_packus_epi16(words, words);  // 0 2 0 2, 1 3 1 3
  _mm_storeu_si128(
      reinterpret_cast<__m128i*>(dst),
      _mm_unpacklo_epi32(_mm256_castsi256_si128(bytes), _mm256_extracti128_si256(bytes, 1)));
}

void rotate_bilinear(uint8_t* dst, const RotatedRun& run, size_t count) {
  const auto limit_x = static_cast<uint64_t>(run.last_x) << 32;
  const auto limit_y = static_cast<uint64_t>(run.last_y) << 32;
  const auto inside = [&](int64_t x, int64_t y) {
    return static_cast<uint64_t>(x) < limit_x && static_cast<uint64_t>(y) < limit_y;
  };
  const __m256i steps_x = _mm256_setr_epi64x(0, run.dx, 2 * run.dx, 3 * run.dx);
  const __m256i steps_y = _mm256_setr_epi64x(0, run.dy, 2 * run.dy, 3 * run.dy);
  int64_t x = run.x - kHalfPixel, y = run.y - kHalfPixel;
  while (count > 0) {
    // Between two places inside all are.
    if (count >= 4 && inside(x, y) && inside(x + 3 * run.dx, y + 3 * run.dy)) {
      rotate_four(dst, run, x, y, steps_x, steps_y);
      count -= 4;
      dst += 16;
      x += 4 * run.dx;
      y += 4 * run.dy;
    } else {
      rotate_pixel(dst, run, x, y);
      --count;
      dst += 4;
      x += run.dx;
      y += run.dy;
    }
  }
}

// Whole positions of four samples as 32-bit numbers: the high halves of two registers of two.
__m128i whole_places(__m256i positions) {
  const __m256i halves =
      _mm256_permutevar8x32_epi32(positions, _mm256_setr_epi32(1, 3, 5, 7, 1, 3, 5, 7));
  return _mm256_castsi256_si128(halves);
}

// Places are found four at a time, pixels fetched one by one. Offsets are bytes of one picture.
void rotate_nearest(uint8_t* dst, const RotatedRun& run, size_t count) {
  const __m256i step_x = _mm256_set1_epi64x(4 * run.dx), step_y = _mm256_set1_epi64x(4 * run.dy);
  __m256i x = _mm256_add_epi64(_mm256_set1_epi64x(run.x),
                               _mm256_setr_epi64x(0, run.dx, 2 * run.dx, 3 * run.dx));
  __m256i y = _mm256_add_epi64(_mm256_set1_epi64x(run.y),
                               _mm256_setr_epi64x(0, run.dy, 2 * run.dy, 3 * run.dy));
  const __m128i stride = _mm_set1_epi32(static_cast<int>(run.stride));
  size_t i = 0;
  for (; i + 4 <= count; i += 4) {
    alignas(16) int32_t offsets[4];
    const __m128i lines = _mm_mullo_epi32(whole_places(y), stride);
    _mm_store_si128(reinterpret_cast<__m128i*>(offsets),
                    _mm_add_epi32(lines, _mm_slli_epi32(whole_places(x), 2)));
    for (size_t k = 0; k < 4; ++k) __builtin_memcpy(dst + (i + k) * 4, run.top + offsets[k], 4);
    x = _mm256_add_epi64(x, step_x);
    y = _mm256_add_epi64(y, step_y);
  }
  RotatedRun rest = run;
  rest.x += static_cast<int64_t>(i) * run.dx;
  rest.y += static_cast<int64_t>(i) * run.dy;
  plain_row_kernels().rotate_nearest(dst + i * 4, rest, count - i);
}

using Rows = VectorRows<Avx2>;
using Mix = VectorMix<Avx2>;

}  // namespace

const RowKernels* avx2_row_kernels() {
  static const bool supported = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
  if (!supported) return nullptr;
  static const RowKernels kernels = {"AVX2",          Rows::blend,
                                     Rows::light,     Rows::gray,
                                     Rows::reverse,   pick,
                                     mix_across,      mix_across_wide,
                                     Mix::mix_down,   Mix::mix_down_wide,
                                     rotate_bilinear, rotate_nearest};
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
