// Bilinear scaling, a destination row at a time.
#pragma once

#include <cstdint>
#include <vector>

#include "imaging/image_view.h"
#include "imaging/row_kernels.h"
#include "imaging/sampling_shape.h"

namespace kestrelon {

/// Each source row is mixed across once, kept, and serves every destination row that lies beside
/// it; then two kept rows are mixed down.
///
/// A byte is the truncation of the exact sum of four pixels, each weighed by the exact fractions of
/// the position. The last column and row of the source rectangle stand alone; pixels outside it
/// have no influence. A destination of more than 32767 columns or rows (in lowest terms of the
/// ratio) takes its weights in steps of 1/32767.
class BilinearRows {
 public:
  /// `source` is the source rectangle; its pixels outlive the object.
  BilinearRows(const ImageView& source, const SamplingShape& shape);

  /// Writes the visible pixels of destination row `y`.
  void write(uint8_t* dst, int32_t y);

 private:
  struct KeptRow {
    int32_t line = -1;  // source row, before mirroring; -1: none
    std::vector<int16_t> narrow;
    std::vector<float> wide;
  };

  void weigh_columns();
  size_t keep(int32_t line, size_t not_this_slot);
  void mix_across(KeptRow& kept, int32_t line);

  ImageView source_;
  SamplingShape shape_;
  const RowKernels& kernels_;
  int32_t column_units_;
  int32_t row_units_;
  bool narrow_;
  ColumnQuads quads_;
  std::vector<uint32_t> index_;
  std::vector<NarrowColumn> narrow_columns_;
  std::vector<WideColumn> wide_columns_;
  KeptRow kept_[2];
};

}  // namespace kestrelon
