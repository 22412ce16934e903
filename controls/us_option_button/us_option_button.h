// USOptionButton: one choice out of a group, the group being all on the same container.
#pragma once

#include "controls/mark_control/mark_control.h"
#include "imaging/dib_win.h"
#include "us_option_button_glue.h"

namespace kestrelon {

class USOptionButton final : public USOptionButtonGlue<USOptionButton, MarkControl> {
 public:
  USOptionButton();

  // In the order of the property bag, after those of every mark.
  Property<bool> Value{*this, L"Value", false, &USOptionButton::value_changed};

  /// Clears the others of the group whatever the value, False too.
  void set_value(bool value);
  bool value() const { return Value.get(); }

 private:
  void toggle(bool by_key) override;
  void draw_mark(int state, int x, int y) override;
  void describe(AccessibleItem& item) const override;
  void got_focus() override;
  void ambient_changed(DISPID id) override;
  void clear_group();

  WindowsImage marks_;
  bool clearing_ = false;
};

}  // namespace kestrelon
