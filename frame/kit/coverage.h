// Text over a picture with alpha: what white text on black covers, in a colour.
#pragma once

#include "frame/kit/pixel_view.h"

namespace kestrelon {

/// Lays `color` over the premultiplied pixels of `view` as far as `mask`, of the same size, is
/// white: its channels' mean is the coverage, so that marks for LCD screens stay without fringes.
void lay_over(const PixelView& view, const PixelView& mask, const PixelRect& area, ColorRef color);

/// Fills with an opaque colour.
void fill_opaque(const PixelView& view, const PixelRect& area, ColorRef color);

}  // namespace kestrelon
