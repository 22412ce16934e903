// Writes single-frame GIF files.
#pragma once

#include <cstdint>
#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

struct GifOptions {
  /// For pictures of too many colours: a table of the picture's own, else a fixed one.
  bool use_adaptive_palette = true;
  /// Pixels of a lower alpha (0 to 255) become transparent, those above opaque.
  int32_t opaqueness_tolerance = 128;
};

/// Replaces `out` by a GIF89a file. Up to 256 colours, 255 beside transparency, are kept exactly,
/// in rising order of 0xRRGGBB; the transparent index follows them. False without an image or with
/// a side above 65535 pixels.
bool write_gif(const c32bppDIB& image, const GifOptions& options, std::vector<uint8_t>& out);

}  // namespace kestrelon
