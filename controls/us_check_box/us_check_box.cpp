#include "controls/us_check_box/us_check_box.h"

#include "base/resource_ids.h"
#include "controls/us_check_box/us_check_box_layout.h"
#include "frame/bitmap_resource.h"

namespace kestrelon {

USCheckBox::USCheckBox() : USCheckBoxGlue(ControlTraits{}) {
  check_strip_.CreateFromBitmap(BitmapResource(IDB_CHECK_MARKS).get());
}

void USCheckBox::toggle(bool by_key) {
  Value.assign(Value.get() == 0 ? 1 : 0);
  property_changed(Value.name());
  // With the mouse the host hears first, with the Space key it hears last.
  if (!by_key) raise_click();
  repaint_control(kNormal, true);
  tell_readers(EVENT_OBJECT_STATECHANGE);
  update_now();
  if (by_key) raise_click();
}

void USCheckBox::draw_mark(int state, int x, int y) {
  using namespace check_layout;
  const int row = strip_row(mark_of(Value.get()), Enabled.get(), state, pointer_over());
  check_strip_.Draw(surface().dc(), Theme.get() == Windows_8 ? kStep : 0, row, kStep, kStep, x, y,
                    false);
}

void USCheckBox::describe(AccessibleItem& item) const {
  using enum check_layout::Mark;
  const auto mark = check_layout::mark_of(Value.get());
  item.role = ROLE_SYSTEM_CHECKBUTTON;
  item.state = STATE_SYSTEM_FOCUSABLE;
  if (mark == kChecked) item.state |= STATE_SYSTEM_CHECKED;
  if (mark == kGrayed) item.state |= STATE_SYSTEM_MIXED;
  item.default_action = mark == kUnchecked ? L"Marcar" : L"Desmarcar";
  name_after(item, Caption.get());
}

}  // namespace kestrelon
