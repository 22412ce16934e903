// Mouse, keys and focus of the header, and the controls that stand on the group.
#include "controls/us_group_box/us_group_box.h"
#include "frame/input_state.h"

namespace kestrelon {

void USGroupBox::mouse_down(short button, short shift, float x, float y) {
  const Hold hold(*this);
  const short pressed = button;
  USGroupBoxGlue::mouse_down(button, shift, x, y);
  if (pressed != kLeftButton || !user_mode()) return;
  press(group_part_at(places(), static_cast<int>(x), static_cast<int>(y)));
}

void USGroupBox::press(GroupPart part) {
  if (!Enabled.get()) return;
  if (part == GroupPart::kArrow) return set_collapsed(!Collapsed.get());
  if (part == GroupPart::kBox) toggle_value();
}

void USGroupBox::mouse_move(short button, short shift, float x, float y) {
  const GroupPart part = user_mode()
                             ? group_part_at(places(), static_cast<int>(x), static_cast<int>(y))
                             : GroupPart::kNone;
  if (part != hot_) {
    hot_ = part;
    redraw();
  }
  USGroupBoxGlue::mouse_move(button, shift, x, y);
}

void USGroupBox::hover_changed() {
  if (pointer_over() || hot_ == GroupPart::kNone) return;
  hot_ = GroupPart::kNone;
  redraw();
}

// With box and arrow Space works the box and Enter the arrow, else both what there is.
void USGroupBox::key_down(short& key, short&) {
  if ((key != VK_SPACE && key != VK_RETURN) || GetFocus() != window()) return;
  const bool arrow = can_fold() && (key == VK_RETURN || !CheckBoxMode.get());
  if (arrow)
    press(GroupPart::kArrow);
  else if (CheckBoxMode.get())
    press(GroupPart::kBox);
}

bool USGroupBox::wants_key(int key, short) const {
  return focusable() && (key == VK_SPACE || key == VK_RETURN);
}

// A header without box and arrow has nothing to do with the focus: it goes on to what is inside.
void USGroupBox::got_focus() {
  redraw();
  if (focusable() || !user_mode()) return;
  if (GetKeyState(VK_TAB) < 0) send_tab(GetKeyState(VK_SHIFT) < 0);
}

bool USGroupBox::focus_first_child() {
  for (const StandingControl& each : standing()) {
    if (!IsWindowVisible(each.window) || !IsWindowEnabled(each.window)) continue;
    SetFocus(each.window);  // the container hears of it from the control
    return true;
  }
  return false;
}

void USGroupBox::access_key_press(short) {
  focus_first_child();
}

bool USGroupBox::window_message_before(UINT message, WPARAM wparam, LPARAM lparam,
                                       LRESULT& result) {
  if (message == WM_SETFOCUS || message == WM_KILLFOCUS) redraw();
  if (message == WM_PARENTNOTIFY && LOWORD(wparam) == WM_CREATE && bars_.barred()) apply_bars();
  return USGroupBoxGlue::window_message_before(message, wparam, lparam, result);
}

}  // namespace kestrelon
