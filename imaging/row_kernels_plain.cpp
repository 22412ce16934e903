#include <algorithm>
#include <cstring>
#include <type_traits>

#include "imaging/premultiply.h"
#include "imaging/row_kernels.h"

namespace kestrelon {

void blend_pixel(uint8_t* dst, const uint8_t* src, uint32_t global, bool keep_alpha) {
  const uint32_t alpha = src[3];
  if (alpha == 0) return;
  const uint32_t rest = 255 - div255(alpha * global);
  const int channels = keep_alpha ? 3 : 4;
  for (int c = 0; c < channels; ++c) {
    const uint32_t sum = div255(src[c] * global) + div255(dst[c] * rest);
    dst[c] = static_cast<uint8_t>(std::min(sum, 255u));
  }
}

namespace {

void blend(uint8_t* dst, ptrdiff_t dst_stride, const uint8_t* src, ptrdiff_t src_stride,
           size_t width, size_t rows, uint32_t global, bool keep_alpha) {
  for (; rows > 0; --rows, dst += dst_stride, src += src_stride) {
    for (size_t x = 0; x < width; ++x) blend_pixel(dst + x * 4, src + x * 4, global, keep_alpha);
  }
}

void light(uint8_t* dst, const uint8_t* src, size_t count, const LightTable& table) {
  for (; count > 0; --count, dst += 4, src += 4) {
    const int alpha = src[3];
    const int delta = static_cast<int>(table.delta[src[3]] & 0xFF);
    const int ceiling = alpha == 0 ? 255 : alpha;
    for (int c = 0; c < 3; ++c) {
      const int value =
          table.lighter ? std::min(src[c] + delta, ceiling) : std::max(src[c] - delta, 0);
      dst[c] = static_cast<uint8_t>(value);
    }
    dst[3] = static_cast<uint8_t>(alpha);
  }
}

void gray(uint8_t* dst, const uint8_t* src, size_t count, const GrayWeights& weights) {
  for (; count > 0; --count, dst += 4, src += 4) {
    int32_t sum = 500, deviation = 0;
    for (size_t c = 0; c < 3; ++c) {
      sum += src[c] * weights.thousandths[c];
      deviation += src[c] * weights.deviation[c];
    }
    int32_t value = sum / 1000;
    const bool half = value * 1000 == sum;
    if (half && (deviation < 0 || (deviation == 0 && (value & 1)))) --value;
    const bool skipped = src[3] == 0;
    for (int c = 0; c < 3; ++c) dst[c] = skipped ? src[c] : static_cast<uint8_t>(value);
    dst[3] = src[3];
  }
}

void reverse(uint8_t* dst, const uint8_t* src, size_t count) {
  for (size_t x = 0; x < count; ++x) std::memcpy(dst + x * 4, src + (count - 1 - x) * 4, 4);
}

void pick(uint8_t* dst, const uint8_t* src, size_t, const int32_t* columns, size_t count) {
  for (size_t x = 0; x < count; ++x) std::memcpy(dst + x * 4, src + ptrdiff_t{columns[x]} * 4, 4);
}

void mix_pixel(auto* dst, const uint8_t* src, int32_t left, int32_t right) {
  for (size_t c = 0; c < 4; ++c)
    dst[c] =
        static_cast<std::remove_reference_t<decltype(*dst)>>(src[c] * left + src[c + 4] * right);
}

void mix_across(int16_t* dst, const uint8_t* src, const uint32_t* index, const ColumnQuads&,
                const NarrowColumn* columns, size_t count) {
  for (size_t x = 0; x < count; ++x) {
    const int8_t* weights = columns[x].weights;
    mix_pixel(dst + x * 4, src + size_t{index[x]} * 4, weights[0], weights[1]);
  }
}

void mix_across_wide(float* dst, const uint8_t* src, const uint32_t* index, const ColumnQuads&,
                     const WideColumn* columns, size_t count) {
  for (size_t x = 0; x < count; ++x)
    mix_pixel(dst + x * 4, src + size_t{index[x]} * 4, columns[x].left, columns[x].right);
}

void mix_down(uint8_t* dst, const int16_t* upper, const int16_t* lower, size_t count,
              const RowMix& mix) {
  for (size_t i = 0; i < count; ++i) {
    const int32_t sum = upper[i] * mix.upper_weight + lower[i] * mix.lower_weight;
    dst[i] = static_cast<uint8_t>(sum / mix.divisor);
  }
}

void mix_down_wide(uint8_t* dst, const float* upper, const float* lower, size_t count,
                   const RowMix& mix) {
  for (size_t i = 0; i < count; ++i) {
    const int64_t sum = static_cast<int64_t>(upper[i]) * mix.upper_weight +
                        static_cast<int64_t>(lower[i]) * mix.lower_weight;
    dst[i] = static_cast<uint8_t>(sum / mix.divisor);
  }
}

void rotate_bilinear(uint8_t* dst, const RotatedRun& run, size_t count) {
  constexpr int64_t kHalf = int64_t{1} << 31;
  int64_t px = run.x - kHalf, py = run.y - kHalf;
  for (; count > 0; --count, dst += 4, px += run.dx, py += run.dy) {
    const int64_t x = std::max<int64_t>(px, 0), y = std::max<int64_t>(py, 0);
    const auto column = static_cast<ptrdiff_t>(x >> 32);
    const auto line = static_cast<ptrdiff_t>(y >> 32);
    const float fx = static_cast<float>((x >> 8) & 0xFFFFFF) * 0x1p-24f;
    const float fy = static_cast<float>((y >> 8) & 0xFFFFFF) * 0x1p-24f;
    const uint8_t* upper = run.top + line * run.stride + column * 4;
    const uint8_t* lower = upper + (line < run.last_y ? run.stride : 0);
    const int right = column < run.last_x ? 4 : 0;
    for (int c = 0; c < 4; ++c) {
      const float left_value = upper[c] * (1 - fy) + lower[c] * fy;
      const float right_value = upper[c + right] * (1 - fy) + lower[c + right] * fy;
      // The bias keeps rounding errors from pulling a flat area below its value.
      dst[c] = static_cast<uint8_t>((left_value * (1 - fx) + right_value * fx) + 0x1p-13f);
    }
  }
}

void rotate_nearest(uint8_t* dst, const RotatedRun& run, size_t count) {
  int64_t x = run.x, y = run.y;
  for (; count > 0; --count, dst += 4, x += run.dx, y += run.dy) {
    const uint8_t* pixel = run.top + static_cast<ptrdiff_t>(y >> 32) * run.stride;
    std::memcpy(dst, pixel + static_cast<ptrdiff_t>(x >> 32) * 4, 4);
  }
}

constexpr RowKernels kPlain = {"plain",  blend,         light,           gray,
                               reverse,  pick,          mix_across,      mix_across_wide,
                               mix_down, mix_down_wide, rotate_bilinear, rotate_nearest};

}  // namespace

const RowKernels& plain_row_kernels() {
  return kPlain;
}

}  // namespace kestrelon
