// Reads icon and cursor files.
#pragma once

#include <cstdint>
#include <span>

#include "imaging/c32bpp_dib.h"
#include "imaging/ico_directory.h"

namespace kestrelon {

struct IcoOptions {
  int32_t cx = 0, cy = 0;  ///< wanted size in pixels; below 1 means 32
  int32_t depth = 32;      ///< wanted bits a pixel
  /// Decodes the PNG pictures of the file; without it they yield no image.
  bool (*read_png)(std::span<const uint8_t>, c32bppDIB&) = nullptr;
};

class cICOparser {
 public:
  /// Replaces `out` by the picture of the file that suits the wanted size and depth best.
  ///
  /// True if the data is an icon or cursor file, even when the chosen picture cannot be decoded:
  /// `out` is empty then. Formats Icon, IconArgb, PngIcon, Cursor, CursorArgb.
  static bool LoadStream(std::span<const uint8_t> data, const IcoOptions& options, c32bppDIB& out);
};

/// Turns decoded colour rows into an icon's pixels, and settles type and alpha.
///
/// 32 bits: the colours are straight and the fourth byte is their alpha; the mask is not used, so
/// an all-zero alpha makes everything transparent. Fewer bits: a set bit of `mask` (rows from the
/// bottom, padded to four bytes, leftmost pixel in the highest bit) clears the pixel, all others
/// are opaque, also where the mask ends early.
void apply_icon_mask(c32bppDIB& image, int32_t bit_count, std::span<const uint8_t> mask,
                     bool is_cursor);

}  // namespace kestrelon
