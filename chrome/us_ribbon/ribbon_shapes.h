// The shapes a ribbon is drawn with, as pixels: two-band gradients with round corners, small marks.
#pragma once

#include "frame/kit/pixel_view.h"
#include "frame/kit/scale.h"

namespace kestrelon::ribbon {

/// Pixels and the part of them that may change.
struct Canvas {
  PixelView view;
  PixelRect clip;
};

/// Two bands: colours 0 to 1 over the upper `split` percent, 2 to 3 below.
struct Gradient {
  ColorRef colors[4];
  int split = 50;

  static constexpr Gradient plain(ColorRef color) { return {{color, color, color, color}, 50}; }
  static constexpr Gradient smooth(ColorRef top, ColorRef bottom) {
    return {{top, top, top, bottom}, 0};
  }
};

/// The colour of row `y` of `height`.
ColorRef row_color(const Gradient& gradient, int y, int height);

struct Corners {
  int radius = 0;      ///< pixels
  bool bottom = true;  ///< the lower corners too
};

/// Fills an area; pixels of round corners are mixed with what lies below.
void fill(const Canvas& canvas, const PixelRect& area, const Gradient& gradient,
          Corners corners = {});
void fill(const Canvas& canvas, const PixelRect& area, ColorRef color);
/// A border of `line` pixels with a filled inside.
void framed_box(const Canvas& canvas, const PixelRect& area, int line, ColorRef border,
                const Gradient& inside, Corners corners = {});
/// A border alone.
void frame(const Canvas& canvas, const PixelRect& area, int line, ColorRef color, int radius);

enum class Pointing { kDown, kLeft, kRight };
/// A triangle in the middle of an area, `size` pixels high and twice as wide less one.
void triangle(const Canvas& canvas, const PixelRect& area, int size, Pointing pointing,
              ColorRef color);
/// The mark of a dialog launcher, in the middle of an area.
void launcher_mark(const Canvas& canvas, const PixelRect& area, Scale scale, ColorRef color,
                   ColorRef light);

}  // namespace kestrelon::ribbon
