// What the strips share in painting: an area in two colours, the system's in high contrast.
#pragma once

#include "frame/kit/gradient.h"
#include "frame/kit/lines.h"
#include "frame/screen.h"
#include "frame/translate_color.h"

namespace kestrelon {

/// Fills an area from color1 above to color2 below; in high contrast with the system's colour of
/// `role` (COLOR_...).
inline void fill_band(const PixelView& view, const PixelRect& area, OLE_COLOR color1,
                      OLE_COLOR color2, int role) {
  constexpr double kMiddle = 50;
  const PixelRect seen = intersect(area, view.bounds());
  if (seen.empty()) return;
  if (high_contrast()) return fill_rect(view, seen, GetSysColor(role));
  // The gradient runs within a view of its own, so that both halves count from the area's top.
  const PixelView part{view.row(seen.top) + seen.left, seen.right - seen.left,
                       seen.bottom - seen.top, view.stride};
  DrawGradient(part, TranslateColor(color1), TranslateColor(color2), kMiddle, 0, 0, -1, -1);
}

}  // namespace kestrelon
