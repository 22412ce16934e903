// One image of a GIF: from its blocks to rows of palette indexes, for the reader of the first frame
// and for animations.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

#include "imaging/gif_format.h"
#include "imaging/gif_lzw.h"
#include "imaging/row_convert.h"

namespace kestrelon::gif {

/// A code of 12 bits stands for at most 4096 pixels. What promises more than its bytes could hold,
/// and more than kHarmlessPixels, is taken for an attack on memory.
inline constexpr uint64_t kPixelsPerByte = 4096;
inline constexpr uint64_t kHarmlessPixels = 1 << 20;
constexpr bool can_be_meant(uint64_t pixels, uint64_t bytes) {
  return pixels <= std::max(kHarmlessPixels, bytes * kPixelsPerByte);
}

/// An image as its blocks describe it; the spans lie in the file.
struct FrameSource {
  std::span<const uint8_t> table;  ///< red, green, blue; empty where the file has none
  int transparent = -1;            ///< an index, or none
  ImageDescriptor descriptor{};
  int min_code_size = 0;
  std::span<const uint8_t> sub_blocks;  ///< with their terminator
};

/// "gif87a" or "gif89a" in letters of either case.
bool is_signature(std::span<const char, 6> signature);

/// The colours of an image, the transparent one as 0. A file without any table gets the two colours
/// that the standard names, black and white; a transparent index beyond the table hits nothing.
Palette make_palette(const FrameSource& frame);

/// Rows in the order of the data: from the top, or in the four passes of an interlaced frame.
class RowOrder {
 public:
  RowOrder(bool interlaced, int32_t height)
      : height_(height), pass_(interlaced ? 0 : 3), step_(interlaced ? 8 : 1) {}
  int32_t row() const { return row_; }
  bool at_end() const { return row_ >= height_; }
  void advance() {
    row_ += step_;
    while (row_ >= height_ && pass_ < 3) {
      ++pass_;
      step_ = 16 >> pass_;
      row_ = step_ / 2;
    }
  }

 private:
  int32_t height_;
  int pass_;
  int32_t step_;
  int32_t row_ = 0;
};

/// How far the data of an image reached.
struct DecodedRows {
  RowOrder order;  ///< the first row that is not whole
  size_t x = 0;    ///< pixels of it that are there
  bool ok = true;  ///< false at a code that stands for nothing
};

/// Decodes the pixels of `frame`, of which width and height are above 0 and the code size is 1
/// to 8. `put(x, y, indexes)` gets them in runs that stay within a row.
template <class Put>
DecodedRows decode_rows(const FrameSource& frame, Put put) {
  LzwDecoder lzw(frame.sub_blocks, frame.min_code_size);
  DecodedRows out{RowOrder((frame.descriptor.flags & kInterlaced) != 0, frame.descriptor.height)};
  const size_t width = frame.descriptor.width;
  while (!out.order.at_end()) {
    auto indexes = lzw.next();
    if (indexes.empty()) break;
    while (!indexes.empty() && !out.order.at_end()) {
      const size_t count = std::min(indexes.size(), width - out.x);
      put(out.x, out.order.row(), indexes.first(count));
      indexes = indexes.subspan(count);
      out.x += count;
      if (out.x < width) continue;
      out.x = 0;
      out.order.advance();
    }
  }
  out.ok = lzw.ok() || out.order.at_end();
  return out;
}

}  // namespace kestrelon::gif
