// The mouse: what is hot, what is pressed, and what a press or a release sets off. Every handler of
// the host may change the buttons or end the control, so nothing is remembered across an event but
// numbers, which a change of the list clears.
#include "chrome/us_tool_bar/us_tool_bar.h"
#include "frame/input_state.h"

namespace kestrelon {

using tool_bar::kNothing;

int USToolBar::part_at(float x, float y) const {
  return tool_bar::hit(bar_, static_cast<int>(x), static_cast<int>(y));
}

bool USToolBar::live(int part) const {
  if (!Enabled.get() || part == kNothing) return false;
  return part < 0 || (known(part) && at(part).usable());
}

void USToolBar::set_hot(int part) {
  if (!live(part)) part = kNothing;
  if (part == hot_) return;
  const int old = std::exchange(hot_, part);
  draw_part(old);
  draw_part(hot_);
  show_tip();
}

void USToolBar::set_pressed(int part) {
  const int old = std::exchange(pressed_, part);
  draw_part(old);
  if (part != old) draw_part(part);
}

void USToolBar::show_tip() {
  tip_.Destroy();
  if (hot_ <= 0 || window() == nullptr || at(hot_).tool_tip.empty()) return;
  tip_.set_TipText(at(hot_).tool_tip);
  tip_.Create(window());
}

void USToolBar::mouse_move(short button, short shift, float x, float y) {
  if (user_mode()) {
    const int part = part_at(x, y);
    // While something is pressed nothing else lights up.
    set_hot(pressed_ == kNothing || part == pressed_ ? part : kNothing);
    if (hot_ != kNothing) track_leave();
  }
  raise_mouse_move(button, shift, x, y);
}

void USToolBar::window_message_after(UINT message, WPARAM, LPARAM) {
  if (message == WM_MOUSELEAVE) set_hot(kNothing);
}

void USToolBar::mouse_down(short button, short shift, float x, float y) {
  const int part = part_at(x, y);
  const bool pressed = button == kLeftButton && live(part);
  if (pressed) {
    hot_ = part;
    set_pressed(part);
  }
  raise_mouse_down(button, shift, x, y);
  if (!pressed || pressed_ != part) return;
  if (part == tool_bar::kChevron) {
    open_overflow();
    set_pressed(kNothing);
  } else if (part > 0 && at(part).style == Dropdown_button) {
    drop_down(part);
  }
}

void USToolBar::mouse_up(short button, short shift, float x, float y) {
  const int part = part_at(x, y);
  const bool clicked = button == kLeftButton && pressed_ != kNothing && part == pressed_;
  if (button == kLeftButton && pressed_ != kNothing) {
    hot_ = live(part) && user_mode() ? part : kNothing;
    set_pressed(kNothing);
  }
  const long count = button_count();
  raise_mouse_up(button, shift, x, y);
  // A handler that changed the list has changed what the number means.
  if (clicked && live(part) && count == button_count()) act(part);
}

void USToolBar::act(int part) {
  if (part == tool_bar::kGripper) return raise_gripper_click();
  if (part == tool_bar::kEndPanel) return raise_end_panel_click();
  if (part > 0) push_button(part);
}

void USToolBar::push_button(int index) {
  if (!live(index)) return;
  if (at(index).style == Check_button) set_button_value(index, !at(index).value);
  if (!live(index)) return;  // who heard of the value may have changed the list
  const ToolButton& button = at(index);
  auto number = static_cast<short>(index);
  Bstr key(button.key);
  BSTR passed = key.detach();
  long left = button.left, top = button.top, wide = button.width, high = button.height;
  raise_button_click(number, passed, left, top, wide, high);
  SysFreeString(passed);
}

// Looks pressed until the handler returns, which is as long as its menu is open.
void USToolBar::drop_down(int index) {
  release_mouse();
  set_pressed(index);
  push_button(index);
  set_pressed(kNothing);
}

void USToolBar::open_overflow() {
  release_mouse();
  const HMENU menu = CreatePopupMenu();
  if (menu == nullptr) return;
  for (size_t i = 0; i < bar_.places.size() && i < buttons.size(); ++i) {
    const ToolButton& button = buttons[i];
    if (bar_.places[i].shown) continue;
    const bool first = GetMenuItemCount(menu) == 0;
    if (button.type == Separator) {
      if (!first) AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
      continue;
    }
    const std::wstring& text = !button.caption.empty()    ? button.caption
                               : !button.tool_tip.empty() ? button.tool_tip
                                                          : button.key;
    const UINT look =
        (button.usable() ? 0u : UINT{MF_GRAYED}) | (button.value ? UINT{MF_CHECKED} : 0u);
    AppendMenuW(menu, MF_STRING | look, i + 1, text.c_str());
  }
  POINT corner{bar_.chevron.left, bar_.chevron.bottom};
  ClientToScreen(window(), &corner);
  const long count = button_count();
  const int chosen = TrackPopupMenu(menu, TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTBUTTON, corner.x,
                                    corner.y, 0, window(), nullptr);
  DestroyMenu(menu);
  set_pressed(kNothing);
  // The host may have run while the menu was open.
  if (chosen > 0 && count == button_count()) push_button(chosen);
}

}  // namespace kestrelon
