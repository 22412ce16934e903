// The mouse. Every handler of the host may change the tabs or end the control, so nothing is
// remembered across an event but numbers, which a change of the list clears.
#include "chrome/us_tab/us_tab.h"
#include "frame/input_state.h"

namespace kestrelon {

using tab_strip::Hit;
using tab_strip::Part;

Hit USTab::part_at(float x, float y) {
  ensure_layout();
  return tab_strip::hit(strip_, static_cast<int>(x), static_cast<int>(y));
}

void USTab::forget_input() {
  hot_ = pressed_ = {};
  drag_from_ = -1;
}

void USTab::set_hot(Hit part) {
  if (!Enabled.get() || !user_mode()) part = {};
  if (part == hot_) return;
  const bool was_box = hot_.part == Part::kBox, is_box = part.part == Part::kBox;
  hot_ = part;
  redraw();
  if (was_box && !is_box) raise_control_box_exit();
  if (!was_box && is_box) raise_control_box_enter();
}

void USTab::mouse_move(short button, short shift, float x, float y) {
  if (user_mode()) {
    set_hot(part_at(x, y));
    if (hot_.part != Part::kNothing) track_leave();
    if (hot_.part == Part::kBox) raise_control_box_hover(x, y);
    if (pressed_.part == Part::kTab && drag_from_ >= 0 && (button & kLeftButton) != 0) {
      const int to = tab_strip::drop_place(strip_, side(), pressed_.tab, static_cast<int>(x),
                                           static_cast<int>(y));
      if (to != pressed_.tab) {
        move_tab(pressed_.tab, to);
        pressed_.tab = to;
      }
    }
  }
  raise_mouse_move(button, shift, x, y);
}

bool USTab::window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT&) {
  if (message == WM_DESTROY) {
    watch_.stop();
    give_back();  // the window's children would go with it
  } else if (message == ChildWatch::focus_message()) {
    focus_came(reinterpret_cast<HWND>(wparam));
  } else if (message == ChildWatch::key_message()) {
    page_key(static_cast<int>(wparam), static_cast<short>(lparam));
  }
  return false;
}

void USTab::window_message_after(UINT message, WPARAM, LPARAM) {
  if (message == WM_MOUSELEAVE) set_hot({});
}

void USTab::mouse_down(short button, short shift, float x, float y) {
  const Hit part = part_at(x, y);
  const bool left = button == kLeftButton && Enabled.get();
  if (left) {
    pressed_ = part;
    drag_from_ = part.part == Part::kTab && AllowReorder.get() ? part.tab : -1;
    if (part.part != Part::kTab && part.part != Part::kNothing) redraw();
  }
  raise_mouse_down(button, shift, x, y);
  if (!left || pressed_ != part) return;
  switch (part.part) {
    case Part::kBox:
      return raise_control_box_mouse_down(x, y);
    case Part::kBack:
      return scroll(-1);
    case Part::kForward:
      return scroll(1);
    case Part::kTab:
      return choose(part.tab);
    default:
      return;
  }
}

void USTab::mouse_up(short button, short shift, float x, float y) {
  const Hit part = part_at(x, y);
  const Hit pressed = pressed_;
  const int from = drag_from_;
  if (button == kLeftButton && pressed_.part != Part::kNothing) {
    pressed_ = {};
    drag_from_ = -1;
    redraw();
  }
  const long count = tab_count();
  raise_mouse_up(button, shift, x, y);
  if (button != kLeftButton) return;
  if (pressed.part == Part::kBox) return raise_control_box_mouse_up(x, y);
  if (pressed.part == Part::kTab && from >= 0 && pressed.tab != from) {
    long moved_from = from, moved_to = pressed.tab;
    raise_tab_moved(moved_from, moved_to);
  }
  // A handler that changed the list has changed what the number means.
  if (pressed.part == Part::kCloseMark && part == pressed && count == tab_count())
    close_tab(part.tab);
}

// A disabled tab answers to code only.
void USTab::choose(int index) {
  if (!usable(index)) return;
  switch_to(index);
  long told = index;
  if (known(index)) raise_tab_click(told);
}

void USTab::scroll(int direction) {
  first_ = strip_.first + direction;
  wanted_ = -1;
  relayout();
}

void USTab::close_tab(int index) {
  if (!usable(index)) return;
  long told = index;
  VARIANT_BOOL cancel = VARIANT_FALSE;
  const long count = tab_count();
  raise_tab_close(told, cancel);
  if (cancel == VARIANT_FALSE && count == tab_count()) remove_tab(index);
}

}  // namespace kestrelon
