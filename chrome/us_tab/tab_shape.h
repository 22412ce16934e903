// The pixels of one tab: two colours, a border, corners rounded on the side away from the page.
#pragma once

#include "chrome/us_tab/tab_strip_layout.h"
#include "frame/kit/color.h"

namespace kestrelon::tab_strip {

struct TabColors {
  ColorRef start = 0;  ///< at the outer edge
  ColorRef end = 0;    ///< at the page
  ColorRef border = 0;
  ColorRef inner = 0;  ///< inside the border, above and at the left
};

/// `x_radius` runs along the strip, `y_radius` across it; pixels, held to the tab's size.
void paint_tab(const PixelView& view, const PixelRect& tab, Side side, int x_radius, int y_radius,
               const TabColors& colors, int line);

/// How far a corner of these radii stands back at a depth from the outer edge.
int corner_inset(int x_radius, int y_radius, int depth);

/// A cross of two strokes, and an arrow that points to a side.
void paint_cross(const PixelView& view, const PixelRect& area, int inset, int thick,
                 ColorRef color);
void paint_arrow(const PixelView& view, const PixelRect& area, Side to, int size, ColorRef color);

}  // namespace kestrelon::tab_strip
