// The vector loops, written once for both register widths. A file that includes this defines the
// operations of its instruction set in a struct V and instantiates VectorRows<V>; nothing here may
// call a function shared with other files, which would be compiled for the wrong processor.
#pragma once

#include "imaging/row_kernels.h"

namespace kestrelon {

/// V: Int (integer register), kPixels, and static operations named after what they do per lane.
template <class V>
struct VectorRows {
  using Int = typename V::Int;

  static constexpr size_t kLongRow = 256;

  /// floor(x / 255) of x - 1, per 16-bit lane: 257 / 65536 is 1 / 255 as close as needed.
  static Int div255_of_previous(Int x_plus_1) { return V::mul_high16(x_plus_1, V::set16(257)); }

  /// All four bytes of each pixel times factor / 255, truncated; `factor` in 16-bit lanes.
  static Int scale(Int pixels, Int factor) {
    const Int one = V::set16(1), low_bytes = V::set16(0x00FF);
    const Int even = V::add16(V::mul16(V::bit_and(pixels, low_bytes), factor), one);
    const Int odd = V::add16(V::mul16(V::shift_right16(pixels, 8), factor), one);
    return V::bit_or(div255_of_previous(even), V::shift_left16(div255_of_previous(odd), 8));
  }

  template <bool kGlobal, bool kKeepAlpha>
  static void blend_line(uint8_t* dst, const uint8_t* src, size_t width, uint32_t global) {
    const Int alpha_mask = V::set32(0xFF000000u), zero = V::zero();
    const Int factor = V::set16(static_cast<int16_t>(global));
    size_t x = 0;
    // Stores that lie across two cache lines cost a long row more than some single pixels.
    if (width >= kLongRow) {
      for (; reinterpret_cast<uintptr_t>(dst + x * 4) % sizeof(Int) >= 4 && x < V::kPixels; ++x)
        blend_pixel(dst + x * 4, src + x * 4, global, kKeepAlpha);
    }
    for (; x + V::kPixels <= width; x += V::kPixels) {
      Int s = V::load(src + x * 4);
      if (V::no_bits(s, alpha_mask)) continue;
      if (!kGlobal && !kKeepAlpha && V::all_bits(s, alpha_mask)) {
        V::store(dst + x * 4, s);
        continue;
      }
      s = V::and_not(V::equal16(V::spread_alpha16(s), zero), s);
      if (kGlobal) s = scale(s, factor);
      const Int d = V::load(dst + x * 4);
      const Int rest = V::bit_xor(V::spread_alpha16(s), V::set16(0x00FF));
      Int out = V::add_saturated8(s, scale(d, rest));
      if (kKeepAlpha) out = V::bit_or(V::and_not(alpha_mask, out), V::bit_and(alpha_mask, d));
      V::store(dst + x * 4, out);
    }
    for (; x < width; ++x) blend_pixel(dst + x * 4, src + x * 4, global, kKeepAlpha);
  }

  static void blend(uint8_t* dst, ptrdiff_t dst_stride, const uint8_t* src, ptrdiff_t src_stride,
                    size_t width, size_t rows, uint32_t global, bool keep_alpha) {
    auto* line = global == 255 ? (keep_alpha ? blend_line<false, true> : blend_line<false, false>)
                               : (keep_alpha ? blend_line<true, true> : blend_line<true, false>);
    if (rows > 1 && dst_stride < 0) {
      // Processors fetch ahead in rising order only.
      const auto last = static_cast<ptrdiff_t>(rows - 1);
      dst += last * dst_stride;
      src += last * src_stride;
      dst_stride = -dst_stride;
      src_stride = -src_stride;
    }
    if (rows > 1 && dst_stride == src_stride && dst_stride == static_cast<ptrdiff_t>(width * 4)) {
      width *= rows;
      rows = 1;
    }
    for (; rows > 0; --rows, dst += dst_stride, src += src_stride) line(dst, src, width, global);
  }

  static void light(uint8_t* dst, const uint8_t* src, size_t count, const LightTable& table) {
    size_t x = 0;
    for (; x + V::kPixels <= count; x += V::kPixels) {
      const Int p = V::load(src + x * 4);
      const Int delta = V::look_up_alpha(table.delta.data(), src + x * 4, p);
      Int out;
      if (table.lighter) {
        const Int alpha16 = V::spread_alpha16(p);
        const Int alpha = V::bit_or(alpha16, V::shift_left16(alpha16, 8));
        const Int ceiling = V::bit_or(alpha, V::equal8(alpha, V::zero()));
        out = V::min8(V::add_saturated8(p, delta), ceiling);
        out =
            V::bit_or(V::and_not(V::set32(0xFF000000u), out), V::bit_and(V::set32(0xFF000000u), p));
      } else {
        out = V::sub_saturated8(p, delta);
      }
      V::store(dst + x * 4, out);
    }
    plain_row_kernels().light(dst + x * 4, src + x * 4, count - x, table);
  }

  static void gray(uint8_t* dst, const uint8_t* src, size_t count, const GrayWeights& weights) {
    const Int weight =
        V::set16_pattern(weights.thousandths[0], weights.thousandths[1], weights.thousandths[2], 0);
    const Int bend =
        V::set16_pattern(weights.deviation[0], weights.deviation[1], weights.deviation[2], 0);
    const Int alpha_mask = V::set32(0xFF000000u), zero = V::zero();
    size_t x = 0;
    for (; x + V::kPixels <= count; x += V::kPixels) {
      const Int p = V::load(src + x * 4);
      const Int low = V::widen_low8(p), high = V::widen_high8(p);
      const Int sum =
          V::add32(V::add_pairs32(V::multiply_add16(low, weight), V::multiply_add16(high, weight)),
                   V::set32(500));
      const Int deviation =
          V::add_pairs32(V::multiply_add16(low, bend), V::multiply_add16(high, bend));
      // The factor is a little above 1/1000; sums are whole and below 2^18, so no quotient moves.
      const Int value = V::truncate(V::multiply(V::to_float(sum), V::set_float(0.001000001f)));
      const Int half = V::equal32(V::multiply_add16(value, V::set32(1000)), sum);
      // On an exact half: down if the deviation is negative, or zero with an odd value.
      const Int is_odd =
          V::and_not(V::equal32(V::bit_and(value, V::set32(1)), zero), V::equal32(deviation, zero));
      const Int down = V::bit_and(half, V::bit_or(V::greater32(zero, deviation), is_odd));
      const Int g = V::add32(value, down);
      const Int colour = V::bit_or(g, V::bit_or(V::shift_left32(g, 8), V::shift_left32(g, 16)));
      const Int skipped = V::equal32(V::bit_and(p, alpha_mask), zero);
      const Int keep = V::bit_or(alpha_mask, skipped);
      V::store(dst + x * 4, V::bit_or(V::bit_and(keep, p), V::and_not(keep, colour)));
    }
    plain_row_kernels().gray(dst + x * 4, src + x * 4, count - x, weights);
  }

  static void reverse(uint8_t* dst, const uint8_t* src, size_t count) {
    size_t x = 0;
    for (; x + V::kPixels <= count; x += V::kPixels)
      V::store(dst + x * 4, V::reverse32(V::load(src + (count - x - V::kPixels) * 4)));
    plain_row_kernels().reverse(dst + x * 4, src, count - x);
  }
};

}  // namespace kestrelon
