#include "controls/us_check_box/us_check_box.h"

#include "base/resource_ids.h"
#include "frame/bitmap_resource.h"

namespace kestrelon {

USCheckBox::USCheckBox() : USCheckBoxGlue(ControlTraits{}) {
  check_strip_.CreateFromBitmap(BitmapResource(IDB_CHECK_MARKS).get());
}

void USCheckBox::init_properties() {
  SimpleControl::init_properties();
  ShowFocusRect.assign(true);
  Caption.assign(ambient().display_name());
  ForeColor.assign(0);
  Theme.assign(Windows_8);
  Font.reset();
  BackColor.reset();
  repaint();
}

void USCheckBox::take_ambient_defaults() {
  Font.set_default(ambient().font().get());
  BackColor.set_default(ambient().back_color());
}

void USCheckBox::caption_changed() {
  update_access_key();
  repaint();
}

void USCheckBox::enabled_changed() {
  apply_enabled();
  repaint();
}

void USCheckBox::toggle(bool by_key) {
  Value.assign(Value.get() == 0 ? 1 : 0);
  property_changed(Value.name());
  // With the mouse the host hears first, with the Space key it hears last.
  if (!by_key) raise_click();
  repaint_control(kNormal, true);
  update_now();
  if (by_key) raise_click();
}

}  // namespace kestrelon
