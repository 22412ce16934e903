// What the small controls share beyond the frame: three visual states, one repaint sequence, the
// press, the hover, and a keyboard on which arrows move the focus.
#pragma once

#include "frame/control_frame.h"
#include "frame/hover.h"

namespace kestrelon {

class SimpleControl : public ControlFrame {
 public:
  using ControlFrame::ControlFrame;

  // Members of the interface.
  void refresh();
  void disable_refresh() { redraw_enabled_ = false; }

 protected:
  /// Visual states as they are drawn.
  enum State : int { kNormal = 0, kHover = 1, kPressed = 2 };

  /// The one drawing entry. Without `force` nothing happens when state and caption are those drawn
  /// last.
  void repaint_control(int state, bool force);
  /// The effect of most properties: draw the last state again.
  void repaint() { repaint_control(last_state_, true); }
  void update_access_key();
  bool pointer_over() const { return hover_.over(); }
  bool has_focus() const { return has_focus_; }
  int last_state() const { return last_state_; }
  /// What a click or the Space key does; `by_key` tells which, for the order of event and drawing.
  virtual void toggle(bool by_key) = 0;
  /// The caption that takes part in the comparison of repaint_control.
  virtual const std::wstring& shown_caption() const = 0;
  virtual void recompute_layout() = 0;
  /// Draws body, focus mark and caption on the cleared surface.
  virtual void draw(int state) = 0;
  virtual COLORREF clear_colour() const = 0;

  void init_properties() override { redraw_enabled_ = true; }
  void properties_read() override;
  void resized() override { repaint_control(last_state_, true); }
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void click() override;
  void double_click() override;
  void key_down(short& key, short& shift) override;
  void key_press(short& character) override;
  void key_up(short& key, short& shift) override;
  void got_focus() override;
  void lost_focus() override;
  void access_key_press(short key) override;
  void window_message_after(UINT message, WPARAM wparam, LPARAM lparam) override;
  void terminate() override { redraw_enabled_ = false; }

 private:
  bool redraw_enabled_ = false;
  bool has_focus_ = false;
  Hover hover_;
  short mouse_button_ = 0;
  short last_key_ = 0;
  short last_shift_ = 0;
  float last_x_ = 0, last_y_ = 0;
  int last_state_ = kNormal;
  std::wstring last_caption_;
};

}  // namespace kestrelon
