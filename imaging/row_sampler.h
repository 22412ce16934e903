// Rows of a picture as they arrive at the destination: cropped, mirrored, scaled.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "imaging/bilinear_rows.h"
#include "imaging/image_view.h"
#include "imaging/row_kernels.h"
#include "imaging/sampling_shape.h"

namespace kestrelon {

/// Hands out destination rows one by one, so that no scaled or mirrored copy is ever held.
///
/// Nearest takes the pixel Int(x * ratio + origin), ratio being source size / destination size, in
/// double precision. Bilinear is that of BilinearRows.
class RowSampler {
 public:
  /// `source` is the source rectangle; its pixels outlive the sampler.
  RowSampler(const ImageView& source, const SamplingShape& shape);

  /// The visible pixels of destination row `y`, valid until the next call.
  const uint8_t* row(int32_t y);
  /// Writes them to `dst`, which must keep the row written by the last call of this function.
  void write(uint8_t* dst, int32_t y);

  /// The pixels need neither scaling nor reversing: rows are those of the source.
  bool plain_copy() const { return mode_ == Mode::Copy; }
  /// With plain_copy: bytes from a destination row to the next.
  ptrdiff_t source_stride() const { return shape_.mirror_y ? -source_.stride : source_.stride; }

 private:
  enum class Mode { Copy, Reverse, Nearest, Bilinear };

  int32_t nearest(int64_t dest, double ratio, int32_t origin, int32_t size) const;
  const uint8_t* source_row(int32_t y) const;
  void prepare_nearest();
  void write_nearest(uint8_t* dst, int32_t y);

  ImageView source_;
  SamplingShape shape_;
  Mode mode_ = Mode::Copy;
  const RowKernels& kernels_;
  std::vector<uint8_t> out_;
  std::vector<int32_t> columns_;  // nearest: source columns
  // Nearest: the last source row that was picked from, and where its pixels were written.
  const uint8_t* picked_ = nullptr;
  const uint8_t* written_ = nullptr;
  std::optional<BilinearRows> bilinear_;
};

}  // namespace kestrelon
