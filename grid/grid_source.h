// What layout, painting, input and the value operations know of the rows behind a grid.
#pragma once

#include "grid/grid_types.h"

namespace kestrelon {

/// Rows and columns to show. Two kinds of numbers, both from 0:
/// - a *row* or *column* names a record, in the order of creation;
/// - a *position* is a place on the screen's order; `row_at` and `column_at` turn it into a record.
/// Callers pass valid numbers; members that public callers reach resolve theirs first (GridStore).
///
/// A text or a reference handed out lives until the source is changed. A source that is not
/// `resident` fetches rows as they are asked for: there it lives until another row is asked for.
class GridSource {
 public:
  virtual ~GridSource() = default;

  virtual int row_count() const = 0;
  virtual int row_at(int position) const = 0;
  virtual GridRowInfo row_info(int row) const = 0;
  /// True when every row is in memory: may be sorted, searched and walked as a whole.
  virtual bool resident() const = 0;

  virtual int column_count() const = 0;
  virtual int column_at(int position) const = 0;
  virtual const GridColumn& column(int column) const = 0;

  virtual std::wstring_view text(int row, int column) const = 0;
  virtual GridCellInfo cell(int row, int column) const = 0;
  /// The look of a cell's `style`; -1 gives the grid's own.
  virtual const GridLook& look(int style) const = 0;
  virtual GridObject picture(int row, int column) const = 0;

  // Hidden rows. All of these cost little however many rows are hidden.
  virtual int visible_count() const = 0;
  /// The first visible position at or after `position`, the last one at or before; -1 for none.
  virtual int next_visible(int position) const = 0;
  virtual int previous_visible(int position) const = 0;
  /// How many visible positions lie before `position`, and the position with so many before it
  /// (-1 when there are not so many).
  virtual int visible_before(int position) const = 0;
  virtual int visible_at(int rank) const = 0;

  // Kept as they change, so that a repaint may ask.
  virtual int selected_count() const = 0;
  virtual int checked_count() const = 0;
  virtual bool has_row_images() const = 0;

  /// Exact sum of the column's numbers over all rows, or over the visible ones.
  virtual double total(int column, bool visible_only) const = 0;
  virtual const GridTotalLine& total_line(int column) const = 0;

  /// Grows with each change of the set or the order of rows or columns, so that a walk with
  /// handlers in it can tell that the ground has moved.
  virtual uint32_t structure_version() const = 0;
};

}  // namespace kestrelon
