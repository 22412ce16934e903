// The mouse: choosing, checking, dragging a selection or an item, scrolling beyond the edge.
#include <algorithm>
#include <cstdlib>

#include "controls/us_list_box/us_list_box.h"
#include "frame/input_state.h"

namespace kestrelon {
namespace {

constexpr UINT kEdgeInterval = 50;  // milliseconds between two steps beyond the edge

}  // namespace

void USListBox::mouse_down(short button, short shift, float x, float y) {
  press_button_ = button;
  press_shift_ = shift;
  last_x_ = static_cast<int>(x);
  last_y_ = static_cast<int>(y);
  const short pressed = button, modifiers = shift;
  raise_mouse_down(button, shift, x, y);
  hide_item_tip();
  if (!editing() || take_edit()) press(pressed, modifiers, last_x_, last_y_);
}

void USListBox::press(short button, short shift, int x, int y) {
  const int index = item_at(y);
  pressed_ = -1;
  if (index < 0 || (button != kLeftButton && button != kRightButton)) return;
  if (button == kRightButton) {
    if (!model_.selected(index)) choice_changed(model_.choose(index, Choice::kPlain));
    return;
  }
  if (hit_item(parts_of(model_.row_of_index(index)), x, y) == ItemPart::kCheck)
    return toggle_check(index);
  pressed_ = index;
  press_y_ = y;
  const bool changed = model_.choose(index, choice_of_click(shift, model_.mode()));
  if (changed) show_item(index, true);
  choice_changed(changed);
}

void USListBox::double_click() {
  const Hold hold(*this);
  const short button = press_button_;
  mouse_down(button, press_shift_, static_cast<float>(last_x_), static_cast<float>(last_y_));
  if (button == kLeftButton && item_at(last_y_) >= 0) raise_dbl_click();
}

void USListBox::mouse_up(short button, short shift, float x, float y) {
  const Hold hold(*this);
  const short released = button;
  raise_mouse_up(button, shift, x, y);
  if (released == kLeftButton) end_drag(true);
}

void USListBox::pointer_moved(short button, short, float x, float y) {
  last_x_ = static_cast<int>(x);
  last_y_ = static_cast<int>(y);
  if ((button & kLeftButton) == 0 || pressed_ < 0) {
    if (pressed_ >= 0) end_drag(false);  // the release went elsewhere
    return set_hot(pointer_over() ? item_at(last_y_) : -1);
  }
  const bool outside = last_y_ < 0 || last_y_ >= view_height();
  if (!outside) edge_timer_.stop();
  if (outside && !edge_timer_.running()) edge_timer_.start(kEdgeInterval, [this] { edge_tick(); });
  AllowDrag.get() ? drag_item(last_y_) : drag_selection(last_y_);
}

void USListBox::drag_selection(int y) {
  const int last = std::max(view_height() - 1, 0);
  int index = item_at(std::clamp(y, 0, last));
  if (index < 0) index = model_.index_of_row(model_.row_count() - 1);
  choice_changed(model_.drag_to(index));
}

void USListBox::drag_item(int y) {
  if (!moving_item_ && std::abs(y - press_y_) < GetSystemMetrics(SM_CYDRAG)) return;
  moving_item_ = !model_.is_virtual() && !Sorted.get();
  if (!moving_item_) return;
  const int first = first_row();
  int row = rows().row_at(std::max(y, 0), first);
  if (row < 0)
    row = model_.row_count();
  else if (y - rows().y_of(row, first) > height(row) / 2)
    ++row;
  if (std::exchange(drop_row_, row) != row) redraw();
}

void USListBox::edge_tick() {
  const Hold hold(*this);
  const int beyond = last_y_ < 0 ? last_y_ : std::max(last_y_ - view_height() + 1, 0);
  if (beyond == 0 || pressed_ < 0 || !has_capture()) return edge_timer_.stop();
  scroll_to(int64_t{first_row()} + edge_scroll_rows(beyond, row_height_), true);
  moving_item_ ? drag_item(last_y_) : drag_selection(last_y_);
}

void USListBox::end_drag(bool drop) {
  edge_timer_.stop();
  const int from = std::exchange(pressed_, -1), row = std::exchange(drop_row_, -1);
  if (!std::exchange(moving_item_, false)) return;
  redraw();
  if (!drop || row < 0) return;
  int to = row < model_.row_count() ? model_.index_of_row(row) : model_.count();
  if (to > from) --to;  // it leaves its own place first
  move_by_user(from, to);
}

void USListBox::move_by_user(int from, int to) {
  if (from == to || !model_.has(from) || !model_.has(to) || model_.is_virtual()) return;
  long source = from, target = to;
  VARIANT_BOOL cancel = VARIANT_FALSE;
  const Hold hold(*this);
  const uint32_t slot = model_.store().slot(from);
  raise_before_move(source, target, cancel);
  // A handler may have cleared or sorted the list: only what was dragged is moved.
  if (cancel != VARIANT_FALSE || !model_.has(from) || model_.store().slot(from) != slot) return;
  if (!model_.move(from, to)) return;
  contents_changed();
  show_item(to, true);
  source = from;
  target = to;
  raise_after_move(source, target);
}

void USListBox::toggle_check(int index) {
  if (!model_.has(index)) return;
  if (!model_.selectable(index)) return;
  model_.items().set_flag(index, ItemFlag::kChecked,
                          !model_.store().has_flag(index, ItemFlag::kChecked));
  redraw();
  tell_readers(EVENT_OBJECT_STATECHANGE, model_.row_of_index(index) + 1);
  long which = index;
  raise_item_checked(which);
  if (!model_.is_virtual()) return;
  virtual_.forget();  // the handler has changed what the program holds: it is asked anew
  redraw();
}

void USListBox::hover_changed() {
  if (!pointer_over()) set_hot(-1);
}

void USListBox::set_hot(int index) {
  if (!user_mode() || hot_ == index) return;
  hot_ = index;
  if (HotTracking.get()) redraw();
  watch_for_tip(index);
}

void USListBox::lost_focus() {
  const Hold hold(*this);
  if (editing()) take_edit();
  hide_item_tip();
  ItemControl::lost_focus();
}

void USListBox::drag(Drag& step) {
  IDispatch* data = ComPtr<IDispatch>(step.data).detach();
  if (step.stage == Drag::Stage::kDrop) {
    raise_ole_drag_drop(data, step.effect, step.button, step.shift, step.x, step.y);
  } else {
    auto state = static_cast<short>(step.stage);
    raise_ole_drag_over(data, step.effect, step.button, step.shift, step.x, step.y, state);
  }
  if (data != nullptr) data->Release();
}

}  // namespace kestrelon
