// What has to be drawn when a grid goes from one look to another.
#pragma once

#include "grid/layout/page.h"

namespace kestrelon::grid_layout {

struct ShownRow {
  PlacedRow place;
  uint32_t state = 0;  ///< whatever changes this row's looks alone: selected, checked, a revision
  bool operator==(const ShownRow&) const = default;
};

/// What a surface shows. Two equal ones look the same.
struct Shown {
  uint64_t look = 0;  ///< changes with anything that is not told below: theme, texts, order
  PixelRect inner, header, rows_area, total_line;
  int number_width = 0;
  int columns_right = 0;
  std::vector<PlacedColumn> columns;
  std::vector<uint32_t> headers;  ///< state of each heading in view, one a column
  std::vector<ShownRow> rows;
  uint64_t totals = 0;  ///< changes with the texts of the total line
  PixelRect focus;      ///< the focus mark, empty when it does not show
  bool operator==(const Shown&) const = default;
};

/// The geometry of a page; states are left at 0 for the caller to fill in.
Shown shown_page(const GridPage& page);

struct Damage {
  PixelRect moved;              ///< pixels that keep their looks, where they are now
  int move_by = 0;              ///< and how far they go down; 0 when none move
  std::vector<PixelRect> draw;  ///< what is drawn anew after the move; disjoint
};

Damage damage_between(const Shown& before, const Shown& now);

}  // namespace kestrelon::grid_layout
