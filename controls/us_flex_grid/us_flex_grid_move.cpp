// The current cell and the selection.
#include "controls/us_flex_grid/us_flex_grid.h"

namespace kestrelon {
namespace {

constexpr short kShift = 1, kControl = 2;

}  // namespace

bool USFlexGrid::can_stand(int row) const {
  if (row < 0 || row >= store_.row_count()) return false;
  const GridRowInfo info = store_.row_info(store_.row_at(row));
  return info.visible && !info.has(kGridRowLocked);
}

bool USFlexGrid::can_stand_column(int position) const {
  if (position < 0 || position >= store_.column_count()) return false;
  const GridColumn& column = store_.column(store_.column_at(position));
  return column.visible && !column.locked;
}

// `count` rows on that can take the caret; as far as there are any.
int USFlexGrid::next_row(int from, int step, int count) const {
  int found = from;
  for (int at = from; count > 0;) {
    at = step > 0 ? store_.next_visible(at + 1) : at > 0 ? store_.previous_visible(at - 1) : -1;
    if (at < 0) break;
    if (!can_stand(at)) continue;
    found = at;
    --count;
  }
  return found;
}

// Wraps to the other end; ends after one turn.
int USFlexGrid::next_column(int from, int step) const {
  const int count = store_.column_count();
  for (int i = 1, at = from; i <= count; ++i) {
    at = (at + step + count) % count;
    if (can_stand_column(at)) return at;
  }
  return from;
}

void USFlexGrid::row_col_set(long row, long column) {
  if (store_.row_count() == 0) return;
  if (edit_pending_ && !update_cell(false)) return;
  GridPlace to = caret();
  if (row >= 0) to.row = static_cast<int>(std::min<long>(row, store_.row_count() - 1));
  if (column >= 0 && column < store_.column_count()) to.column = static_cast<int>(column);
  if (to.row < 0) to.row = 0;
  if (to.column < 0) to.column = 0;
  user_moved(to, 0);
}

// Where a locked or hidden row or column is in the way, that coordinate stays.
void USFlexGrid::move_caret(GridPlace place) {
  const GridPlace before = caret();
  if (!can_stand(place.row)) place.row = before.row;
  if (!can_stand_column(place.column)) place.column = before.column;
  if (place == before) return;
  store_.set_mark(GridMark::Caret, place);
  raise_row_col_changed();
}

bool USFlexGrid::show_cell(GridPlace place) {
  if (place.row < 0 || place.row >= store_.row_count()) return false;
  const grid_layout::GridPage& now = page();
  const grid_layout::SourceRows rows(store_);
  const int row = grid_layout::row_to_show(rows, now.rows_room(), now.first_row, place.row);
  int column = now.first_column;
  if (place.column >= 0 && place.column < store_.column_count()) {
    const grid_layout::ColumnStrip strip{columns_, FreezeAtCol.get(), now.number_width,
                                         now.inner.right};
    column = grid_layout::column_to_show(strip, now.first_column, place.column);
  }
  if (row == now.first_row && column == now.first_column) return false;
  return scroll_to(row, column);
}

// The caret goes where the user or the program has sent it, the selection and the view follow.
void USFlexGrid::user_moved(GridPlace place, short shift) {
  const int row_before = caret().row;
  const int record_before = row_before >= 0 ? store_.row_at(row_before) : -1;
  move_caret(place);
  if (caret().row < 0 || caret().row >= store_.row_count()) return;
  const bool other_row = store_.row_at(caret().row) != record_before;
  const bool selected = store_.row_info(store_.row_at(caret().row)).has(kGridSelected);
  if (other_row || !selected || shift != 0) select_by_caret(shift);
  show_cell(caret());
  show_change();
  tell_readers(EVENT_OBJECT_FOCUS);
}

void USFlexGrid::select_by_caret(short shift) {
  const int row = caret().row;
  if (row < 0) return;
  const bool standard = MultiSelect.get() == Multi_Standard;
  if (MultiSelect.get() == Multi_Latch || (standard && (shift & kControl) != 0)) return;
  const int anchor = store_.mark(GridMark::Anchor).row;
  const int count_before = store_.selected_count();
  const bool row_was = store_.row_info(store_.row_at(row)).has(kGridSelected);
  store_.select_range(false);
  if (standard && (shift & kShift) != 0 && anchor >= 0) {
    store_.select_range(true, anchor, row);
  } else {
    store_.set_mark(GridMark::Anchor, caret());
    store_.set_row_bit(store_.row_at(row), kGridSelected, true);
  }
  if (!row_was || store_.selected_count() != count_before) raise_selection_changed();
}

void USFlexGrid::select_all_rows(bool visible_only) {
  store_.select_range(!visible_only);
  if (visible_only)
    for (int i = store_.next_visible(0); i >= 0 && i < store_.row_count();
         i = i + 1 < store_.row_count() ? store_.next_visible(i + 1) : -1)
      store_.set_row_bit(store_.row_at(i), kGridSelected, true);
  touch();
}

void USFlexGrid::unselect_all_rows() {
  store_.select_range(false);
  touch();
}

}  // namespace kestrelon
