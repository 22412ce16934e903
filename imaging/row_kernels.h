// The inner loops of drawing and of the transforms: runs of premultiplied pixels, no decisions.
//
// Three sets exist: plain C++, SSE2, AVX2. They give equal bytes for all inputs; the tests hold
// them to that. Pixels are blue, green, red, alpha; no pointer needs an alignment; counts may be 0.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "imaging/column_quads.h"

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

/// Fractions of a column or row that a bilinear weight can tell apart.
constexpr int32_t kMostUnits = 32767;
/// Up to so many, a weight fits a signed byte and a weighed sum of two bytes 15 bits.
constexpr int32_t kMostNarrowUnits = 127;

/// Weights of the two source pixels that make a column; 0 or above, sum at most kMostNarrowUnits.
/// Repeated for each channel.
struct NarrowColumn {
  NarrowColumn() = default;
  NarrowColumn(int32_t left, int32_t right) {
    for (size_t c = 0; c < 8; c += 2) {
      weights[c] = static_cast<int8_t>(left);
      weights[c + 1] = static_cast<int8_t>(right);
    }
  }
  int8_t weights[8];
};

/// The same with a sum of at most kMostUnits.
struct WideColumn {
  int16_t left, right;
};

/// Weights of two rows that were mixed across; 0 or above, sum at most kMostUnits. `divisor` is the
/// sum of the row weights times that of the column weights.
struct RowMix {
  int32_t upper_weight, lower_weight;
  int32_t divisor;
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
  /// Picks single pixels out of a row of `width`: dst[i] = src[columns[i]]. The columns rise or
  /// fall throughout; neighbours may be equal.
  void (*pick)(uint8_t* dst, const uint8_t* src, size_t width, const int32_t* columns,
               size_t count);
  /// First half of a bilinear row: weighed sums of the bytes of pixels index[x] and index[x] + 1,
  /// both inside the row, for each channel of `count` columns; exact.
  /// `quads` are made of the same index, in the order of the function.
  void (*mix_across)(int16_t* dst, const uint8_t* src, const uint32_t* index,
                     const ColumnQuads& quads, const NarrowColumn* columns, size_t count);
  void (*mix_across_wide)(float* dst, const uint8_t* src, const uint32_t* index,
                          const ColumnQuads& quads, const WideColumn* columns, size_t count);
  /// Second half: the exact weighed sum of both rows over the divisor, truncated, for each of
  /// `count` channels.
  void (*mix_down)(uint8_t* dst, const int16_t* upper, const int16_t* lower, size_t count,
                   const RowMix& mix);
  void (*mix_down_wide)(uint8_t* dst, const float* upper, const float* lower, size_t count,
                        const RowMix& mix);
  /// Bilinear samples of a rotated run, pixel centres at half steps; edge pixels reach to the edge.
  void (*rotate_bilinear)(uint8_t* dst, const RotatedRun& run, size_t count);
  /// The pixels that hold the positions of a rotated run.
  void (*rotate_nearest)(uint8_t* dst, const RotatedRun& run, size_t count);
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
