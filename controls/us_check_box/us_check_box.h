// USCheckBox: a check box of three values, and the smallest complete control of the library.
#pragma once

#include "frame/mem_dc.h"
#include "frame/simple_control.h"
#include "us_check_box_glue.h"

namespace kestrelon {

class USCheckBox final : public USCheckBoxGlue<USCheckBox, SimpleControl> {
 public:
  USCheckBox();

  // In the order of the property bag.
  FontProperty Font{*this, L"Font", &USCheckBox::repaint};
  Property<std::wstring> Caption{*this, L"Caption", L"", &USCheckBox::caption_changed};
  Property<bool> Enabled{*this, L"Enabled", true, &USCheckBox::enabled_changed};
  Property<ENUM_ALIGN_OPTION> Alignment{*this, L"Alignment", Left_Justify, &USCheckBox::repaint};
  Property<bool> ShowFocusRect{*this, L"ShowFocusRect", true, &USCheckBox::repaint};
  Property<ENUM_BACK_STYLE> BackStyle{*this, L"BackStyle", Transparent, &USCheckBox::repaint};
  Property<OLE_COLOR> BackColor{*this, L"BackColor", 0x8000000F, &USCheckBox::repaint};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0, &USCheckBox::repaint};
  Property<MousePointerConstants> MousePointer{*this, L"MousePointer", vbDefault,
                                               &USCheckBox::apply_mouse_pointer};
  PictureProperty MouseIcon{*this, L"MouseIcon", &USCheckBox::apply_mouse_pointer};
  Property<short> Value{*this, L"Value", 0, &USCheckBox::repaint};
  Property<ENUM_THEME> Theme{*this, L"Theme", Windows_8, &USCheckBox::refresh};

  // Members whose public type differs from the one that is saved.
  ENUM_CHECKBOX_VALUES value() const { return static_cast<ENUM_CHECKBOX_VALUES>(Value.get()); }
  void set_value(ENUM_CHECKBOX_VALUES value) { Value.put(static_cast<short>(value)); }

 private:
  void caption_changed();
  void enabled_changed();

  // us_check_box.cpp
  void init_properties() override;
  void take_ambient_defaults() override;
  FontProperty* font_property() override { return &Font; }
  void toggle(bool by_key) override;
  const std::wstring& shown_caption() const override { return Caption.get(); }
  const Property<bool>* enabled_property() const override { return &Enabled; }
  long mouse_pointer() const override { return MousePointer.get(); }
  const PictureProperty* mouse_icon() const override { return &MouseIcon; }
  // us_check_box_paint.cpp
  void recompute_layout() override;
  void draw(int state) override;
  void draw_caption();
  COLORREF clear_colour() const override;
  COLORREF mask_colour() const override;

  pcMemDC check_strip_;
  RECT check_rect_{};
  RECT focus_rect_{};
  RECT caption_rect_{};
};

}  // namespace kestrelon
