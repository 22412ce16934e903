// USCheckBox: a check box of three values, and the smallest complete control of the library.
#pragma once

#include "controls/mark_control/mark_control.h"
#include "frame/mem_dc.h"
#include "us_check_box_glue.h"

namespace kestrelon {

class USCheckBox final : public USCheckBoxGlue<USCheckBox, MarkControl> {
 public:
  USCheckBox();

  // In the order of the property bag, after those of every mark.
  Property<short> Value{*this, L"Value", 0, &USCheckBox::value_changed};
  Property<ENUM_THEME> Theme{*this, L"Theme", Windows_8, &USCheckBox::refresh};

  // Members whose public type differs from the one that is saved.
  ENUM_CHECKBOX_VALUES value() const { return static_cast<ENUM_CHECKBOX_VALUES>(Value.get()); }
  void set_value(ENUM_CHECKBOX_VALUES value) { Value.put(static_cast<short>(value)); }

 private:
  void toggle(bool by_key) override;
  void draw_mark(int state, int x, int y) override;
  void describe(AccessibleItem& item) const override;

  pcMemDC check_strip_;
};

}  // namespace kestrelon
