// Rectangles within a row and within a cell. A cell is its column's width by its row's height, grid
// lines included, which lie at its right and bottom whether they are drawn or not.
#pragma once

#include "grid/layout/page.h"

namespace kestrelon::grid_layout {

/// The parts of a `GRID_ALIGNMENT`: 0 near, 1 centre, 2 far; what is none of them is near.
constexpr int across(int alignment) {
  return (alignment & 3) == 3 ? 0 : alignment & 3;
}
constexpr int down(int alignment) {
  return (alignment >> 2 & 3) == 3 ? 0 : alignment >> 2 & 3;
}

struct Size {
  int width = 0, height = 0;
  constexpr bool empty() const { return width <= 0 || height <= 0; }
};

/// A size laid into a rectangle by a `GRID_ALIGNMENT`; it may stand over.
PixelRect aligned(const PixelRect& area, const Size& size, int alignment);
/// The size scaled down, proportions kept, until it fits; never up.
Size fitted(const Size& size, const Size& room);

/// The whole cell.
PixelRect cell_rect(const PlacedColumn& column, const PlacedRow& row);
/// Without the grid lines: where a background, a button or a bar goes.
PixelRect cell_face(const GridMetrics& metrics, const PixelRect& cell);

/// Where a row's parts go, in the first column in view.
PixelRect row_check_rect(const GridMetrics& metrics, const PlacedRow& row, int strip_left);
PixelRect row_image_rect(const GridMetrics& metrics, const PlacedRow& row, int strip_left,
                         bool centered);

/// What a cell holds, as far as its rectangles go.
struct CellShape {
  PixelRect cell;
  bool leads_row = false;  ///< the first in view, which leaves room for the row's box and image
  int alignment = 4;
  Size image;  ///< empty without one
  int image_alignment = 4;
  Size mark;  ///< of the expand mark; empty without one
};

/// What a cell is made of; rectangles that don't apply are empty.
struct CellParts {
  PixelRect content;  ///< where box, image and text share the room
  PixelRect check;    ///< of a Boolean cell
  PixelRect image;
  PixelRect text;
  PixelRect mark;
};

CellParts cell_parts(const GridMetrics& metrics, const CellShape& shape);

/// The height that a text has in its place; one that needs more gets the expand mark.
int text_room(const GridMetrics& metrics, const PixelRect& text);

/// A cell's image or check box of `size` at an alignment.
PixelRect CellImageRect(const GridMetrics& metrics, const PixelRect& content, const Size& size,
                        int alignment);

/// How much of a bar of this width a value fills, held to 0 to 100 per cent.
int progress_width(int width, double value);

/// Room for the edit window in a cell.
PixelRect editor_rect(const GridMetrics& metrics, const PixelRect& cell);

enum class FocusMode { kNone = 0, kRow = 1, kCell = 2 };

/// The focus mark of the current row or cell; empty when it is out of view.
PixelRect focus_rect(const GridPage& page, FocusMode mode, int32_t row, int32_t column);

/// The highlight of a selected row.
PixelRect highlight_rect(const GridPage& page, const PlacedRow& row, bool check_boxes, bool inset);

/// A heading and, with `arrow`, the sort arrow at its right.
struct HeaderParts {
  PixelRect cell, text, arrow;
};
HeaderParts header_parts(const GridPage& page, int left, int right, bool arrow);

}  // namespace kestrelon::grid_layout
