// Reads and writes BMP files.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

struct BmpOptions {
  bool keep_premultiplied = false;  ///< keep alpha, as 32 bits, with the colours as stored
  uint32_t fill_colour = 0;         ///< 0x00BBGGRR, laid under what is transparent otherwise
};

class cBMPparser {
 public:
  /// Replaces `out` by the picture of a bitmap file: headers of 12 to 124 bytes (Windows and OS/2),
  /// 1, 2, 4, 8, 16, 24 and 32 bits, run-length data of 4, 8 and 24 bits, bit fields with and
  /// without alpha, rows in either order.
  ///
  /// The fourth byte of uncompressed 32-bit pixels, and an alpha channel told by a mask, is
  /// classified (Bitmap, BitmapArgb or BitmapPargb); everything else is an opaque Bitmap. False,
  /// and `out` empty, for anything else, for embedded JPEG and PNG data and when rows are missing:
  /// a platform decoder may know more.
  static bool LoadStream(std::span<const uint8_t> data, c32bppDIB& out);
  /// Replaces `out` by a bitmap file, bottom-up and uncompressed: 24 bits, or 32 for a picture with
  /// alpha that is to keep it. False without an image.
  static bool SaveAsBMP(const c32bppDIB& image, const BmpOptions& options,
                        std::vector<uint8_t>& out);
};

}  // namespace kestrelon
