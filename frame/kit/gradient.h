// The two gradients of the library: by scan lines with a movable middle, and the system's.
#pragma once

#include "frame/kit/color.h"

namespace kestrelon {

/// Fills rows y1 to y2 and columns x1 to x2, ends included, with a vertical gradient that runs from
/// color1 over the half-way colour to color2. A negative x2 or y2 means the last column or row;
/// both stop at the surface's edge. mid_percent (limited to 0..100) places the half-way colour
/// within the band.
///
/// The lower part is measured within the band, the upper part from row 0 of the surface: a band
/// that starts further down starts part-way along its upper half. Two-band faces are designed for
/// it.
void DrawGradient(const PixelView& view, ColorRef color1, ColorRef color2, double mid_percent,
                  int x1, int y1, int x2, int y2);

enum class GradientDirection { LeftToRight = 0, TopToBottom = 1 };

/// The system's own gradient (`GradientFill` with two vertices): color1 at the first column or row,
/// just short of color2 at the last. A rectangle with swapped edges runs the other way.
void fill_system_gradient(const PixelView& view, const PixelRect& area, ColorRef color1,
                          ColorRef color2, GradientDirection direction);

}  // namespace kestrelon
