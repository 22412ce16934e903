// The keyboard: what each key does, and typing that searches.
#include "base/fold.h"
#include "controls/us_flex_grid/us_flex_grid.h"
#include "grid/store/store_search.h"

namespace kestrelon {
namespace {

constexpr short kShift = 1, kControl = 2;
constexpr DWORD kSearchGap = 1000;  // milliseconds
constexpr int kNavigate = 4;        // the search mode of typing ahead

}  // namespace

bool USFlexGrid::wants_key(int key, short shift) const {
  switch (key) {
    case VK_TAB:
      return (shift & kControl) == 0;
    case VK_RETURN:
      return edit_pending_ || (AllowEdit.get() && (EditTrigger.get() & OnEnterKey) != 0);
    case VK_ESCAPE:
      return edit_pending_;
    default:
      return key >= VK_LEFT && key <= VK_DOWN;
  }
}

void USFlexGrid::key_down(short& key, short& shift) {
  const short pressed = key;
  hide_cell_tip();
  const bool done = edit_pending_ ? edit_key(key, shift) : grid_key(key, shift);
  raise_key_down(key, shift);
  // The box must not act on a key that has moved the cell; what the handler ends stays ended.
  if (done && key == pressed) key = 0;
}

// Keys while a cell is edited; true when the box is not to see the key.
bool USFlexGrid::edit_key(short key, short shift) {
  switch (key) {
    case VK_ESCAPE:
      close_editor(true);
      return true;
    case VK_RETURN:
      if (tall_box_ && !bound_.active() && shift == kControl) return false;  // a new line
      update_cell(true);
      return true;
    case VK_F2:
      caret_keys_ = !caret_keys_;
      return true;
    case VK_LEFT:
    case VK_RIGHT: {
      const TextRange at = box_.selection();
      const int length = static_cast<int>(box_.text().size());
      const bool edge = key == VK_LEFT ? at.end == 0 : at.start == length || at.end == length;
      if (!caret_keys_ || !edge || shift != 0) return false;
      if (update_cell(false)) move_key(key, 0);
      return true;
    }
    case VK_TAB:
    case VK_UP:
    case VK_DOWN:
      if (key != VK_TAB && line_key(key)) return false;
      if (update_cell(false)) move_key(key, key == VK_TAB ? shift : short{0});
      return true;
    case VK_HOME:
    case VK_END:
      if ((shift & kControl) == 0) return false;
      if (update_cell(false)) edge_key(key == VK_END, shift);
      return true;
    default:
      return false;
  }
}

bool USFlexGrid::grid_key(short key, short shift) {
  switch (key) {
    case VK_INSERT:
      if (AllowInsert.get()) insert_row();
      return true;
    case VK_DELETE:
      if (AllowDelete.get() && store_.row_count() > 0)
        FocusRectMode.get() == Focus_Col ? blank_cell() : delete_row();
      return true;
    case VK_F2:
      if ((EditTrigger.get() & OnF2Key) != 0) start_edit(caret());
      return true;
    case VK_RETURN:
      if ((EditTrigger.get() & OnEnterKey) != 0) start_edit(caret());
      return false;
    case VK_SPACE:
      space_key(shift);
      return false;
    case 'C':
    case 'V':
      return shift == kControl && clipboard_key(key);
    case 'A':
      if (shift != kControl || MultiSelect.get() == Single_Select) return false;
      select_all_rows(true);
      raise_selection_changed();
      return true;
    case VK_HOME:
    case VK_END:
      edge_key(key == VK_END, shift);
      return true;
    default:
      return move_key(key, shift);
  }
}

bool USFlexGrid::move_key(short key, short shift) {
  if (store_.row_count() == 0 || store_.column_count() == 0) return false;
  GridPlace to = caret();
  if (to.row < 0) to.row = 0;
  if (to.column < 0) to.column = 0;
  const int page_rows =
      std::max(grid_layout::RowsPerPage(page().rows_room(), page().metrics.row_h), 1);
  switch (key) {
    case VK_UP:
      to.row = next_row(caret().row, -1, 1);
      break;
    case VK_DOWN:
      to.row = next_row(caret().row, 1, 1);
      break;
    case VK_PRIOR:
      to.row = next_row(to.row, -1, page_rows);
      break;
    case VK_NEXT:
      to.row = next_row(to.row, 1, page_rows);
      break;
    case VK_LEFT:
      to.column = next_column(to.column, -1);
      break;
    case VK_RIGHT:
      to.column = next_column(to.column, 1);
      break;
    case VK_TAB:
      to.column = next_column(to.column, (shift & kShift) != 0 ? -1 : 1);
      shift = 0;
      break;
    default:
      return false;
  }
  user_moved(to, shift);
  return true;
}

// Home and End: the first or last column; with Ctrl the first or last row; with Shift the rows up
// to there are selected.
void USFlexGrid::edge_key(bool last, short shift) {
  if (store_.row_count() == 0 || store_.column_count() == 0) return;
  GridPlace to = caret();
  if (to.row < 0) to.row = 0;
  if (shift == 0) {
    to.column = last ? next_column(0, -1) : next_column(store_.column_count() - 1, 1);
    return user_moved(to, 0);
  }
  if ((shift & kShift) != 0 && MultiSelect.get() != Single_Select) {
    store_.select_range(false);
    store_.select_range(true, to.row, last ? -1 : 0);
    raise_selection_changed();
  }
  scroll_to(last ? store_.row_count() - 1 : 0, page().first_column);
  show_change();
}

void USFlexGrid::insert_row() {
  long row = caret().row;
  VARIANT_BOOL cancel = VARIANT_FALSE;
  raise_before_insert(row, cancel);
  if (cancel != VARIANT_FALSE || edit_pending_) return;
  const bool middle = caret().row >= 0 && caret().row + 1 < store_.row_count();
  long made = add_item(L"", middle ? caret().row + 1 : -1, false, false, false, true, 0);
  row_col_set(made, -1);
  raise_after_insert(made);
}

void USFlexGrid::delete_row() {
  long row = caret().row;
  if (row < 0) return;
  store_.set_mark(GridMark::Press, caret());
  VARIANT_BOOL cancel = VARIANT_FALSE;
  raise_before_delete(row, cancel);
  const int now = store_.mark(GridMark::Press).row;
  if (cancel != VARIANT_FALSE || now < 0 || store_.row_count() == 0) return;
  remove_row(now);
  raise_after_delete();
}

void USFlexGrid::blank_cell() {
  if (caret().row < 0 || caret().column < 0 || !can_stand(caret().row)) return;
  const int column = store_.column_at(caret().column);
  const GridColumn& spec = store_.column(column);
  if (spec.locked || spec.type == GridDataType::Boolean) return;
  if (!ask_before_edit(caret())) return;
  VARIANT_BOOL cancel = VARIANT_FALSE;
  long row = store_.mark(GridMark::Edit).row;
  raise_before_delete(row, cancel);
  const GridPlace at = store_.mark(GridMark::Edit);
  if (cancel != VARIANT_FALSE || at.row < 0 || at.column < 0) return;
  if (store_edit(L"")) raise_after_delete();
}

void USFlexGrid::space_key(short shift) {
  const GridPlace at = caret();
  if (at.row < 0 || at.column < 0) return;
  long row = at.row, column = store_.column_at(at.column);
  const GridDataType type = store_.column(static_cast<int>(column)).type;
  const bool by_cell = FocusRectMode.get() == Focus_Col || !RowCheckBoxes.get();
  if (RowCheckBoxes.get() &&
      !(by_cell && (type == GridDataType::Boolean || type == GridDataType::Button)))
    return toggle_row_check(at.row);
  if (type == GridDataType::Boolean) return toggle_boolean(at);
  if (type == GridDataType::Button) return raise_cell_button_click(row, column);
  if (cell_hand_pointer(row, column)) raise_cell_hand_click(row, column, shift);
}

void USFlexGrid::key_press(short& character) {
  if (edit_pending_) {
    if (character == VK_RETURN || character == VK_ESCAPE || character == VK_TAB) {
      character = 0;
      return;
    }
    const auto typed = static_cast<wchar_t>(character);
    if (typed != VK_BACK && typed >= L' ' && !filter_passes(typed)) {
      character = 0;
      return;
    }
    long column = store_.column_at(store_.mark(GridMark::Edit).column);
    raise_edit_key_press(column, character);
    if (character != 0) raise_key_press(character);
    return;
  }
  const auto typed = static_cast<wchar_t>(character);
  const bool printable = typed > L' ' && typed != 127;
  if (printable && (EditTrigger.get() & OnAnyKey) != 0 && start_edit(caret())) {
    if (filter_passes(typed)) {
      long column = store_.column_at(store_.mark(GridMark::Edit).column);
      raise_edit_key_press(column, character);
      if (edit_pending_ && character != 0) type_into_editor(static_cast<wchar_t>(character));
    }
    character = 0;
    return;
  }
  if (printable && IsCharAlphaNumericW(typed)) search_key(typed);
  raise_key_press(character);
}

void USFlexGrid::search_key(wchar_t character) {
  const DWORD now = GetTickCount();
  if (now - search_tick_ >= kSearchGap) search_text_.clear();
  search_tick_ = now;
  search_text_ += character;
  GridSearch search{search_text_, static_cast<int>(SearchColumn.get()), kNavigate, false, 0};
  int found = kestrelon::find_item(store_, search);
  while (found >= 0 && !can_stand(found)) {
    search.start = found + 1;
    found = search.start < store_.row_count() ? kestrelon::find_item(store_, search) : -1;
  }
  if (found >= 0) user_moved({found, caret().column < 0 ? 0 : caret().column}, 0);
}

}  // namespace kestrelon
