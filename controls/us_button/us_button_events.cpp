// The way of window events through the state machine to the host's events.
#include "controls/us_button/us_button.h"
#include "frame/platform.h"

namespace kestrelon {

void USButton::mouse_down(short button, short shift, float x, float y) {
  input_.mouse_down(button);
  raise_mouse_down(button, shift, x, y);
}

void USButton::mouse_move(short button, short shift, float x, float y) {
  if (!user_mode()) return;
  switch (input_.mouse_move()) {
    case Hover::Move::kEnter:
      return raise_mouse_enter();
    case Hover::Move::kInside:
      return raise_mouse_move(button, shift, x, y);
    case Hover::Move::kExit:
      return raise_mouse_exit();
    case Hover::Move::kNothing:
      return;
  }
}

void USButton::mouse_up(short button, short shift, float x, float y) {
  if (input_.mouse_up(button)) raise_mouse_up(button, shift, x, y);
}

void USButton::double_click() {
  if (input_.double_click()) raise_dbl_click();
}

void USButton::key_down(short& key, short& shift) {
  if (input_.key_down(key, shift)) raise_key_down(key, shift);
}

void USButton::key_up(short& key, short& shift) {
  input_.key_up(key);
  raise_key_up(key, shift);
}

std::span<const UINT> USButton::intercepted_messages() const {
  static constexpr UINT kMessages[] = {WM_SETFOCUS};
  return kMessages;
}

void USButton::window_message_after(UINT message, WPARAM wparam, LPARAM) {
  if (!user_mode()) return;
  if (message == WM_SETFOCUS) input_.window_focus(wparam != 0);
  if (message == WM_MOUSELEAVE && input_.mouse_leave()) raise_mouse_exit();
}

void USButton::track_leave() {
  ControlFrame::track_leave();
}

bool USButton::ask_default() const {
  return const_cast<USButton*>(this)->ambient().display_as_default();
}

}  // namespace kestrelon
