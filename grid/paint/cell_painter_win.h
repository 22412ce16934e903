// What stands in one cell: box, button, image, text. Faces are drawn before, pixel by pixel.
#pragma once

#include "grid/paint/grid_scene_win.h"

namespace kestrelon::grid_paint {

class CellPainter {
 public:
  CellPainter(HDC dc, const GridScene& scene, MarkPainter& marks)
      : dc_(dc), scene_(scene), marks_(marks) {}

  struct Cell {
    const CellFacts& facts;
    PixelRect area;
    PixelRect clip;
    bool leads_row = false;
    bool selected = false;  ///< with the highlight, so that texts change color
  };
  void draw(const Cell& cell);

 private:
  bool several_lines(const CellFacts& facts) const;
  grid_layout::CellShape shape_of(const Cell& cell) const;
  /// Whether the text needs more room than the row gives; the font is in use.
  bool stands_over(const CellFacts& facts, const PixelRect& area) const;
  void draw_image(const Cell& cell, const PixelRect& area);
  void draw_text(const Cell& cell, grid_layout::CellShape shape);
  ColorRef text_color(const Cell& cell) const;

  HDC dc_;
  const GridScene& scene_;
  MarkPainter& marks_;
};

}  // namespace kestrelon::grid_paint
