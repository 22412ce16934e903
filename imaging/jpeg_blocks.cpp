#include "imaging/jpeg_blocks.h"

#include <algorithm>

namespace kestrelon::jpeg {
namespace {

constexpr int kConstBits = 14;
constexpr int kPassBits = 5;  // fraction kept between rows and columns

// cos(n * pi / 16) / 2 in fixed point; the first row of the transform has 1 / sqrt(8), which is n
// = 4.
constexpr int32_t kCos[8] = {8192, 8035, 7568, 6811, 5793, 4551, 3135, 1598};

// Even outputs come of the sums of mirrored inputs, odd ones of their differences.
void transform_8(const int32_t* in, int stride, int32_t* out, int shift) {
  int32_t sum[4], difference[4];
  for (int i = 0; i < 4; ++i) {
    sum[i] = in[i * stride] + in[(7 - i) * stride];
    difference[i] = in[i * stride] - in[(7 - i) * stride];
  }
  const int32_t half = 1 << (shift - 1);
  const auto put = [&](int n, int32_t value) { out[n * stride] = (value + half) >> shift; };
  const int32_t outer = sum[0] + sum[3], inner = sum[1] + sum[2];
  const int32_t outer_difference = sum[0] - sum[3], inner_difference = sum[1] - sum[2];
  put(0, (outer + inner) * kCos[4]);
  put(4, (outer - inner) * kCos[4]);
  put(2, outer_difference * kCos[2] + inner_difference * kCos[6]);
  put(6, outer_difference * kCos[6] - inner_difference * kCos[2]);
  const auto [a, b, c, d] = difference;
  put(1, a * kCos[1] + b * kCos[3] + c * kCos[5] + d * kCos[7]);
  put(3, a * kCos[3] - b * kCos[7] - c * kCos[1] - d * kCos[5]);
  put(5, a * kCos[5] - b * kCos[1] + c * kCos[7] + d * kCos[3]);
  put(7, a * kCos[7] - b * kCos[5] + c * kCos[3] - d * kCos[1]);
}

}  // namespace

Divisors scale_divisors(const std::array<uint8_t, 64>& base, int quality) {
  quality = std::clamp(quality, 1, 100);
  const int percent = quality < 50 ? 5000 / quality : 200 - 2 * quality;
  Divisors out;
  for (size_t i = 0; i < out.size(); ++i)
    out[i] = static_cast<uint8_t>(std::clamp((base[i] * percent + 50) / 100, 1, 255));
  return out;
}

void transform_and_quantise(Block& block, const Divisors& divisors) {
  int32_t work[64];
  std::copy(block.begin(), block.end(), work);
  for (int row = 0; row < 8; ++row)
    transform_8(work + 8 * row, 1, work + 8 * row, kConstBits - kPassBits);
  for (int column = 0; column < 8; ++column)
    transform_8(work + column, 8, work + column, kConstBits);
  for (size_t i = 0; i < block.size(); ++i) {
    const int32_t divisor = divisors[i] << kPassBits;
    const int32_t size = (std::abs(work[i]) + divisor / 2) / divisor;
    block[i] = static_cast<int16_t>(std::min(size, 1023) * (work[i] < 0 ? -1 : 1));
  }
}

void split_row(const uint8_t* pixels, size_t count, uint8_t* y, uint8_t* cb, uint8_t* cr) {
  constexpr int32_t kHalf = 1 << 15;
  // 16-bit fixed point; each row of weights adds up to 65536 or 0. The differences stay just below
  // 256 at full saturation.
  constexpr int32_t kCentre = (128 << 16) + kHalf - 1;
  for (size_t i = 0; i < count; ++i, pixels += 4) {
    const int32_t blue = pixels[0], green = pixels[1], red = pixels[2];
    y[i] = static_cast<uint8_t>((19595 * red + 38470 * green + 7471 * blue + kHalf) >> 16);
    cb[i] = static_cast<uint8_t>((-11059 * red - 21709 * green + 32768 * blue + kCentre) >> 16);
    cr[i] = static_cast<uint8_t>((32768 * red - 27439 * green - 5329 * blue + kCentre) >> 16);
  }
}

}  // namespace kestrelon::jpeg
