#include <algorithm>
#include <cstring>

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

void pick(uint8_t* dst, const uint8_t* src, const int32_t* columns, size_t count) {
  for (size_t x = 0; x < count; ++x) std::memcpy(dst + x * 4, src + ptrdiff_t{columns[x]} * 4, 4);
}

template <class Real>
void mix(uint8_t* dst, const RowPair& rows, const ColumnWeight<Real>* columns, size_t count,
         Real bias) {
  for (size_t x = 0; x < count; ++x) {
    const uint8_t* upper = rows.upper + size_t{columns[x].index} * 4;
    const uint8_t* lower = rows.lower + size_t{columns[x].index} * 4;
    for (size_t c = 0; c < 4; ++c) {
      const int32_t left = upper[c] * rows.upper_weight + lower[c] * rows.lower_weight;
      const int32_t right = upper[c + 4] * rows.upper_weight + lower[c + 4] * rows.lower_weight;
      const Real near = static_cast<Real>(left) * columns[x].near_weight;
      const Real far = static_cast<Real>(right) * columns[x].far_weight;
      dst[x * 4 + c] = static_cast<uint8_t>((near + far) + bias);
    }
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

constexpr RowKernels kPlain = {"plain", blend,      light,       gray,           reverse,
                               pick,    mix<float>, mix<double>, rotate_bilinear};

}  // namespace

const RowKernels& plain_row_kernels() {
  return kPlain;
}

}  // namespace kestrelon
