// Writes Truevision TGA files.
#pragma once

#include <cstdint>
#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

struct TgaOptions {
  bool compress = false;  ///< run-length packets, unless they come out longer
  /// Use the smallest depth that loses nothing: 8 bits for gray or up to 256 colours, 24 for other
  /// opaque pictures. Otherwise always 32 bits.
  bool reduce_bit_depth = false;
  /// Write colours as stored instead of straight ones; the extension area says which.
  bool allow_premultiplied = false;
};

/// Replaces `out` by a TGA 2.0 file, rows from the bottom, with an extension area that tells what
/// the alpha channel means. False without an image or with a side above 65535 pixels.
bool write_tga(const c32bppDIB& image, const TgaOptions& options, std::vector<uint8_t>& out);

}  // namespace kestrelon
