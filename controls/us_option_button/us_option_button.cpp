#include "controls/us_option_button/us_option_button.h"

#include "base/resource_ids.h"
#include "controls/us_option_button/option_group.h"
#include "controls/us_option_button/us_option_button_layout.h"

namespace kestrelon {

USOptionButton::USOptionButton() : USOptionButtonGlue(ControlTraits{}) {
  LoadOptions options;
  options.icon_cx = options.icon_cy = 32;
  load_resource_image(marks_, IDP_OPTION_MARKS, L"OPTIONBUTTON", options);
}

void USOptionButton::clear_group() {
  // Clearing another one of the group makes that one clear its group in turn, this one included.
  if (clearing_) return;
  clearing_ = true;
  clear_option_group(extender(), h_wnd());
  clearing_ = false;
}

void USOptionButton::set_value(bool value) {
  clear_group();
  Value.put(value);
}

void USOptionButton::toggle(bool) {
  clear_group();
  Value.assign(true);
  property_changed(Value.name());
  raise_click();
  repaint_control(kNormal, true);
  update_now();
}

void USOptionButton::draw_mark(int state, int x, int y) {
  RenderArguments args;
  args.destX = x;
  args.destY = y;
  args.SrcY = option_layout::strip_row(Value.get(), Enabled.get(), state, pointer_over());
  args.destWidth = args.destHeight = args.SrcWidth = args.SrcHeight = option_layout::kMark;
  render_to_dc(marks_, surface().dc(), args);
}

void USOptionButton::got_focus() {
  MarkControl::got_focus();
  update_now();
}

void USOptionButton::ambient_changed(DISPID) {
  repaint();
}

void USOptionButton::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_RADIOBUTTON;
  item.state = STATE_SYSTEM_FOCUSABLE | (Value.get() ? STATE_SYSTEM_CHECKED : 0);
  item.default_action = L"Marcar";
  name_after(item, Caption.get());
}

}  // namespace kestrelon
