// Shapes as rectangles: what a window's region is made of.
#pragma once

#include <vector>

#include "frame/kit/pixel_view.h"

namespace kestrelon {

/// The part of a picture whose colour is not `key`, as rectangles that touch nowhere, in bands from
/// top to bottom and left to right within a band; equal rows are joined. That is the order in which
/// the system stores a region. Empty when every pixel has the key's colour.
std::vector<PixelRect> mask_to_rects(const PixelView& view, ColorRef key);

}  // namespace kestrelon
