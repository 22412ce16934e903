// What the two selection controls share: a mark, a caption beside it, and a surface that may let
// through what lies behind it.
#pragma once

#include "contract/frame_types.h"
#include "frame/simple_control.h"

namespace kestrelon {

class MarkControl : public SimpleControl {
 public:
  // In the order of the property bag; a control's own keys follow.
  FontProperty Font{*this, L"Font", &MarkControl::repaint};
  Property<std::wstring> Caption{*this, L"Caption", L"", &MarkControl::caption_changed};
  Property<bool> Enabled{*this, L"Enabled", true, &MarkControl::enabled_changed};
  Property<ENUM_ALIGN_OPTION> Alignment{*this, L"Alignment", Left_Justify, &MarkControl::repaint};
  Property<bool> ShowFocusRect{*this, L"ShowFocusRect", true, &MarkControl::repaint};
  Property<ENUM_BACK_STYLE> BackStyle{*this, L"BackStyle", Transparent, &MarkControl::repaint};
  Property<OLE_COLOR> BackColor{*this, L"BackColor", 0x8000000F, &MarkControl::repaint};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0, &MarkControl::repaint};
  Property<MousePointerConstants> MousePointer{*this, L"MousePointer", vbDefault,
                                               &MarkControl::apply_mouse_pointer};
  PictureProperty MouseIcon{*this, L"MouseIcon", &MarkControl::apply_mouse_pointer};

 protected:
  using SimpleControl::SimpleControl;

  /// Draws the mark for a state with its top left corner at a point of the surface.
  virtual void draw_mark(int state, int x, int y) = 0;

  void init_properties() override;
  void take_ambient_defaults() override;
  FontProperty* font_property() override { return &Font; }
  const std::wstring& shown_caption() const override { return Caption.get(); }
  const Property<bool>* enabled_property() const override { return &Enabled; }
  void recompute_layout() override;
  void accessible_default_action(long) override { access_key_press(0); }
  /// Draws again and tells screen readers: what a new value needs.
  void value_changed();
  void draw(int state) override;
  COLORREF clear_colour() const override;
  COLORREF mask_colour() const override;

 private:
  long mouse_pointer() const override { return MousePointer.get(); }
  const PictureProperty* mouse_icon() const override { return &MouseIcon; }
  void caption_changed();
  void enabled_changed();
  void draw_caption();

  RECT check_rect_{};
  RECT focus_rect_{};
};

}  // namespace kestrelon
