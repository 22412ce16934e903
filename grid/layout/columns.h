// Where columns stand, and how they scroll sideways. All positions are display positions.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "frame/kit/scroll_math.h"

namespace kestrelon::grid_layout {

/// One column as the layout needs it; a grid's columns come in display order.
struct Column {
  int32_t store = 0;  ///< its index in the store
  int32_t width = 0;  ///< pixels
  bool visible = true;
  bool locked = false;
};

/// A column in view.
struct PlacedColumn {
  int32_t position = 0;
  int32_t store = 0;
  int32_t left = 0;
  int32_t width = 0;

  int32_t right() const { return left + width; }
  bool operator==(const PlacedColumn&) const = default;
};

/// The columns and the stretch of pixels that they share.
struct ColumnStrip {
  std::span<const Column> columns;
  int32_t freeze_at = -1;  ///< the last position that does not scroll; -1 when all scroll
  int left = 0;            ///< behind the row numbers
  int right = 0;

  int32_t count() const { return static_cast<int32_t>(columns.size()); }
};

/// The first visible column at or behind a position; the count when there is none.
int32_t next_visible_column(std::span<const Column> columns, int32_t position);
/// The last visible column at or before a position; -1 when there is none.
int32_t previous_visible_column(std::span<const Column> columns, int32_t position);

/// `freeze_at`, or -1 while the frozen columns would leave no room to scroll the others in.
int32_t freeze_in_force(const ColumnStrip& strip);

/// The values of the horizontal bar; it shows when the span is not 0. The last column can always be
/// brought wholly into view, or its left edge if it is wider than that.
ScrollRange horizontal_range(const ColumnStrip& strip);

/// The first scrolled column for a wanted position: visible, behind the frozen ones, in the range.
int32_t first_column(const ColumnStrip& strip, int32_t wanted);

/// The horizontal position one step on (+1) or back (-1), over hidden and locked columns.
int32_t stepped_column(const ColumnStrip& strip, int32_t first, int direction);

/// The horizontal position that shows `target` and is nearest to `first`.
int32_t column_to_show(const ColumnStrip& strip, int32_t first, int32_t target);

/// The columns in view: the frozen ones, then those from `first` on until the strip is full. The
/// last one may stand over the edge.
std::vector<PlacedColumn> place_columns(const ColumnStrip& strip, int32_t first);

/// The position of the column at x; -1 outside all columns.
int32_t ColumnAtX(std::span<const PlacedColumn> placed, int x);

/// The position of the column whose right edge is at most `band` pixels from x, -1 if none is. Of
/// several the nearest, then the last, so that a column made narrow can be made wide again.
int32_t column_edge_at(std::span<const PlacedColumn> placed, int x, int band);

}  // namespace kestrelon::grid_layout
