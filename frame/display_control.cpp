#include "frame/display_control.h"

#include "frame/input_state.h"

namespace kestrelon {

void DisplayControl::refresh() {
  redraw_enabled_ = true;
  redraw();
}

void DisplayControl::redraw() {
  if (!redraw_enabled_) return;
  dirty_ = true;
  invalidate();
}

void DisplayControl::about_to_show() {
  if (!dirty_ || !redraw_enabled_ || !surface()) return;
  dirty_ = false;
  draw();
  surface_drawn();
}

void DisplayControl::enabled_changed() {
  apply_enabled();
  redraw();
}

void DisplayControl::take_ambient_defaults() {
  Font.set_default(ambient().font().get());
}

void DisplayControl::init_properties() {
  Font.reset();
  refresh();
}

void DisplayControl::properties_read() {
  refresh();
}

void DisplayControl::mouse_down(short button, short shift, float x, float y) {
  raise_mouse_down(button, shift, x, y);
  button_ = button;
}

void DisplayControl::mouse_up(short button, short shift, float x, float y) {
  raise_mouse_up(button, shift, x, y);
}

void DisplayControl::mouse_move(short button, short shift, float x, float y) {
  if (!user_mode()) return;
  switch (hover_.moved(pointer_over_window())) {
    case Hover::Move::kEnter:
      track_leave();
      hover_changed();
      return raise_mouse_enter();
    case Hover::Move::kInside:
      return raise_mouse_move(button, shift, x, y);
    case Hover::Move::kExit:
      hover_changed();
      return raise_mouse_exit();
    case Hover::Move::kNothing:
      return;
  }
}

void DisplayControl::click() {
  if (button_ == kLeftButton) raise_click();
}

void DisplayControl::double_click() {
  if (button_ == kLeftButton) raise_dbl_click();
}

bool DisplayControl::window_message_before(UINT message, WPARAM, LPARAM lparam, LRESULT& result) {
  if (message != WM_SETCURSOR || LOWORD(lparam) != HTCLIENT || !user_mode() || !shows_hand())
    return false;
  SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_HAND)));
  result = TRUE;
  return true;
}

void DisplayControl::window_message_after(UINT message, WPARAM, LPARAM) {
  if (message != WM_MOUSELEAVE || !user_mode()) return;
  hover_.left();
  hover_changed();
  raise_mouse_exit();
}

}  // namespace kestrelon
