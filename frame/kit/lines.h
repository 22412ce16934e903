// Fills and one-pixel pens, with the pixels GDI gives.
#pragma once

#include "frame/kit/pixel_view.h"

namespace kestrelon {

/// Fills a rectangle; one with swapped edges is empty.
void fill_rect(const PixelView& view, const PixelRect& area, ColorRef color);

/// A one-pixel line. Upright and level lines include their last point; a level one that runs to the
/// left stops two short of it, and likewise an upright one that runs up, since the end moves by one
/// before the pen leaves its last point out. Slanting lines leave the last point out.
void DrawLineTo(const PixelView& view, ColorRef color, int x1, int y1, int x2, int y2);

/// The outline that `Rectangle` gives with a hollow brush: right and bottom are one past the frame;
/// swapped edges are put right. A frame of a single pixel stays empty.
void DrawFrame(const PixelView& view, ColorRef color, int left, int top, int right, int bottom);

/// One pixel; outside the surface nothing happens.
void set_pixel(const PixelView& view, int x, int y, ColorRef color);

/// The dotted focus mark that `DrawFocusRect` gives: every other pixel of the outline inverted, its
/// top right one among them, so that a second call removes it. Of a rectangle one pixel thin only
/// the ends can show, since the outline passes over the pixels between twice; of a single pixel
/// nothing.
void draw_focus_rect(const PixelView& view, const PixelRect& area);

}  // namespace kestrelon
