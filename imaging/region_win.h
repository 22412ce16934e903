// Regions of the system out of rectangles.
#pragma once

#include <windows.h>

#include <span>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// A region of rectangles in bands from top to bottom; the caller's to give to a window or delete.
/// Without rectangles an empty region, without memory null.
HRGN region_from_rects(std::span<const RECT> rects);

/// The visible area of an image as a region, moved by the offset; null without an image or with an
/// unknown style.
HRGN image_region(const c32bppDIB& image, RegionStyle style, int32_t offset_x = 0,
                  int32_t offset_y = 0);

}  // namespace kestrelon
