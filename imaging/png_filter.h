// The row filters of PNG, on the writing side.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "imaging/png_format.h"
#include "imaging/png_properties.h"

namespace kestrelon::png {

/// Filters the rows of one picture, from the top.
class RowFilter {
 public:
  /// `method` Default and values that are no method become None for palette images, Paeth for the
  /// others.
  RowFilter(PngFilter method, ColorType type, size_t row_bytes);

  /// Where the caller puts the samples of the next row, row_bytes() of them.
  uint8_t* next_row() { return current_; }
  /// Writes the filter byte and the filtered row: row_bytes + 1 bytes.
  void filter(uint8_t* dst);

 private:
  void apply(Filter filter, uint8_t* dst) const;
  uint64_t score(const uint8_t* filtered) const;

  size_t row_bytes_;
  size_t step_;
  bool adaptive_;
  Filter fixed_;
  // Both rows have step_ zeros in front of them, so that no filter has an edge.
  std::vector<uint8_t> rows_[2];
  uint8_t* current_;
  uint8_t* above_;
  std::vector<uint8_t> trial_;
};

}  // namespace kestrelon::png
