// The second half of bilinear rows, written once for both register widths; see row_kernels_simd.h.
//
// The exact quotient is found by way of single precision. The approximation is a little above the
// exact value for certain, by less than kExcess, so that its truncation is right or one too much:
// the latter only if its fraction is below kExcess. With a small divisor that cannot be, since the
// fraction of a value that was lifted over a whole number is at least 1 / divisor away from it.
// Otherwise such a block is looked at again in whole numbers; 32 bits suffice for the remainder.
#pragma once

#include "imaging/row_kernels.h"

namespace kestrelon {

/// What an exact weight is multiplied by before it is rounded to single precision: 4 units of that
/// precision up, of which at most three are lost to rounding.
constexpr double kLift = 1 + 0x1p-22;
/// At most seven such units of 255, and a little.
constexpr float kExcess = 1.2e-4f;
/// 1 / kMostUnchecked is above kExcess.
constexpr int32_t kMostUnchecked = 8192;

/// V as in VectorRows, and Float.
template <class V>
struct VectorMix {
  using Int = typename V::Int;
  using Float = typename V::Float;
  static constexpr size_t kBlock = V::kPixels * 4;  // channels

  /// Two rows of 16-bit sums. Block `k` of four covers a quarter of V::kPixels pixels.
  class NarrowSource {
   public:
    using Sum = int16_t;
    explicit NarrowSource(const RowMix& mix)
        : weights_(V::set32(static_cast<uint32_t>(mix.lower_weight) << 16 |
                            static_cast<uint32_t>(mix.upper_weight))),
          factor_(V::set_float(static_cast<float>(kLift / mix.divisor))) {}
    Int exact(const int16_t* upper, const int16_t* lower, size_t k) const {
      const size_t at = k / 2 * V::kPixels * 2;
      const Int u = V::load(upper + at), l = V::load(lower + at);
      const Int pairs = k % 2 == 0 ? V::unpack_low16(u, l) : V::unpack_high16(u, l);
      return V::multiply_add16(pairs, weights_);
    }
    Float approximate(const int16_t* upper, const int16_t* lower, size_t k) const {
      return V::multiply(V::to_float(exact(upper, lower, k)), factor_);
    }
    static Int pack(Int a, Int b, Int c, Int d) { return V::pack_unpacked(a, b, c, d); }

   private:
    Int weights_;
    Float factor_;
  };

  /// Two rows of sums of up to 23 bits, kept as floats.
  class WideSource {
   public:
    using Sum = float;
    explicit WideSource(const RowMix& mix)
        : upper_(V::set32(static_cast<uint32_t>(mix.upper_weight))),
          lower_(V::set32(static_cast<uint32_t>(mix.lower_weight))),
          upper_factor_(V::set_float(static_cast<float>(mix.upper_weight * kLift / mix.divisor))),
          lower_factor_(V::set_float(static_cast<float>(mix.lower_weight * kLift / mix.divisor))) {}
    Int exact(const float* upper, const float* lower, size_t k) const {
      const size_t at = k * V::kPixels;
      return V::add32(V::mul_low32(V::truncate(V::load_floats(upper + at)), upper_),
                      V::mul_low32(V::truncate(V::load_floats(lower + at)), lower_));
    }
    Float approximate(const float* upper, const float* lower, size_t k) const {
      const size_t at = k * V::kPixels;
      return V::multiply_add(V::load_floats(upper + at), upper_factor_,
                             V::multiply(V::load_floats(lower + at), lower_factor_));
    }
    static Int pack(Int a, Int b, Int c, Int d) { return V::pack_in_order(a, b, c, d); }

   private:
    Int upper_, lower_;
    Float upper_factor_, lower_factor_;
  };

  /// `count` is at least kBlock; the last block may do some channels again.
  template <class Source, bool kChecked>
  static void blocks(uint8_t* dst, const typename Source::Sum* upper,
                     const typename Source::Sum* lower, size_t count, const RowMix& mix) {
    const Source source(mix);
    const Float excess = V::set_float(kExcess);
    const Int divisor = V::set32(static_cast<uint32_t>(mix.divisor));
    const auto block = [&](size_t i) __attribute__((always_inline)) {
      Int q[4];
      Float least = V::set_float(1);
#pragma GCC unroll 4
      for (size_t k = 0; k < 4; ++k) {
        const Float value = source.approximate(upper + i, lower + i, k);
        q[k] = V::truncate(value);
        if (kChecked) least = V::least(least, V::subtract(value, V::to_float(q[k])));
      }
      if (kChecked && V::any_less(least, excess)) {
#pragma GCC unroll 4
        for (size_t k = 0; k < 4; ++k) {
          const Int sum = source.exact(upper + i, lower + i, k);
          q[k] = V::add32(q[k], V::sign32(V::sub32(sum, V::mul_low32(q[k], divisor))));
        }
      }
      V::store(dst + i, Source::pack(q[0], q[1], q[2], q[3]));
    };
    for (size_t i = 0; i < count - kBlock; i += kBlock) block(i);
    block(count - kBlock);
  }

  template <class Source>
  static void down(uint8_t* dst, const typename Source::Sum* upper,
                   const typename Source::Sum* lower, size_t count, const RowMix& mix) {
    if (mix.divisor <= kMostUnchecked) {
      blocks<Source, false>(dst, upper, lower, count, mix);
    } else {
      blocks<Source, true>(dst, upper, lower, count, mix);
    }
  }

  static void mix_down(uint8_t* dst, const int16_t* upper, const int16_t* lower, size_t count,
                       const RowMix& mix) {
    if (count < kBlock) return plain_row_kernels().mix_down(dst, upper, lower, count, mix);
    down<NarrowSource>(dst, upper, lower, count, mix);
  }

  static void mix_down_wide(uint8_t* dst, const float* upper, const float* lower, size_t count,
                            const RowMix& mix) {
    if (count < kBlock) return plain_row_kernels().mix_down_wide(dst, upper, lower, count, mix);
    down<WideSource>(dst, upper, lower, count, mix);
  }
};

}  // namespace kestrelon
