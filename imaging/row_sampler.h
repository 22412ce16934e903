// Rows of a picture as they arrive at the destination: cropped, mirrored, scaled.
#pragma once

#include <cstdint>
#include <vector>

#include "imaging/image_view.h"
#include "imaging/row_kernels.h"

namespace kestrelon {

/// How a source rectangle comes to the destination.
struct SamplingShape {
  int32_t dest_width = 0, dest_height = 0;  ///< of the whole picture at the destination, above 0
  int32_t first_column = 0;                 ///< first visible destination column
  int32_t columns = 0;                      ///< visible columns
  int32_t origin_x = 0, origin_y = 0;       ///< where the source rectangle lies in its image
  bool mirror_x = false, mirror_y = false;
  bool high_quality = false;  ///< bilinear instead of nearest
};

/// Hands out destination rows one by one, so that no scaled or mirrored copy is ever held.
///
/// Nearest takes the pixel Int(x * ratio + origin), ratio being source size / destination size, in
/// double precision. Bilinear weighs the pixel at Int(X) by 1 - f and its neighbour to the right or
/// below by f, X and f taken as exact fractions; the sum over four pixels is truncated exactly. The
/// last column and row of the rectangle stand alone; pixels outside it have no influence. A
/// destination of more than 32767 rows (in lowest terms of the ratio) weighs rows in steps of
/// 1/32767.
class RowSampler {
 public:
  /// `source` is the source rectangle; its pixels outlive the sampler.
  RowSampler(const ImageView& source, const SamplingShape& shape);

  /// The visible pixels of destination row `y`, valid until the next call.
  const uint8_t* row(int32_t y);

  /// The pixels need neither scaling nor reversing: rows are those of the source.
  bool plain_copy() const { return mode_ == Mode::Copy; }
  /// With plain_copy: bytes from a destination row to the next.
  ptrdiff_t source_stride() const { return shape_.mirror_y ? -source_.stride : source_.stride; }

 private:
  enum class Mode { Copy, Reverse, Nearest, Bilinear, BilinearWide };

  int32_t nearest(int64_t dest, double ratio, int32_t origin, int32_t size) const;
  const uint8_t* source_row(int32_t y) const;
  void prepare_nearest();
  void prepare_bilinear();
  template <class Real>
  void weigh_columns(std::vector<ColumnWeight<Real>>& weights, double units);
  const uint8_t* nearest_row(int32_t y);
  const uint8_t* bilinear_row(int32_t y);

  ImageView source_;
  SamplingShape shape_;
  Mode mode_ = Mode::Copy;
  const RowKernels& kernels_;
  std::vector<uint8_t> out_;
  std::vector<int32_t> columns_;     // nearest: source columns
  const uint8_t* picked_ = nullptr;  // nearest: the source row that out_ holds
  int64_t column_units_ = 1;         // bilinear: fractions of a column and of a row
  int64_t row_units_ = 1;
  double bias_ = 0;
  std::vector<ColumnWeight<float>> weights_;
  std::vector<ColumnWeight<double>> wide_weights_;
  uint8_t doubled_[2][8] = {};  // a source of one column, as two
};

}  // namespace kestrelon
