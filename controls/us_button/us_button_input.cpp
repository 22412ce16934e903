#include "controls/us_button/us_button_input.h"

namespace kestrelon {
namespace {

// Virtual keys, and the Alt bit of the events' Shift argument.
constexpr int kReturn = 13, kEscape = 27, kSpace = 32, kLeft = 37, kUp = 38, kDown = 40;
constexpr int kAlt = 4;

}  // namespace

void ButtonInput::mouse_down(int button) {
  pressed_button_ = button;
  if (button != kLeftButton) return;
  has_focus_ = suppress_click_ = mouse_pressed_ = true;
  if (!space_down_) {
    host_.set_state(kFaceDown, false);
  } else if (!over()) {
    mouse_pressed_ = false;
    host_.set_state(kFaceNormal, false);
    mouse_pressed_ = true;
  }
}

Hover::Move ButtonInput::mouse_move() {
  const bool inside = host_.pointer_inside();
  const Hover::Move move = hover_.moved(inside);
  if (inside) {
    if (!space_down_) {
      host_.set_state(suppress_click_ ? kFaceDown : kFaceOver, false);
    } else if (mouse_pressed_) {
      host_.set_state(kFaceDown, false);
    }
    if (move == Hover::Move::kEnter) host_.track_leave();
  } else if (move == Hover::Move::kExit) {
    if (!space_down_ && !mouse_pressed_) host_.set_state(kFaceNormal, false);
  } else if (mouse_pressed_) {
    host_.set_state(kFaceOver, false);
  }
  return move;
}

bool ButtonInput::mouse_up(int button) {
  if (button != kLeftButton) return false;
  mouse_pressed_ = false;
  suppress_click_ = space_down_;
  if (space_down_ && !over()) {
    host_.set_state(kFaceDown, false);
  } else if (pressed_button_ == kAfterDoubleClick) {
    host_.set_state(resting_state(), false);
  }
  if (host_.captured()) host_.release();
  return true;
}

void ButtonInput::click() {
  if (suppress_click_ || pressed_button_ != kLeftButton) return;
  mouse_pressed_ = space_down_ = false;
  const bool check_mode = host_.check_mode();
  if (check_mode) host_.flip_value();
  host_.set_state(resting_state(), true);
  if (!host_.locked() && host_.enabled()) host_.click_event();
  if (!check_mode) host_.clear_value();
}

void ButtonInput::click_by_code() {
  pressed_button_ = kLeftButton;
  click();
}

bool ButtonInput::double_click() {
  if (pressed_button_ != kLeftButton) return false;
  suppress_click_ = mouse_pressed_ = true;
  host_.set_state(kFaceDown, false);
  pressed_button_ = kAfterDoubleClick;
  if (!host_.captured()) host_.capture();
  return true;
}

bool ButtonInput::key_down(int key, int shift) {
  if (key == kSpace && (shift & kAlt) == 0) {
    suppress_click_ = space_down_ = true;
    host_.capture();
    if (!mouse_pressed_) host_.set_state(kFaceDown, false);
    return true;
  }
  if (key >= kLeft && key <= kDown) {
    if (shift == 0) host_.move_focus(key <= kUp);
    if (space_down_) {
      host_.release();
      suppress_click_ = false;
      click_by_code();
    }
    return false;
  }
  if (space_down_) {
    suppress_click_ = space_down_ = false;
    host_.release();
    host_.set_state(resting_state(), false);
  }
  return true;
}

void ButtonInput::key_up(int key) {
  if (key != kSpace) return;
  suppress_click_ = mouse_pressed_;
  if (space_down_) {
    space_down_ = false;
    click_by_code();
  }
  if (!suppress_click_) host_.release();
}

bool ButtonInput::mouse_leave() {
  hover_.left();
  if (space_down_) return false;
  // A button pressed with the left mouse button stays as it is until it loses the focus.
  const bool stays = pressed_button_ == kLeftButton && has_focus_;
  if (host_.enabled()) host_.set_state(stays ? kFaceAsIs : kFaceNormal, false);
  return true;
}

void ButtonInput::access_key(int key) {
  if (!host_.enabled()) return;
  if (space_down_) host_.release();
  if (host_.check_mode() && (key == kReturn || key == kEscape)) return;
  suppress_click_ = false;
  click_by_code();
}

void ButtonInput::got_focus() {
  has_focus_ = true;
  if (!suppress_click_) host_.set_state(kFaceAsIs, false);
}

void ButtonInput::lost_focus() {
  has_focus_ = false;
  forget_presses();
  // Also when the focus had come from no window of this thread: nothing else would put it at rest.
  if (host_.enabled()) host_.set_state(kFaceNormal, true);
}

void ButtonInput::default_changed() {
  forget_presses();
  if (host_.enabled() && !has_focus_ && !over()) host_.set_state(kFaceAsIs, true);
}

void ButtonInput::window_focus(bool from_window) {
  if (from_window) {
    window_active_ = true;
    if (host_.enabled() && (has_focus_ || display_as_default_)) host_.set_state(kFaceAsIs, true);
    return;
  }
  window_active_ = false;
  const bool had_focus = has_focus_;
  const bool shown = over() || display_as_default_ || has_focus_;
  has_focus_ = display_as_default_ = false;
  forget_presses();
  hover_.clear_over();
  if (host_.enabled() && shown) host_.set_state(kFaceNormal, true);
  read_default();
  has_focus_ = had_focus;
}

void ButtonInput::disabled() {
  if (space_down_ || mouse_pressed_) host_.release();
  forget_presses();
}

}  // namespace kestrelon
