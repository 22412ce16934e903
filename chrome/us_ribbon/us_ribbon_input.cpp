// The mouse: what is hot, what is pressed, and what a press or a release sets off. Every handler of
// the host may change the ribbon or end the control, so all that an event needs is taken before it
// is raised and nothing is looked up afterwards.
#include "chrome/us_ribbon/us_ribbon.h"
#include "frame/himetric.h"
#include "frame/input_state.h"

namespace kestrelon {

using namespace ribbon;

namespace {

constexpr int kTwipsPerInch = 1440;

struct TwipPoint {
  long x, y;
};

TwipPoint to_twips(int x, int y) {
  const auto [across, down] = screen_resolution();
  return {MulDiv(x, kTwipsPerInch, across), MulDiv(y, kTwipsPerInch, down)};
}

bool is_button(const Target& target) {
  return target.part == Part::kButton || target.part == Part::kDrop;
}

}  // namespace

Target USRibbon::target_at(float x, float y) const {
  return ribbon::hit(scene_, static_cast<int>(x), static_cast<int>(y));
}

bool USRibbon::live(const Target& target) const {
  if (!Enabled.get() || area_of(scene_, target).empty()) return false;
  return !is_button(target) || usable(scene_.buttons[static_cast<size_t>(target.at)].entry);
}

void USRibbon::set_hot(Target target) {
  // A button that cannot be used still lights its category.
  if (Enabled.get() && is_button(target) && !live(target))
    target = {Part::kCategory, category_of(scene_, target)};
  if (!live(target)) target = {};
  if (target == hot_) return;
  const Target old = std::exchange(hot_, target);
  const bool by_keys = !is_button(old) && focus_ != Model::kNone && focus_within();
  for (const PixelRect& area : hover_damage(scene_, old, hot_).areas) draw_part(area);
  if (by_keys && is_button(hot_)) draw_target(button_target(focus_));
  show_tip();
}

void USRibbon::set_pressed(const Target& target) {
  const Target old = std::exchange(pressed_, target);
  draw_target(old);
  if (target != old) draw_target(target);
}

void USRibbon::show_tip() {
  tip_.Destroy();
  const bool tab_button = hot_.part == Part::kTabButton;
  if (window() == nullptr || !(tab_button || is_button(hot_))) return;
  const auto at = static_cast<size_t>(hot_.at);
  const int entry = tab_button ? scene_.tab_buttons[at].entry : scene_.buttons[at].entry;
  const auto place = static_cast<size_t>(entry);
  const std::wstring& text =
      tab_button ? model_.tab_buttons()[place].tip : model_.buttons()[place].tip;
  if (text.empty()) return;
  tip_.set_TipText(text);
  const PixelRect area = area_of(scene_, hot_);
  const RECT rect{area.left, area.top, area.right, area.bottom};
  tip_.Create(window(), &rect);
}

void USRibbon::mouse_move(short, short, float x, float y) {
  last_x_ = x;
  last_y_ = y;
  if (!user_mode()) return;
  const Target target = target_at(x, y);
  // While something is pressed nothing else lights up.
  set_hot(pressed_ == Target{} || target == pressed_ ? target : Target{});
  track_leave();
}

void USRibbon::window_message_after(UINT message, WPARAM, LPARAM) {
  if (message == WM_MOUSELEAVE) set_hot({});
}

bool USRibbon::window_message_before(UINT message, WPARAM, LPARAM lparam, LRESULT& result) {
  if (message != WM_SETCURSOR || LOWORD(lparam) != HTCLIENT || !user_mode()) return false;
  const bool hand = (is_button(hot_) && ButtonHandPointer.get()) ||
                    (hot_.part == Part::kTabButton && TabButtonHandPointer.get());
  if (!hand) return false;
  SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_HAND)));
  result = TRUE;
  return true;
}

void USRibbon::mouse_down(short button, short, float x, float y) {
  if (button == kLeftButton) press(target_at(x, y));
}

void USRibbon::press(const Target& target) {
  const bool plain = target.part == Part::kCategory || target.part == Part::kBody;
  if (plain || !live(target)) return;
  hot_ = target;
  tip_.Destroy();
  if (is_button(target) && focus_ != Model::kNone) set_focus(Model::kNone);
  set_pressed(target);
  if (!is_button(target)) return;
  const auto entry = static_cast<size_t>(scene_.buttons[static_cast<size_t>(target.at)].entry);
  const bool drops =
      model_.state_of(model_.buttons()[entry]).style == ribbon::ButtonStyle::kDropDown;
  if (drops || target.part == Part::kDrop) drop_down(target);
}

void USRibbon::mouse_up(short button, short, float x, float y) {
  if (button != kLeftButton || pressed_ == Target{}) return;
  const Target target = target_at(x, y), pressed = pressed_;
  const bool clicked = target == pressed && live(target);
  set_pressed({});
  // The element looks plain while its handler runs, and until the pointer moves again.
  set_hot({});
  if (clicked) act(target);
}

void USRibbon::act(const Target& target) {
  const PixelRect area = area_of(scene_, target);
  const auto at = static_cast<size_t>(target.at);
  auto [x, y] = to_twips(area.left, area.top);
  switch (target.part) {
    case Part::kTab: {
      const int entry = scene_.tabs[at].entry;
      auto index = static_cast<short>(model_.tabs()[static_cast<size_t>(entry)].index);
      activate(entry);
      return raise_tab_click(index);
    }
    case Part::kLauncher: {
      const auto entry = static_cast<size_t>(scene_.categories[at].entry);
      auto index = static_cast<short>(model_.categories()[entry].index);
      return raise_cat_click(index, x, y);
    }
    case Part::kTabButton: {
      const auto entry = static_cast<size_t>(scene_.tab_buttons[at].entry);
      auto index = static_cast<short>(model_.tab_buttons()[entry].index);
      return raise_tab_button_click(index, x, y);
    }
    case Part::kScrollLeft:
      return scroll(-1);
    case Part::kScrollRight:
      return scroll(1);
    case Part::kButton:
      return click_button(scene_.buttons[at].entry, area);
    default:
      return;
  }
}

void USRibbon::click_button(int entry, const PixelRect& area) {
  auto index = static_cast<short>(model_.buttons()[static_cast<size_t>(entry)].index);
  const ButtonState* const state = model_.state(index);
  if (state != nullptr && state->style == ribbon::ButtonStyle::kCheck)
    set_button_value(index, !state->checked);
  auto [x, y] = to_twips(area.left, area.top);
  raise_button_click(index, x, y);
}

// Looks pressed until the handler returns, which is as long as its menu is open.
void USRibbon::drop_down(const Target& target) {
  const PixelRect area = area_of(scene_, target);
  const auto entry = static_cast<size_t>(scene_.buttons[static_cast<size_t>(target.at)].entry);
  auto index = static_cast<short>(model_.buttons()[entry].index);
  auto [x, y] = to_twips(area.left, area.bottom);
  release_mouse();
  raise_button_drop_down(index, x, y);
  set_pressed({});
  set_hot({});
}

void USRibbon::scroll(int categories) {
  first_ = std::max(scene_.first + categories, 0);
  rebuild();
}

bool USRibbon::mouse_wheel(bool horizontal, int delta, short) {
  const bool more = !scene_.scroll_left.empty() || !scene_.scroll_right.empty();
  if (!more || delta == 0) return false;
  const bool forward = horizontal ? delta > 0 : delta < 0;
  scroll(forward ? 1 : -1);
  return true;
}

}  // namespace kestrelon
