// The edit cycle: from the question before it to the text in its cell.
#include "controls/us_flex_grid/us_flex_grid.h"

#include "base/text.h"

namespace kestrelon {
void USFlexGrid::force_cell_edit(long row, long column, bool blank) {
  if (row >= 0 || column >= 0) row_col_set(row, column);
  if (!start_edit(caret()) || !blank) return;
  bound_.active() ? bound_.set_text(L"") : box_.set_text(L"");
}

// The edited cell is kept as a place that goes with its row and column, whatever handlers do.
bool USFlexGrid::ask_before_edit(GridPlace place) {
  if (in_event_edit_) return false;
  store_.set_mark(GridMark::Edit, place);
  long row = place.row, column = store_.column_at(place.column);
  VARIANT_BOOL cancel = VARIANT_FALSE;
  in_event_edit_ = true;
  raise_before_edit(row, column, cancel);
  in_event_edit_ = false;
  const GridPlace now = store_.mark(GridMark::Edit);
  return cancel == VARIANT_FALSE && !edit_pending_ && now.row >= 0 && now.column >= 0;
}

bool USFlexGrid::start_edit(GridPlace place) {
  if (!AllowEdit.get() || !Enabled.get() || store_.row_count() == 0 || in_event_edit_) return false;
  if (edit_pending_ && !update_cell(false)) return false;
  if (!can_stand(place.row) || !can_stand_column(place.column)) return false;
  if (store_.column(store_.column_at(place.column)).type == GridDataType::Boolean) return false;
  store_.set_mark(GridMark::Edit, place);
  in_event_edit_ = true;
  take_bound(place);  // its own events run here
  in_event_edit_ = false;
  place = store_.mark(GridMark::Edit);
  const bool stands = place.row >= 0 && place.column >= 0;
  if (stands && ask_before_edit(place) && open_editor()) return true;
  if (!edit_pending_) bound_.drop();
  return false;
}

bool USFlexGrid::update_cell(bool allow_move) {
  if (!edit_pending_) return true;
  if (committing_) return false;
  committing_ = true;
  const bool bound = bound_.active();
  const std::wstring text = bound ? bound_.text() : box_.text();
  const bool unchanged = bound ? bound_.unchanged(text) : text == box_text_;
  bool stored = true;
  if (edit_pending_ && unchanged)
    close_editor(true);
  else if (edit_pending_)
    stored = store_edit(text);
  committing_ = false;
  if (!stored) return false;
  if (allow_move) after_edit_move();
  return true;
}

// Offers the text to the program and stores it; false when it was refused.
bool USFlexGrid::store_edit(std::wstring text) {
  GridPlace at = store_.mark(GridMark::Edit);
  const auto gone = [&] { return at.row < 0 || at.column < 0; };
  if (gone() || text == store_.text(store_.row_at(at.row), store_.column_at(at.column))) {
    close_editor(true);
    return true;
  }
  long row = at.row, column = store_.column_at(at.column);
  Bstr given(text);
  BSTR value = given.detach();
  VARIANT_BOOL cancel = VARIANT_FALSE;
  raise_after_edit(row, column, value, cancel);
  text = to_wstring(value);
  SysFreeString(value);
  if (cancel != VARIANT_FALSE) return false;
  at = store_.mark(GridMark::Edit);
  close_editor(true);
  if (gone()) return true;
  if (trim_blanks(text).empty()) text.clear();
  const int record = store_.row_at(at.row), index = store_.column_at(at.column);
  store_.set_text(record, index, text);
  store_.mark_changed(record, index);
  measure_row(at.row);
  touch();
  return true;
}

void USFlexGrid::after_edit_move() {
  if (EditMove.get() == DontMove || store_.row_count() == 0) return;
  GridPlace to = caret();
  if (EditMove.get() == MoveRight) {
    to.column = next_column(to.column, 1);
  } else {
    to.row = next_row(to.row, 1, 1);
  }
  if (!can_stand(to.row) || !can_stand_column(to.column)) return;
  store_.set_mark(GridMark::Caret, to);
  select_by_caret(0);
  show_cell(caret());
  show_change();
}

}  // namespace kestrelon
