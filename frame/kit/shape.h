// Shapes as rectangles: what a window's region is made of.
#pragma once

#include <vector>

#include "frame/kit/pixel_view.h"

namespace kestrelon {

/// The part of a picture whose colour is not `key`, as rectangles that touch nowhere, in bands from
/// top to bottom and left to right within a band; equal rows are joined. That is the order in which
/// the system stores a region. Empty when every pixel has the key's colour.
std::vector<PixelRect> mask_to_rects(const PixelView& view, ColorRef key);

/// The rectangle 0, 0, width, height with corners rounded by an ellipse of the given diameters, as
/// rectangles in the same order; the pixels are those of `CreateRoundRectRgn(0, 0, width, height,
/// ...)`, which leaves out the last column and row.
std::vector<PixelRect> round_rect_to_rects(int width, int height, int ellipse_width,
                                           int ellipse_height);

}  // namespace kestrelon
