// The chunk walk of the PNG reader: from bytes to a checked description of the picture.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "imaging/png_format.h"
#include "imaging/zlib_api.h"

namespace kestrelon::png {

struct Header {
  uint32_t width = 0;  ///< 1 up; width * height * 32 fits 31 bits
  uint32_t height = 0;
  uint8_t bit_depth = 0;  ///< 1, 2, 4, 8 or 16, in any combination with the colour type
  ColorType color_type = ColorType::Gray;
  bool interlaced = false;

  uint32_t bits_per_pixel() const { return bit_depth * samples_per_pixel(color_type); }
  /// Bytes of `pixels` pixels in the stream, without the filter byte.
  uint64_t row_bytes(uint32_t pixels) const {
    return (uint64_t{pixels} * bits_per_pixel() + 7) / 8;
  }
  std::span<const Pass> passes() const {
    if (interlaced) return kAdam7;
    return kWholePicture;
  }
  /// Bytes of the whole filtered stream. A pass without columns or without rows has none.
  uint64_t stream_bytes() const;
};

/// What the chunks of a file say. Spans point into the file's bytes.
struct Description {
  Header header;
  std::array<uint8_t, 256 * 3> palette{};  ///< red, green, blue; unused entries are black
  bool has_palette = false;
  /// As stored; empty if there is none, if it is too short or if the colour type has no use for it.
  std::span<const uint8_t> transparency;
  std::vector<std::span<const uint8_t>> data;  ///< of the IDAT chunks, none empty
};

/// Walks the chunks behind the signature. With `zlib` the stored check values of the chunks that
/// are read must hold, unless they are 0. False on any damage; the description is then of no use.
bool read_chunks(std::span<const uint8_t> file, const ZlibApi* zlib, Description& out);

}  // namespace kestrelon::png
