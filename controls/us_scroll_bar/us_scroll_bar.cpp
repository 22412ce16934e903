#include "controls/us_scroll_bar/us_scroll_bar.h"

#include "base/decimal.h"
#include "controls/us_scroll_bar/update_lock.h"

namespace kestrelon {
namespace {

ControlTraits traits() {
  ControlTraits out;
  out.initial_pixels = {17, 120};
  return out;
}

}  // namespace

USScrollBar::USScrollBar() : USScrollBarGlue(traits()) {}

void USScrollBar::init_properties() {
  ShowButtons.assign(true);
  refresh();
}

void USScrollBar::resized() {
  const UpdateLock lock(window());
  refresh();
}

void USScrollBar::window_created() {
  hit_part_ = BarPart::kNone;
  hover_.left();
  timer_on_ = false;  // it died with the former window
}

void USScrollBar::terminate() {
  stop_timer();
  painter_.reset();
}

void USScrollBar::enabled_changed() {
  apply_enabled();
  if (!Enabled.get()) release();
  draw();
}

void USScrollBar::refresh() {
  lay_out();
  draw();
}

ScrollRange USScrollBar::range() const {
  return {static_cast<int32_t>(Min.get()), static_cast<int32_t>(Max.get())};
}

void USScrollBar::lay_out() {
  const BarShape shape{width(), height(), Orientation.get() == Horizontal, ShowButtons.get()};
  layout_ = layout_bar(shape, range(), static_cast<int32_t>(Value.get()),
                       static_cast<int32_t>(LargeChange.get()), layout_.thumb_size);
}

void USScrollBar::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_SCROLLBAR;
  item.value = decimal_text(Value.get());
}

bool USScrollBar::accessible_set_value(long, const std::wstring& value) {
  wchar_t* end = nullptr;
  const long wanted = wcstol(value.c_str(), &end, 10);
  if (value.empty() || *end != 0) return false;
  Value.put(wanted);
  return true;
}

}  // namespace kestrelon
