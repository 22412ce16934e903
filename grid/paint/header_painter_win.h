// Caption, headings and total line.
#pragma once

#include "grid/paint/grid_scene_win.h"

namespace kestrelon::grid_paint {

class HeaderPainter {
 public:
  HeaderPainter(Surface& surface, const GridScene& scene) : surface_(surface), scene_(scene) {}

  /// Each draws what of it lies within `clip`.
  void DrawCaption(const PixelRect& clip);
  void DrawHeader(const PixelRect& clip);
  void draw_heading(const PlacedColumn& column, int moved_by, const PixelRect& clip);
  void draw_total_line(const PixelRect& clip);

 private:
  void draw_face(const PixelRect& cell, HeaderState state, const PixelRect& clip);
  void draw_heading_text(const HeadingFacts& heading, HeaderState state, const PixelRect& area,
                         const PixelRect& clip);
  void draw_total(const PlacedColumn& column, const PixelRect& clip);

  Surface& surface_;
  const GridScene& scene_;
};

}  // namespace kestrelon::grid_paint
