// Takes the inflated stream of a PNG, in pieces of any size, and writes the picture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "imaging/c32bpp_dib.h"
#include "imaging/png_chunks.h"
#include "imaging/png_convert.h"

namespace kestrelon::png {

/// Undoes filters and interlacing and converts, a row at a time.
class RowSink {
 public:
  /// `out` has the size of the picture; it is written to until done(). Both outlive the object.
  RowSink(const Description& picture, c32bppDIB& out);

  /// The next bytes of the stream; what lies behind the last row is ignored. `bytes` has kRowSlack
  /// readable bytes behind it.
  void feed(std::span<const uint8_t> bytes);
  /// All rows of all passes have come.
  bool done() const { return pass_ == passes_.size(); }

 private:
  void begin_pass();
  void take_row(const uint8_t* filtered);
  void place_row();

  const Header& header_;
  c32bppDIB& out_;
  std::span<const Pass> passes_;
  RowConverter converter_;
  size_t step_;  // bytes of a pixel, at least 1

  size_t pass_ = 0;
  uint32_t columns_ = 0;
  uint32_t rows_ = 0;
  uint32_t row_ = 0;
  size_t row_bytes_ = 0;

  std::vector<uint8_t> current_;
  std::vector<uint8_t> above_;
  std::vector<uint8_t> partial_;  // a row, filter byte included, that came in more than one piece
  size_t partial_size_ = 0;
  std::vector<uint8_t> scattered_;  // pixels of a row whose places in the picture are apart
};

}  // namespace kestrelon::png
