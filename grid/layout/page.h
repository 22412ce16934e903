// A grid laid out for one paint: bars, bands, columns and rows in view.
#pragma once

#include "grid/layout/columns.h"
#include "grid/layout/metrics.h"
#include "grid/layout/rows.h"

namespace kestrelon::grid_layout {

struct PageInput {
  GridMetrics metrics;
  int width = 0, height = 0;  ///< of the control
  bool border = true;
  std::span<const Column> columns;
  const Rows* rows = nullptr;
  int32_t freeze_at = -1;
  bool total_line = false;
  bool horizontal_bar = true, vertical_bar = true;  ///< whether they may show
  int bar_size = 0;                                 ///< across a bar
  bool row_numbers = false;
  bool numbers_vary = true;  ///< the column of numbers is as wide as the last number in view
  int digit_width = 0;       ///< of the widest digit
  int32_t first_row = 0, first_column = 0;  ///< wanted scroll positions
};

struct GridPage {
  GridMetrics metrics;
  PixelRect inner;    ///< the control without frame and bars; everything is cut to it
  PixelRect caption;  ///< bands across the control, empty where there is none
  PixelRect header;
  PixelRect rows_area;
  PixelRect total_line;
  int border = 0;         ///< thickness of the frame, which stands on the outermost pixels
  int number_width = 0;   ///< of the column of row numbers
  int columns_right = 0;  ///< where the last column in view ends
  int rows_bottom = 0;    ///< where the last row in view ends, or the area is full
  std::vector<PlacedColumn> columns;
  std::vector<PlacedRow> rows;
  bool horizontal_bar = false, vertical_bar = false;
  ScrollRange horizontal, vertical;
  int32_t first_row = 0, first_column = 0;
  int32_t last_row = -1;  ///< the last row in view, -1 without rows

  int rows_room() const { return rows_area.bottom - rows_area.top; }
  const PlacedRow* row(int32_t position) const;
  const PlacedColumn* column(int32_t position) const;
};

GridPage lay_out(const PageInput& input);

}  // namespace kestrelon::grid_layout
