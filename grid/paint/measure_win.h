// Sizes that follow from texts: of a row that wraps, of a column that is to show all of its texts.
#pragma once

#include "grid/paint/grid_scene_win.h"

namespace kestrelon::grid_paint {

/// What the measurements share. The device context is that of the grid's surface.
struct Measuring {
  HDC dc;
  const grid_layout::GridMetrics& metrics;
  const PaintLook& look;
  const GridContents& contents;
  GridFonts& fonts;
  const GridPictures* pictures = nullptr;
};

/// The height at which all cells of a row show all of their lines, within `max_line_count`. Without
/// word wrap it is the default one. `columns` are all of the grid's.
int MeasureRowHeight(const Measuring& with, std::span<const grid_layout::Column> columns,
                     int32_t row, int max_line_count);

/// Pixels for a column in which nothing is cut: heading, cells of all rows, box, image and arrow.
/// Walks over all rows.
int auto_column_width(const Measuring& with, int32_t column, int32_t row_count, bool leads_row);

}  // namespace kestrelon::grid_paint
