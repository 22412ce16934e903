// Which rows a view shows: positions of scrolling count whole rows, so rows may differ in height
// and be ten millions.
#pragma once

#include <cstdint>

#include "frame/kit/pixel_view.h"

namespace kestrelon {

/// Heights of rows in pixels, each at least 1; asked only for rows near those that show.
class RowHeights {
 public:
  virtual ~RowHeights() = default;
  virtual int height(int row) const = 0;
};

class FixedRowHeights final : public RowHeights {
 public:
  explicit FixedRowHeights(int pixels) : pixels_(pixels > 0 ? pixels : 1) {}
  int height(int) const override { return pixels_; }

 private:
  int pixels_;
};

/// A view of `height` pixels over `rows` rows. Cheap to make; holds no state of its own.
class RowWindow {
 public:
  RowWindow(const RowHeights& heights, int rows, int height)
      : heights_(heights), rows_(rows), height_(height) {}

  /// The furthest row that may stand at the top: those from it on still fill the view.
  int last_top() const;
  int limit_top(int64_t top) const;
  /// Rows that show whole from `top` on; at least 1.
  int whole_rows(int top) const;
  /// Rows of which something shows.
  int touched_rows(int top) const;
  /// The top with which `row` shows whole, changed as little as may be.
  int top_showing(int row, int top) const;
  /// The row at `y` pixels below the view's upper edge; -1 above it and below the last row.
  int row_at(int y, int top) const;
  /// Where a row begins; meaningful for rows near those that show.
  int y_of(int row, int top) const;
  /// A page down or up as lists do it: first to the edge of the view, then by a view.
  int page_target(int row, int top, bool down) const;

 private:
  const RowHeights& heights_;
  int rows_;
  int height_;
};

/// Rows to scroll by for a pointer `beyond` pixels outside the view (negative above it): the
/// further away, the faster.
int edge_scroll_rows(int beyond, int row_height);

}  // namespace kestrelon
