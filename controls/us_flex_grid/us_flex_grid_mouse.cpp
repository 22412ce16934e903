// The mouse: hover and press of headings, resizing, moving of columns, selection, cell clicks.
#include "controls/us_flex_grid/us_flex_grid.h"

namespace kestrelon {
namespace {

constexpr short kShift = 1, kControl = 2;
constexpr short kLeft = 1, kRight = 2;
constexpr long kPointerRow = 7, kPointerColumn = 9;  // sizes up and down, sideways
constexpr int kLeastColumn = 5;                      // pixels at 96 dpi
constexpr UINT kScrollEvery = 60;                    // milliseconds

}  // namespace

bool USFlexGrid::headers_react() const {
  return AllowColumnDrag.get() || AllowColumnSwap.get() || AllowColumnSort.get();
}

grid_layout::GridHit USFlexGrid::hit_at(float x, float y) {
  const grid_layout::HitOptions options{AllowRowResizing.get(), AllowColumnResizing.get(),
                                        RowCheckBoxes.get(), CenterRowImage.get()};
  return grid_layout::hit_test(page(), options, static_cast<int>(x), static_cast<int>(y));
}

void USFlexGrid::set_pointer(long pointer, bool hand) {
  if (pointer_ == pointer && hand_ == hand) return;
  pointer_ = pointer;
  hand_ = hand;
  apply_mouse_pointer();
}

grid_layout::CellParts USFlexGrid::parts_of(GridPlace place) {
  const grid_layout::GridPage& now = page();
  const grid_layout::PlacedRow* const row = now.row(place.row);
  const grid_layout::PlacedColumn* const column = now.column(place.column);
  if (row == nullptr || column == nullptr) return {};
  const int record = store_.row_at(place.row);
  const GridCellInfo cell = store_.cell(record, column->store);
  grid_layout::CellShape shape;
  shape.cell = grid_layout::cell_rect(*column, *row);
  shape.leads_row = column == now.columns.data();
  shape.alignment = static_cast<int>(cell.alignment);
  shape.image_alignment = static_cast<int>(store_.column(column->store).image_alignment);
  if (const GridObject picture = store_.picture(record, column->store)) {
    shape.image = images_.picture_size(picture.get());
  } else if (store_.look(cell.style).image != 0) {
    shape.image = images_.size();
  }
  if (expand_image_ != 0) {
    const PixelRect text = grid_layout::cell_parts(now.metrics, shape).text;
    if (has_expand_mark(place, text)) shape.mark = images_.image_size(expand_image_);
  }
  return grid_layout::cell_parts(now.metrics, shape);
}

void USFlexGrid::mouse_down(short button, short shift, float x, float y) {
  using grid_layout::GridPart;
  hide_cell_tip();
  const bool in_box = in_editor(static_cast<int>(x), static_cast<int>(y));
  if (in_box || (edit_pending_ && !update_cell(false))) {
    press_ = Press::kNone;
    return raise_mouse_down(button, shift, x, y);
  }
  const grid_layout::GridHit at = hit_at(x, y);
  press_at_ = {at.row, at.column};
  press_x_ = static_cast<int>(x);
  press_y_ = static_cast<int>(y);
  press_shift_ = shift;
  press_ = Press::kNone;
  const bool left = button == kLeft;
  if (left && at.part == GridPart::kColumnEdge) {
    press_ = Press::kColumnEdge;
    press_size_ = page().column(at.column)->width;
  } else if (left && at.part == GridPart::kRowEdge) {
    press_ = Press::kRowEdge;
    press_size_ = page().row(at.row)->height;
  } else if (at.part == GridPart::kHeader) {
    if (left && at.column >= 0) {
      press_ = Press::kHeader;
      dragged_by_ = 0;
      if (headers_react()) pressed_header_ = store_.column_at(at.column);
      show_change();
    }
  } else if (left && at.part == GridPart::kRowCheck) {
    press_ = Press::kRowCheck;
    if (can_stand(at.row)) toggle_row_check(at.row);
  } else if (at.row >= 0 && at.column >= 0 && (left || button == kRight)) {
    press_cells(at, button, shift, static_cast<int>(x), static_cast<int>(y));
  }
  raise_mouse_down(button, shift, x, y);
}

void USFlexGrid::press_cells(const grid_layout::GridHit& at, short button, short shift, int x,
                             int y) {
  const GridPlace place{at.row, at.column};
  const int record = store_.row_at(at.row), column = store_.column_at(at.column);
  const GridDataType type = store_.column(column).type;
  if (button == kRight) {
    if (!store_.row_info(record).has(kGridSelected)) user_moved(place, 0);
    return;
  }
  press_ = Press::kCells;
  store_.set_mark(GridMark::Press, place);
  if (!can_stand(at.row)) return;
  if (type == GridDataType::Boolean) {
    const grid_layout::CellParts parts = parts_of(place);
    if (grid_layout::contains(parts.check, x, y)) toggle_boolean(place);
  } else if (type == GridDataType::Button) {
    press_ = Press::kButton;
    pressed_button_ = {at.row, column};
  }
  const GridPlace now = store_.mark(GridMark::Press);
  if (now.row < 0 || now.column < 0) return;
  const long mode = MultiSelect.get();
  const bool toggles = mode == Multi_Latch || (mode == Multi_Standard && (shift & kControl) != 0);
  if (toggles) {
    const int row = store_.row_at(now.row);
    store_.set_row_bit(row, kGridSelected, !store_.row_info(row).has(kGridSelected));
    store_.set_mark(GridMark::Anchor, now);
    move_caret(now);
    raise_selection_changed();
    show_change();
    return;
  }
  user_moved(now, static_cast<short>(shift & kShift));
}

void USFlexGrid::toggle_row_check(int position) {
  const int record = store_.row_at(position);
  store_.set_row_bit(record, kGridChecked, !store_.row_info(record).has(kGridChecked));
  long row = position;
  show_change();
  raise_row_checked(row);
}

// Needs no AllowEdit; a refusal leaves the cell as it was.
void USFlexGrid::toggle_boolean(GridPlace place) {
  if (!can_stand(place.row) || !can_stand_column(place.column)) return;
  if (edit_pending_ && !update_cell(false)) return;
  if (!ask_before_edit(place)) return;
  const GridPlace now = store_.mark(GridMark::Edit);
  const bool checked = store_.checked(store_.row_at(now.row), store_.column_at(now.column));
  store_edit(std::wstring(boolean_text(!checked)));
}

void USFlexGrid::mouse_move(short button, short shift, float x, float y) {
  switch (hover_.moved(pointer_over_window() || has_capture())) {
    case Hover::Move::kEnter:
      track_leave();
      raise_mouse_enter();
      break;
    case Hover::Move::kExit:
      return raise_mouse_exit();
    default:
      break;
  }
  const grid_layout::GridHit at = hit_at(x, y);
  if (press_ == Press::kNone) {
    hover(at);
  } else {
    drag_to(shift, static_cast<int>(x), static_cast<int>(y));
  }
  raise_mouse_move(button, shift, x, y);
}

void USFlexGrid::hover(const grid_layout::GridHit& at) {
  using grid_layout::GridPart;
  const GridPlace place{at.row, at.column};
  if (place != mouse_at_) {
    mouse_at_ = place;
    watch_for_tip(at.part == GridPart::kCell ? place : GridPlace{});
  }
  long pointer = 0;
  if (at.part == GridPart::kColumnEdge) pointer = kPointerColumn;
  if (at.part == GridPart::kRowEdge) pointer = kPointerRow;
  set_pointer(pointer, over_hand(at));
  const bool heading =
      at.part == GridPart::kHeader && at.column >= 0 && AllowColumnHover.get() && headers_react();
  const int column = heading ? store_.column_at(at.column) : -1;
  if (column == hovered_) return;
  hovered_ = column;
  show_change();
}

bool USFlexGrid::over_hand(const grid_layout::GridHit& at) const {
  return at.part == grid_layout::GridPart::kCell && Enabled.get() &&
         cell_hand_pointer(at.row, store_.column_at(at.column));
}

void USFlexGrid::drag_to(short shift, int x, int y) {
  const grid_layout::GridPage& now = page();
  switch (press_) {
    case Press::kColumnEdge: {
      const grid_layout::PlacedColumn* const column = now.column(press_at_.column);
      if (column == nullptr) return;
      const int width = press_size_ + x - press_x_;
      if (width < scale()(kLeastColumn)) return;
      store_.set_column_width_pixels(column->store, width);
      return touch();
    }
    case Press::kRowEdge: {
      const int height = press_size_ + y - press_y_;
      if (press_at_.row >= store_.row_count() || height < scale()(kLeastColumn)) return;
      store_.set_row_height(store_.row_at(press_at_.row), height);
      return touch();
    }
    case Press::kHeader:
      if (!AllowColumnSwap.get() && !AllowColumnDrag.get()) return;
      dragged_by_ = x - press_x_;
      return touch();
    case Press::kCells:
      last_y_ = y;
      if ((shift & kShift) == 0 && MultiSelect.get() != Multi_Latch) drag_rows(y);
      return;
    default:
      return;
  }
}

// The rows between press and pointer; above and below the rows the view goes on by itself.
void USFlexGrid::drag_rows(int y) {
  const grid_layout::GridPage& now = page();
  const GridPlace from = store_.mark(GridMark::Press);
  if (from.row < 0) return;
  const bool outside = y < now.rows_area.top || y >= now.rows_area.bottom;
  if (outside && !scroll_timer_.running()) {
    scroll_timer_.start(kScrollEvery, [this] {
      const Hold hold(*this);
      auto_scroll();
    });
  } else if (!outside) {
    scroll_timer_.stop();
  }
  int to = grid_layout::RowAtY(now.rows, y);
  if (to < 0 && !now.rows.empty())
    to = y < now.rows_area.top ? now.rows.front().position : now.rows.back().position;
  if (to < 0 || to == caret().row || !can_stand(to)) return;
  move_caret({to, caret().column});
  const int anchor = store_.mark(GridMark::Press).row;
  if (anchor < 0 || caret().row < 0) return;
  store_.select_range(false);
  if (MultiSelect.get() == Single_Select) {
    store_.set_row_bit(store_.row_at(caret().row), kGridSelected, true);
  } else {
    store_.select_range(true, anchor, caret().row);
  }
  raise_selection_changed();
  show_change();
}

void USFlexGrid::auto_scroll() {
  if (press_ != Press::kCells) return scroll_timer_.stop();
  const grid_layout::SourceRows rows(store_);
  const int step = last_y_ < page().rows_area.top ? -1 : 1;
  const int to = grid_layout::stepped_row(rows, page().first_row, step);
  if (to >= 0) scroll_to(to, page().first_column);
  drag_rows(last_y_);
}

void USFlexGrid::end_press() {
  scroll_timer_.stop();
  press_ = Press::kNone;
  pressed_header_ = -1;
  dragged_by_ = 0;
  pressed_button_ = {};
}

void USFlexGrid::mouse_up(short button, short shift, float x, float y) {
  const Press press = press_;
  const bool moved = dragged_by_ != 0;
  end_press();
  if (button == kLeft) {
    if (moved) touch();
    show_change();
    release(press, shift, static_cast<int>(x), static_cast<int>(y));
  }
  raise_mouse_up(button, shift, x, y);
}

void USFlexGrid::release(Press press, short shift, int x, int y) {
  switch (press) {
    case Press::kColumnEdge: {
      if (press_at_.column >= store_.column_count()) return;
      long column = store_.column_at(press_at_.column);
      long move = store_.column(static_cast<int>(column)).move_control;
      return raise_column_size_changed(column, move);
    }
    case Press::kHeader:
      return release_header(x, y);
    case Press::kCells:
    case Press::kButton:
      return release_cell(shift, x, y);
    default:
      return;
  }
}

void USFlexGrid::release_header(int x, int y) {
  const grid_layout::GridHit at = hit_at(static_cast<float>(x), static_cast<float>(y));
  const int from = press_at_.column, to = grid_layout::ColumnAtX(page().columns, x);
  if (from < 0 || from >= store_.column_count()) return;
  if (to != from) {
    if (to < 0 || at.part == grid_layout::GridPart::kNone) return;
    const bool done = AllowColumnDrag.get()   ? store_.move_column(from, to)
                      : AllowColumnSwap.get() ? store_.swap_columns(from, to)
                                              : false;
    if (done) columns_moved(to, from);
    return;
  }
  if (y < page().header.top || y >= page().header.bottom) return;
  const int record = store_.column_at(from);
  long column = record;
  sort_.note_click(record);
  const uint32_t before = store_.structure_version();
  raise_column_click(column);
  if (AllowColumnSort.get() && before == store_.structure_version()) sort(record, -1, -1, -1);
}

void USFlexGrid::release_cell(short shift, int x, int y) {
  using grid_layout::GridPart;
  const grid_layout::GridHit at = hit_at(static_cast<float>(x), static_cast<float>(y));
  const GridPlace pressed = store_.mark(GridMark::Press);
  if (at.row < 0 || at.column < 0 || at.row != pressed.row || at.column != pressed.column) return;
  if (!can_stand(at.row)) return;
  const int record = store_.row_at(at.row), index = store_.column_at(at.column);
  long row = at.row, column = index;
  if (grid_layout::contains(parts_of(pressed).mark, x, y)) toggle_row_height(at.row);
  const bool row_image = at.part == GridPart::kRowImage && store_.row_info(record).image != 0;
  const bool image = row_image || grid_layout::contains(parts_of(pressed).image, x, y);
  const bool button = store_.column(index).type == GridDataType::Button;
  const bool hand = cell_hand_pointer(row, column);
  if (button) raise_cell_button_click(row, column);
  if (hand) raise_cell_hand_click(row, column, shift);
  if (image) raise_cell_image_click(row, column);
  raise_cell_click(row, column, shift);
}

// Between the height that a row has by itself and the one that shows all of its text.
void USFlexGrid::toggle_row_height(int position) {
  const int record = store_.row_at(position);
  const bool tall = store_.row_info(record).height > default_row_height_;
  set_row_height(position, tall ? default_row_height_ : -1);
}

void USFlexGrid::click() {
  raise_click();
  const GridPlace at = store_.mark(GridMark::Press);
  if ((EditTrigger.get() & OnMouseClick) != 0 && at.row >= 0 && at == caret() && !edit_pending_ &&
      press_y_ >= page().rows_area.top && (press_shift_ & (kShift | kControl)) == 0)
    start_edit(at);
}

void USFlexGrid::double_click() {
  const grid_layout::GridHit at =
      hit_at(static_cast<float>(press_x_), static_cast<float>(press_y_));
  if (at.part == grid_layout::GridPart::kColumnEdge) {
    end_press();
    long column = store_.column_at(at.column);
    set_column_width_auto_size(column);
    long move = store_.column(static_cast<int>(column)).move_control;
    raise_column_size_changed(column, move);
  }
  raise_dbl_click();
  if ((EditTrigger.get() & OnMouseDblClick) != 0 && at.part == grid_layout::GridPart::kCell &&
      !edit_pending_ && at.row == caret().row && at.column == caret().column)
    start_edit(caret());
}

bool USFlexGrid::window_message_before(UINT message, WPARAM wparam, LPARAM lparam,
                                       LRESULT& result) {
  if (message == WM_SETCURSOR && hand_ && LOWORD(lparam) == HTCLIENT &&
      reinterpret_cast<HWND>(wparam) == window()) {
    SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_HAND)));
    result = TRUE;
    return true;
  }
  // A bound control goes home before the windows in the grid die with it.
  if (message == WM_DESTROY) close_editor(false);
  if (answer_check(message, result)) return true;
  if (take_editor_message(message, wparam, lparam)) return true;
  if (forward_composition(message, wparam, lparam, result)) return true;
  // A press whose release goes elsewhere ends without an effect.
  if (message == WM_CANCELMODE && press_ != Press::kNone) {
    end_press();
    touch();
  }
  return false;
}

void USFlexGrid::window_message_after(UINT message, WPARAM, LPARAM) {
  if (message != WM_MOUSELEAVE) return;
  hover_.left();
  mouse_at_ = {};
  hide_cell_tip();
  if (hovered_ >= 0) {
    hovered_ = -1;
    show_change();
  }
  raise_mouse_exit();
}

}  // namespace kestrelon
