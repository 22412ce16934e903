// The filled triangle on drop buttons, spin buttons and arrows.
#pragma once

#include "frame/kit/color.h"
#include "frame/kit/pixel_view.h"

namespace kestrelon {

enum class Pointing { kUp, kDown, kLeft, kRight };

/// In the middle of an area, `rows` pixels from base to tip; the base is 2 * rows - 1 wide.
void draw_triangle(const PixelView& view, const PixelRect& area, Pointing pointing, int rows,
                   ColorRef color);

}  // namespace kestrelon
