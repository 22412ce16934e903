// What a USButton does with mouse, keys and focus: events in, states and actions out. No window.
#pragma once

#include "frame/hover.h"

namespace kestrelon {

/// How a button is drawn; the numbers are those that are saved.
enum FaceState : int {
  kFaceNormal = 0,
  kFaceOver = 1,
  kFaceDown = 2,
  kFaceDisabled = 3,
  kFaceAsIs = -1,  ///< the state drawn last, whatever it is
};

/// What the transitions ask and tell. Any of the actions may raise events in which anything
/// happens to the button.
class ButtonHost {
 public:
  virtual bool enabled() const = 0;
  virtual bool locked() const = 0;
  virtual bool check_mode() const = 0;
  /// The pointer is over the button's own window now.
  virtual bool pointer_inside() const = 0;
  /// Draws a state; without `force` only if state or focus differ from those drawn last.
  virtual void set_state(int state, bool force) = 0;
  /// Stores and reports the other value, without drawing.
  virtual void flip_value() = 0;
  virtual void clear_value() = 0;
  virtual void click_event() = 0;
  virtual bool captured() const = 0;
  virtual void capture() = 0;
  virtual void release() = 0;
  virtual void track_leave() = 0;
  virtual void move_focus(bool backwards) = 0;
  /// Whether the container shows the button as its default one.
  virtual bool ask_default() const = 0;

 protected:
  ~ButtonHost() = default;
};

class ButtonInput {
 public:
  static constexpr int kLeftButton = 1;
  static constexpr int kAfterDoubleClick = 8;  // marks a click that must not fire twice

  explicit ButtonInput(ButtonHost& host) : host_(host) {}

  // Where an answer is given, it tells whether the event of that name is to be raised afterwards.
  void mouse_down(int button);
  Hover::Move mouse_move();
  bool mouse_up(int button);
  void click();
  bool double_click();
  bool key_down(int key, int shift);
  void key_up(int key);
  bool mouse_leave();

  void access_key(int key);
  /// A click out of code, as when Value is set.
  void click_by_code();
  void got_focus();
  void lost_focus();
  void default_changed();
  /// The window's own focus message; `from_window` tells that another window of this thread had the
  /// focus.
  void window_focus(bool from_window);
  /// A button that is switched off forgets what was pressed.
  void disabled();

  bool has_focus() const { return has_focus_; }
  bool over() const { return hover_.over(); }
  bool mouse_pressed() const { return mouse_pressed_; }
  bool window_active() const { return window_active_; }
  void read_default() { display_as_default_ = host_.ask_default(); }

 private:
  int resting_state() const { return over() ? kFaceOver : kFaceNormal; }
  void forget_presses() { suppress_click_ = mouse_pressed_ = space_down_ = false; }

  ButtonHost& host_;
  Hover hover_;
  int pressed_button_ = 0;
  bool has_focus_ = false;
  bool suppress_click_ = false;  // from the press to the release: the click comes after
  bool mouse_pressed_ = false;
  bool space_down_ = false;
  bool window_active_ = false;
  bool display_as_default_ = false;
};

}  // namespace kestrelon
