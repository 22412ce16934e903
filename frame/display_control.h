// What controls share that show something and take no keys: whether they answer, pointer and font,
// hover and mouse events, drawing on demand.
#pragma once

#include "contract/frame_types.h"
#include "frame/control_frame.h"
#include "frame/hover.h"

namespace kestrelon {

class DisplayControl : public ControlFrame {
 public:
  // In the order of the property bag; a control's own keys follow.
  Property<bool> Enabled{*this, L"Enabled", true, &DisplayControl::enabled_changed};
  PictureProperty MouseIcon{*this, L"MouseIcon", &DisplayControl::mouse_icon_changed};
  Property<MousePointerConstants> MousePointer{*this, L"MousePointer", vbDefault,
                                               &DisplayControl::apply_mouse_pointer};
  FontProperty Font{*this, L"Font", &DisplayControl::font_changed};

  // Members of the interface.
  void refresh();
  void disable_refresh() { redraw_enabled_ = false; }

 protected:
  using ControlFrame::ControlFrame;

  /// The text of a disabled control and the frame around it.
  static constexpr COLORREF kDisabledText = 0x99A8AC;
  static constexpr COLORREF kDisabledBorder = 0xC8D0D4;

  /// Draws everything on the surface; called only for a surface that shows.
  virtual void draw() = 0;
  /// The effect of most properties: draw before the next showing.
  void redraw();
  /// The same without asking for a showing, where one is on its way.
  void mark_stale() { dirty_ = true; }
  virtual void font_changed() { redraw(); }
  /// A picture given for the pointer; the pointer's number stays unless a control says otherwise.
  virtual void mouse_icon_changed() { apply_mouse_pointer(); }
  virtual void enabled_changed();
  /// Whether the hand is shown in place of the pointer at this moment.
  virtual bool shows_hand() const { return false; }
  /// The pointer has come or gone; before the event.
  virtual void hover_changed() {}
  bool left_pressed() const { return button_ == 1; }
  bool pointer_over() const { return hover_.over(); }
  void pointer_left() { hover_.left(); }
  /// Whether drawing has been allowed since the control began.
  bool draws() const { return redraw_enabled_; }

  void take_ambient_defaults() override;
  void init_properties() override;
  void properties_read() override;
  void resized() override { redraw(); }
  void about_to_show() override;
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void click() override;
  void double_click() override;
  bool window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void window_message_after(UINT message, WPARAM wparam, LPARAM lparam) override;
  void terminate() override { redraw_enabled_ = false; }
  FontProperty* font_property() override { return &Font; }
  const Property<bool>* enabled_property() const override { return &Enabled; }

 private:
  // Names that the glue would take for accessors if it could reach them.
  long mouse_pointer() const override { return MousePointer.get(); }
  const PictureProperty* mouse_icon() const override { return &MouseIcon; }

  Hover hover_;
  bool redraw_enabled_ = false;
  bool dirty_ = true;
  short button_ = 0;  // what the handler of the last press has left
};

}  // namespace kestrelon
