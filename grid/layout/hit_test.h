// What lies under a point of a grid.
#pragma once

#include "grid/layout/cell_rects.h"

namespace kestrelon::grid_layout {

enum class GridPart {
  kNone,  ///< outside, or the empty room beside and below the cells
  kCaption,
  kHeader,      ///< a heading; column -1 is the empty heading over the row numbers or at the end
  kColumnEdge,  ///< the band in which a column is resized
  kRowEdge,
  kRowNumber,
  kRowCheck,  ///< the strip of the row's check box
  kRowImage,
  kCell,
  kTotalLine,
};

struct GridHit {
  GridPart part = GridPart::kNone;
  int32_t row = -1;
  int32_t column = -1;  ///< display position
};

struct HitOptions {
  bool resize_rows = false;
  bool resize_columns = false;
  bool row_check_boxes = false;
  bool center_row_image = true;
};

/// Rows are resized at their bottom, columns at their right edge in the header alone; within 4
/// pixels at 96 dpi, rows before columns.
GridHit hit_test(const GridPage& page, const HitOptions& options, int x, int y);

enum class CellPart { kText, kCheckBox, kImage, kExpandMark };

/// What lies under a point of a cell. `boolean` cells have a check box.
CellPart cell_part_at(const CellParts& parts, bool boolean, int x, int y);

constexpr bool contains(const PixelRect& area, int x, int y) {
  return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

}  // namespace kestrelon::grid_layout
