// Columns of a bilinear row in fours, for registers that can put eight pixels into any order.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace kestrelon {

/// How the pixels of four columns follow each other in a register: two registers of two columns
/// come of `kWide`, one of four of `kNarrow`.
enum class QuadOrder { kNarrow, kWide };

class ColumnQuads {
 public:
  ColumnQuads() = default;
  /// index[x] and the pixel behind it are those of column x, inside a row of `width` pixels.
  ColumnQuads(std::span<const uint32_t> index, int32_t width, QuadOrder order);

  /// First of eight pixels of the row that hold all of columns 4 * quad and up; -1 where they lie
  /// further apart.
  int32_t first(size_t quad) const { return firsts_[quad]; }
  /// The places among the eight: left and right pixel of each column.
  const int32_t* places(size_t quad) const { return &places_[quad * kPixels]; }

 private:
  static constexpr size_t kPixels = 8;

  std::vector<int32_t> firsts_;
  std::vector<int32_t> places_;
};

}  // namespace kestrelon
