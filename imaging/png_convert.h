// From unfiltered PNG rows to premultiplied pixels.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "imaging/png_chunks.h"

namespace kestrelon::png {

/// Converts rows of one picture. All tables are made once, at construction.
class RowConverter {
 public:
  /// `longest_row`: pixels of the longest row that will come. Copies what it needs of `picture`.
  RowConverter(const Description& picture, uint32_t longest_row);

  /// Writes `pixels` premultiplied pixels (blue, green, red, alpha) of the unfiltered row `src` to
  /// `dst`. `src` has kRowSlack readable bytes behind it.
  void convert(uint8_t* dst, const uint8_t* src, size_t pixels);

 private:
  enum class Kind { Indexed, Gray16Keyed, Rgb, Rgb16Keyed, GrayAlpha, Rgba };

  void make_gray_table(const Description& picture);
  void make_palette_table(const Description& picture);
  const uint8_t* to_bytes(const uint8_t* src, size_t samples);

  Kind kind_;
  uint8_t bit_depth_;
  uint32_t samples_;
  std::array<uint32_t, 256> pixels_{};  // of each index or gray value
  std::optional<uint32_t> rgb_key_;     // pixel value that is transparent
  std::array<uint8_t, 3> high_key_{};   // high bytes of a 16-bit colour key
  uint32_t gray_key_ = 0;
  std::vector<uint8_t> bytes_;  // the row with its samples as bytes
};

}  // namespace kestrelon::png
