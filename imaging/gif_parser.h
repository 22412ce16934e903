// Reads the first frame of a GIF; writes single-frame GIF files.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

struct GifOptions {
  /// For pictures of too many colours: a table of the picture's own, else a fixed one.
  bool use_adaptive_palette = true;
  /// Pixels of a lower alpha (0 to 255) become transparent, those above opaque.
  int32_t opaqueness_tolerance = 128;
};

class cGIFparser {
 public:
  /// Replaces `out` by the first frame of a GIF87a or GIF89a file (signature in either case), at
  /// the frame's own size: its place on the logical screen is dropped.
  ///
  /// With a transparent index the alpha type is Simple, else None. Pixels that the data does not
  /// reach are transparent, or of the table's first colour in a frame without transparency. False,
  /// and `out` empty, when the block structure is broken or cut off before the frame's terminator,
  /// at a pixel code that stands for nothing, or when so few bytes promise so many pixels that they
  /// cannot be meant. Format Gif.
  static bool LoadStream(std::span<const uint8_t> data, c32bppDIB& out);
  /// Replaces `out` by a GIF89a file. Up to 256 colours, 255 beside transparency, are kept exactly,
  /// in rising order of 0xRRGGBB; the transparent index follows them. False without an image or
  /// with a side above 65535 pixels.
  static bool SaveAsGIF(const c32bppDIB& image, const GifOptions& options,
                        std::vector<uint8_t>& out);
};

}  // namespace kestrelon
