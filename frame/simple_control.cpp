#include "frame/simple_control.h"

#include "frame/input_state.h"
#include "frame/kit/access_key.h"

namespace kestrelon {

void SimpleControl::refresh() {
  redraw_enabled_ = true;
  repaint();
}

void SimpleControl::properties_read() {
  update_access_key();
  refresh();
}

void SimpleControl::update_access_key() {
  set_access_keys(access_key_from_start(shown_caption()));
}

void SimpleControl::repaint_control(int state, bool force) {
  if (!redraw_enabled_) return;
  recompute_layout();
  if (!force && state == last_state_ && shown_caption() == last_caption_) return;
  if (height() == 0 || !surface()) return;
  last_state_ = state;
  last_caption_ = shown_caption();
  surface().clear(clear_colour());
  draw(state);
  surface_changed();
}

void SimpleControl::mouse_down(short button, short shift, float x, float y) {
  last_shift_ = shift;
  last_x_ = x;
  last_y_ = y;
  raise_mouse_down(button, shift, x, y);
  mouse_button_ = button;  // what the handler has left there
  if (button == kLeftButton) repaint_control(kPressed, false);
}

void SimpleControl::mouse_move(short button, short shift, float x, float y) {
  if (!user_mode()) return;
  switch (hover_.moved(pointer_over_window())) {
    case Hover::Move::kEnter:
      track_leave();
      repaint_control(kNormal, true);
      raise_mouse_enter();
      break;
    case Hover::Move::kInside:
      raise_mouse_move(button, shift, x, y);
      break;
    case Hover::Move::kExit:
      raise_mouse_exit();
      break;
    case Hover::Move::kNothing:
      break;
  }
}

void SimpleControl::mouse_up(short button, short shift, float x, float y) {
  raise_mouse_up(button, shift, x, y);
  if (button == kLeftButton) repaint_control(kNormal, false);
}

void SimpleControl::click() {
  if (mouse_button_ == kLeftButton) toggle(false);
}

void SimpleControl::double_click() {
  if (mouse_button_ != kLeftButton) return;
  mouse_down(kLeftButton, last_shift_, last_x_, last_y_);
  capture_mouse();
}

void SimpleControl::key_down(short& key, short& shift) {
  raise_key_down(key, shift);
  last_key_ = key;
  switch (key) {
    case VK_SPACE:
      repaint_control(kPressed, false);
      break;
    case VK_LEFT:
    case VK_UP:
      send_tab(true);
      break;
    case VK_RIGHT:
    case VK_DOWN:
      send_tab(false);
      break;
    default:
      break;
  }
}

void SimpleControl::key_press(short& character) {
  raise_key_press(character);
}

void SimpleControl::key_up(short& key, short& shift) {
  raise_key_up(key, shift);
  if (key == VK_SPACE && last_key_ == VK_SPACE) toggle(true);
}

void SimpleControl::got_focus() {
  has_focus_ = true;
  repaint();
}

void SimpleControl::lost_focus() {
  has_focus_ = false;
  repaint();
}

void SimpleControl::access_key_press(short) {
  mouse_button_ = kLeftButton;
  click();
}

void SimpleControl::window_message_after(UINT message, WPARAM, LPARAM) {
  if (message != WM_MOUSELEAVE || !user_mode()) return;
  hover_.left();
  repaint_control(kNormal, true);
  raise_mouse_exit();
}

}  // namespace kestrelon
