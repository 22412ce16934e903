// Where rows stand, and how they scroll. Every function costs a page at most, however many rows
// there are and however many of them are hidden. All positions are display positions.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "frame/kit/scroll_math.h"

namespace kestrelon::grid_layout {

/// The rows as the layout sees them. Both searches must not walk over hidden rows one by one.
class Rows {
 public:
  virtual ~Rows() = default;
  virtual int32_t count() const = 0;
  /// The first visible row at or behind a position (0 or more); the count when there is none.
  virtual int32_t next_visible(int32_t position) const = 0;
  /// The last visible row at or before a position (below the count); -1 when there is none.
  virtual int32_t previous_visible(int32_t position) const = 0;
  /// Pixels; what is below 1 counts as 1.
  virtual int32_t height(int32_t position) const = 0;
};

/// A row in view.
struct PlacedRow {
  int32_t position = 0;
  int32_t top = 0;
  int32_t height = 0;

  int32_t bottom() const { return top + height; }
  bool operator==(const PlacedRow&) const = default;
};

/// The values of the vertical bar for an area of `room` pixels; it shows when the span is not 0. At
/// the maximum the last visible row is wholly in view, or its top if it is higher than that.
ScrollRange vertical_range(const Rows& rows, int room);

/// The first visible row for a wanted position, within the range.
int32_t first_row(const Rows& rows, int room, int32_t wanted);

/// The visible row `steps` behind (or before, when negative) a position; stops at both ends. -1
/// when no row is visible.
int32_t stepped_row(const Rows& rows, int32_t position, int steps);

/// The vertical position that shows `target` wholly and is nearest to `first`.
int32_t row_to_show(const Rows& rows, int room, int32_t first, int32_t target);

/// The rows in view from `first` on; the last one may stand over the bottom.
std::vector<PlacedRow> place_rows(const Rows& rows, int32_t first, int top, int bottom);

/// The top of a row that is shown from `first_row` on, `top` being that row's: -1 above it, and at
/// least `bottom` for all that lies beyond.
int RowTopPixels(const Rows& rows, int32_t row, int32_t first_row, int top, int bottom);

/// How many rows of the default height an area holds, at least 1.
int RowsPerPage(int room, int row_h);

/// The position of the row at y; -1 outside all rows.
int32_t RowAtY(std::span<const PlacedRow> placed, int y);

/// The position of the row whose bottom is at most `band` pixels from y; -1 if none is.
int32_t row_edge_at(std::span<const PlacedRow> placed, int y, int band);

}  // namespace kestrelon::grid_layout
