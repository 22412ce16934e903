// One row, or a part of it.
#pragma once

#include <vector>

#include "grid/paint/cell_painter_win.h"

namespace kestrelon::grid_paint {

class RowPainter {
 public:
  RowPainter(Surface& surface, const GridScene& scene)
      : surface_(surface),
        scene_(scene),
        marks_(surface, scene.look, scene.page.metrics.scale),
        cells_(scene.page.columns.size()) {}

  /// Draws what of the row lies within `clip`, with the focus mark if that stands in it.
  void draw(const PlacedRow& row, const PixelRect& clip);

 private:
  void draw_number(const PlacedRow& row, const Paper& paper);
  void draw_back(const PlacedRow& row, const Paper& paper);
  void fetch_cells(const PlacedRow& row, const PixelRect& clip);
  void draw_cell_face(size_t index, const PlacedRow& row, const Paper& paper);
  void draw_lines_of(const PlacedRow& row, const Paper& paper);
  void draw_number_text(const PlacedRow& row, const PixelRect& clip);
  void draw_row_marks(const PlacedRow& row, const PixelRect& clip);
  void draw_cells(const PlacedRow& row, const PixelRect& clip);
  void draw_group(const PlacedRow& row, const PixelRect& clip);
  ColorRef base_color(const PlacedRow& row) const;
  bool highlighted() const { return facts_.selected && !scene_.look.alpha_blend_selection; }

  Surface& surface_;
  const GridScene& scene_;
  MarkPainter marks_;
  RowFacts facts_;
  std::vector<CellFacts> cells_;  // of the columns from first_ to end_
  size_t first_ = 0, end_ = 0;
};

}  // namespace kestrelon::grid_paint
