// A picture that drawing is cut to a rectangle of.
#pragma once

#include "frame/kit/gradient.h"

namespace kestrelon::grid_paint {

/// Draws in the coordinates of the whole picture and leaves everything outside `clip` alone.
class Paper {
 public:
  Paper(const PixelView& picture, const PixelRect& clip);

  const PixelRect& clip() const { return clip_; }
  /// The same picture with a smaller clip.
  Paper within(const PixelRect& clip) const { return Paper(picture_, intersect(clip, clip_)); }

  void fill(const PixelRect& area, ColorRef color) const;
  void gradient(const PixelRect& area, ColorRef from, ColorRef to,
                GradientDirection direction) const;
  /// A frame inside `area`, `thickness` pixels wide.
  void frame(const PixelRect& area, ColorRef color, int thickness) const;
  /// The same of dots and gaps as long as it is wide; dots of neighbouring frames meet.
  void dotted_frame(const PixelRect& area, ColorRef color, int thickness) const;
  void pixel(int x, int y, ColorRef color) const;
  ColorRef color_at(int x, int y) const;

 private:
  PixelRect local(const PixelRect& area) const {
    return {area.left - clip_.left, area.top - clip_.top, area.right - clip_.left,
            area.bottom - clip_.top};
  }

  PixelView picture_;
  PixelRect clip_;
  PixelView seen_;
};

/// The colour mixer: per channel (a * alpha + b * (255 - alpha)) / 255, truncated.
ColorRef mix_colors(ColorRef a, ColorRef b, int alpha);
/// Subtracts from each channel, which stops at 0.
ColorRef darkened(ColorRef color, int by);

}  // namespace kestrelon::grid_paint
