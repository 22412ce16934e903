// Writes BMP files.
#pragma once

#include <cstdint>
#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

struct BmpOptions {
  bool keep_premultiplied = false;  ///< keep alpha, as 32 bits, with the colours as stored
  uint32_t fill_colour = 0;         ///< 0x00BBGGRR, laid under what is transparent otherwise
};

/// Replaces `out` by a bitmap file, bottom-up and uncompressed: 24 bits, or 32 for a picture with
/// alpha that is to keep it. False without an image.
bool write_bmp(const c32bppDIB& image, const BmpOptions& options, std::vector<uint8_t>& out);

}  // namespace kestrelon
