// Writes JPEG files.
#pragma once

#include <cstdint>
#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

struct JpegOptions {
  int quality = 75;          ///< 1 to 100; values outside count as the nearest
  uint32_t fill_colour = 0;  ///< 0x00BBGGRR, laid under what is transparent
};

/// Replaces `out` by a baseline JFIF file with Huffman tables of its own. Colour differences are
/// halved in both directions below quality 90, kept whole from there on. False without an image or
/// with a side above 65535 pixels.
bool write_jpeg(const c32bppDIB& image, const JpegOptions& options, std::vector<uint8_t>& out);

}  // namespace kestrelon
