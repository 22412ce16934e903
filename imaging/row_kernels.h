// The inner loops of drawing and of the transforms: runs of premultiplied pixels, no decisions.
//
// Three sets exist: plain C++, SSE2, AVX2. They give equal bytes for all inputs; the tests hold
// them to that. Pixels are blue, green, red, alpha; no pointer needs an alignment; counts may be 0.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kestrelon {

/// What the light step adds to or takes from each colour byte, by the alpha of the pixel. The value
/// is repeated in the three colour bytes of an entry; the alpha byte is 0.
struct LightTable {
  bool lighter = true;
  std::array<uint32_t, 256> delta{};
};

/// Weights of a gray formula in thousandths, and how far the single-precision weight lies from each
/// of them, in units of 2^-27 thousandths. The deviation decides only what an exact half does.
struct GrayWeights {
  std::array<int16_t, 3> thousandths{};  ///< blue, green, red
  std::array<int16_t, 3> deviation{};
};

/// Where a destination column of a bilinear row takes its value from: the pixels at `index` and
/// `index` + 1, both inside the row. The weights include the division by the whole denominator.
template <class Real>
struct ColumnWeight {
  uint32_t index;
  Real near_weight, far_weight;
};

/// Two source rows, bytes weighed by upper_weight and lower_weight (0 or above, sum at most 32767).
struct RowPair {
  const uint8_t* upper;
  const uint8_t* lower;
  int32_t upper_weight, lower_weight;
};

/// A run along a rotated row: positions in the source in units of 2^-32 pixels, all inside it.
struct RotatedRun {
  const uint8_t* top;  ///< pixel (0, 0) of the source rectangle
  ptrdiff_t stride;    ///< bytes from a picture row to the one below
  int32_t last_x, last_y;
  int64_t x, y;    ///< position of the first pixel
  int64_t dx, dy;  ///< steps from pixel to pixel
};

struct RowKernels {
  const char* name;
  /// Draws `width` by `rows` pixels over `dst`; strides in bytes, either sign. With `keep_alpha`
  /// the alpha bytes of `dst` stay. `global` is 1 to 255.
  void (*blend)(uint8_t* dst, ptrdiff_t dst_stride, const uint8_t* src, ptrdiff_t src_stride,
                size_t width, size_t rows, uint32_t global, bool keep_alpha);
  /// Light step; `dst` and `src` are the same run or do not overlap. Pixels of alpha 0 stay.
  void (*light)(uint8_t* dst, const uint8_t* src, size_t count, const LightTable& table);
  /// Colour to gray under the same rules.
  void (*gray)(uint8_t* dst, const uint8_t* src, size_t count, const GrayWeights& weights);
  /// Whole pixels in reverse order; the runs do not overlap.
  void (*reverse)(uint8_t* dst, const uint8_t* src, size_t count);
  /// Picks single pixels: dst[i] = src[columns[i]].
  void (*pick)(uint8_t* dst, const uint8_t* src, const int32_t* columns, size_t count);
  /// Bilinear row. With v = upper * upper_weight + lower * lower_weight, exact, a byte is the
  /// truncation of (v[index] * near_weight + v[index + 1] * far_weight) + bias, rounded in this
  /// order.
  void (*mix)(uint8_t* dst, const RowPair& rows, const ColumnWeight<float>* columns, size_t count,
              float bias);
  /// The same in double precision.
  void (*mix_wide)(uint8_t* dst, const RowPair& rows, const ColumnWeight<double>* columns,
                   size_t count, double bias);
  /// Bilinear samples of a rotated run, pixel centres at half steps; edge pixels reach to the edge.
  void (*rotate_bilinear)(uint8_t* dst, const RotatedRun& run, size_t count);
};

const RowKernels& plain_row_kernels();
/// Null where the build or the processor lacks them.
const RowKernels* sse2_row_kernels();
const RowKernels* avx2_row_kernels();
/// The fastest set for this processor; chosen once per process.
const RowKernels& row_kernels();

/// One pixel of the blend, for reference and remainders.
void blend_pixel(uint8_t* dst, const uint8_t* src, uint32_t global, bool keep_alpha);

}  // namespace kestrelon
