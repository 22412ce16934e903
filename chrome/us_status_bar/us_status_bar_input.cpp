// Mouse, tips, the grip, and screen readers. Nothing is remembered across an event but numbers,
// which a change of the list clears.
#include "chrome/us_status_bar/us_status_bar.h"
#include "frame/input_state.h"
#include "services/late_object_win.h"

namespace kestrelon {

using status_bar::kGrip;
using status_bar::kNothing;

namespace {

// The control of a form that decides whether its host may be sized; empty without one.
ComPtr<IDispatch> find_skin(IDispatch* extender) {
  if (extender == nullptr) return {};
  try {
    LateObject controls =
        LateObject(ComPtr<IDispatch>(extender)).get_object(L"Parent").get_object(L"Controls");
    const int64_t count = number_of(controls.get_property(L"Count"));
    for (int64_t i = 0; i < count; ++i) {
      const LateObject control =
          object_of(controls.call(DISPID{DISPID_VALUE}, {Variant(static_cast<long>(i))}));
      LPOLESTR name = const_cast<LPOLESTR>(L"AllowResize");
      DISPID id = 0;
      if (control && SUCCEEDED(control.get()->GetIDsOfNames(IID_NULL, &name, 1, 0, &id)))
        return ComPtr<IDispatch>(control.get());
    }
  } catch (const ComError&) {  // a container without such members has no skin either
  }
  return {};
}

}  // namespace

bool USStatusBar::wants_grip() {
  if (!ShowSizeGrip.get()) return false;
  if (!user_mode() || window() == nullptr) return true;
  if (IsZoomed(GetAncestor(window(), GA_ROOT))) return false;
  if (!std::exchange(skin_looked_for_, true)) skin_ = find_skin(extender().get());
  if (!skin_) return true;
  try {
    return number_of(LateObject(skin_).get_property(L"AllowResize")) != 0;
  } catch (const ComError&) {
    skin_.reset();  // it is gone
    return true;
  }
}

bool USStatusBar::live(int part) const {
  return part > 0 && Enabled.get() && known(part) && at(part).enabled;
}

int USStatusBar::part_under_pointer() const {
  POINT point{};
  if (window() == nullptr || !GetCursorPos(&point)) return kNothing;
  ScreenToClient(window(), &point);
  return status_bar::hit(bar_, point.x, point.y);
}

bool USStatusBar::shows_hand() const {
  const int part = part_under_pointer();
  return live(part) && at(part).hand_pointer;
}

bool USStatusBar::window_message_before(UINT message, WPARAM wparam, LPARAM lparam,
                                        LRESULT& result) {
  if (message != WM_SETCURSOR || LOWORD(lparam) != HTCLIENT || !user_mode() ||
      part_under_pointer() != kGrip)
    return DisplayControl::window_message_before(message, wparam, lparam, result);
  SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_SIZENWSE)));
  result = TRUE;
  return true;
}

void USStatusBar::set_hot(int part) {
  if (part == hot_) return;
  hot_ = part;
  tip_.Destroy();
  if (!live(hot_) || window() == nullptr || !user_mode() || at(hot_).tool_tip.empty()) return;
  tip_.set_TipText(at(hot_).tool_tip);
  tip_.Create(window());
}

void USStatusBar::forget_input() {
  ++version_;
  hot_ = pressed_ = released_ = kNothing;
  tip_.Destroy();
}

void USStatusBar::hover_changed() {
  if (!pointer_over()) set_hot(kNothing);
}

void USStatusBar::mouse_move(short button, short shift, float x, float y) {
  if (user_mode()) set_hot(status_bar::hit(bar_, static_cast<int>(x), static_cast<int>(y)));
  DisplayControl::mouse_move(button, shift, x, y);
}

void USStatusBar::mouse_down(short button, short shift, float x, float y) {
  const int part = status_bar::hit(bar_, static_cast<int>(x), static_cast<int>(y));
  released_ = kNothing;
  pressed_ = button == kLeftButton ? part : kNothing;
  tip_.Destroy();
  DisplayControl::mouse_down(button, shift, x, y);
  if (pressed_ == kGrip && left_pressed()) size_host();
}

// The host is sized by its own border's lower right corner, as long as the button is held.
void USStatusBar::size_host() {
  pressed_ = kNothing;
  if (!user_mode() || window() == nullptr) return;
  release_mouse();
  const DWORD at = GetMessagePos();
  SendMessageW(GetAncestor(window(), GA_ROOT), WM_NCLBUTTONDOWN, HTBOTTOMRIGHT,
               static_cast<LPARAM>(at));
}

void USStatusBar::mouse_up(short button, short shift, float x, float y) {
  const int part = status_bar::hit(bar_, static_cast<int>(x), static_cast<int>(y));
  if (button == kLeftButton) {
    released_ = part == pressed_ ? part : kNothing;
    pressed_ = kNothing;
  }
  DisplayControl::mouse_up(button, shift, x, y);
}

void USStatusBar::click() {
  const int part = std::exchange(released_, kNothing);
  if (left_pressed() && live(part)) raise_for_panel(part, false);
  DisplayControl::click();
}

void USStatusBar::double_click() {
  const int part = part_under_pointer();
  if (left_pressed() && live(part)) raise_for_panel(part, true);
  DisplayControl::double_click();
}

void USStatusBar::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_STATUSBAR;
  if (SimpleMode.get()) item.value = SimpleText.get();
}

bool USStatusBar::accessible_item(long child, AccessibleItem& item) const {
  if (child == CHILDID_SELF) return ControlFrame::accessible_item(child, item);
  if (!known(child) || SimpleMode.get()) return false;
  const StatusPanel& panel = at(child);
  const auto place = static_cast<size_t>(child - 1);
  const PixelRect area = place < bar_.panels.size() ? bar_.panels[place] : PixelRect{};
  item.place = {area.left, area.top, area.right, area.bottom};
  item.role = panel.style == Panel_Progress ? ROLE_SYSTEM_PROGRESSBAR : ROLE_SYSTEM_STATICTEXT;
  name_after(item, text_of(child));
  item.description = panel.tool_tip;
  if (panel.style == Panel_Progress)
    item.value = decimal_text(status_bar::filled_width(panel.value, panel.most, 100)) + L"%";
  if (panel.is_lock() && lock_on(child)) item.state |= STATE_SYSTEM_CHECKED;
  if (!live(static_cast<int>(child))) item.state |= STATE_SYSTEM_UNAVAILABLE;
  if (area.empty()) item.state |= STATE_SYSTEM_INVISIBLE;
  return true;
}

long USStatusBar::accessible_at(POINT point) const {
  const int part = status_bar::hit(bar_, point.x, point.y);
  return part > 0 ? part : CHILDID_SELF;
}

void USStatusBar::accessible_default_action(long child) {
  if (child > 0 && live(static_cast<int>(child))) raise_for_panel(static_cast<int>(child), false);
}

}  // namespace kestrelon
