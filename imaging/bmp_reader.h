// Reads BMP files.
#pragma once

#include <cstdint>
#include <span>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// Replaces `out` by the picture of a bitmap file: headers of 12 to 124 bytes (Windows and OS/2),
/// 1, 2, 4, 8, 16, 24 and 32 bits, run-length data of 4, 8 and 24 bits, bit fields with and without
/// alpha, rows in either order.
///
/// The fourth byte of uncompressed 32-bit pixels, and an alpha channel told by a mask, is
/// classified (Bitmap, BitmapArgb or BitmapPargb); everything else is an opaque Bitmap. False, and
/// `out` empty, for anything else, for embedded JPEG and PNG data and when rows are missing: a
/// platform decoder may know more.
bool read_bmp(std::span<const uint8_t> data, c32bppDIB& out);

}  // namespace kestrelon
