// The keyboard and screen readers.
#include <cwctype>

#include "chrome/us_tool_bar/us_tool_bar.h"
#include "frame/kit/access_key.h"

namespace kestrelon {

using tool_bar::kNothing;

bool USToolBar::wants_key(int key, short) const {
  switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
    case VK_HOME:
    case VK_END:
    case VK_SPACE:
      return true;
    case VK_RETURN:
      return focus_ != kNothing;
    default:
      return false;
  }
}

bool USToolBar::takes_focus(int index) const {
  const auto place = static_cast<size_t>(index - 1);
  return live(index) && place < bar_.places.size() && bar_.places[place].shown;
}

void USToolBar::set_focus_button(int index) {
  if (index == focus_) return;
  const int old = std::exchange(focus_, index);
  draw_part(old);
  draw_part(focus_);
  key_wishes_changed();
  if (focus_ != kNothing) tell_readers(EVENT_OBJECT_FOCUS, focus_);
}

void USToolBar::key_down(short& key, short&) {
  const auto count = static_cast<int>(buttons.size());
  const auto takes = [this](int index) { return takes_focus(index); };
  switch (key) {
    case VK_LEFT:
    case VK_UP:
      return set_focus_button(tool_bar::walk(focus_, -1, count, takes));
    case VK_RIGHT:
      return set_focus_button(tool_bar::walk(focus_, 1, count, takes));
    case VK_HOME:
      return set_focus_button(tool_bar::walk(0, 1, count, takes));
    case VK_END:
      return set_focus_button(tool_bar::walk(count + 1, -1, count, takes));
    case VK_DOWN:
      if (!bar_.chevron.empty() && window() != nullptr) open_overflow();
      return;
    case VK_RETURN:
    case VK_SPACE:
      if (takes_focus(focus_)) push_button(focus_);
      return;
    default:
      return;
  }
}

void USToolBar::got_focus() {
  const auto takes = [this](int index) { return takes_focus(index); };
  if (takes_focus(focus_)) return draw_part(focus_);
  set_focus_button(tool_bar::walk(kNothing, 1, static_cast<int>(buttons.size()), takes));
}

void USToolBar::lost_focus() {
  draw_part(focus_);
}

void USToolBar::access_key_press(short key) {
  const auto wanted = std::towlower(static_cast<wint_t>(key));
  for (int i = 1; i <= static_cast<int>(buttons.size()); ++i) {
    const std::wstring own = access_key_from_start(at(i).caption);
    if (live(i) && !own.empty() && static_cast<wint_t>(own[0]) == wanted) return push_button(i);
  }
}

void USToolBar::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_TOOLBAR;
}

bool USToolBar::accessible_item(long child, AccessibleItem& item) const {
  if (child == CHILDID_SELF) return ControlFrame::accessible_item(child, item);
  if (!known(child)) return false;
  const ToolButton& button = at(child);
  const PixelRect area = area_of(static_cast<int>(child));
  item.place = {area.left, area.top, area.right, area.bottom};
  if (button.type == Separator) {
    item.role = ROLE_SYSTEM_SEPARATOR;
    return true;
  }
  item.role = button.style == Check_button      ? ROLE_SYSTEM_CHECKBUTTON
              : button.style == Dropdown_button ? ROLE_SYSTEM_BUTTONDROPDOWN
                                                : ROLE_SYSTEM_PUSHBUTTON;
  name_after(item, button.caption.empty() ? button.tool_tip : button.caption);
  item.description = button.tool_tip;
  item.default_action = L"Clicar";
  if (!live(static_cast<int>(child))) item.state |= STATE_SYSTEM_UNAVAILABLE;
  if (button.value) item.state |= STATE_SYSTEM_CHECKED;
  if (child == pressed_) item.state |= STATE_SYSTEM_PRESSED;
  if (child == hot_) item.state |= STATE_SYSTEM_HOTTRACKED;
  if (area.empty()) item.state |= STATE_SYSTEM_INVISIBLE;
  return true;
}

long USToolBar::accessible_at(POINT point) const {
  const int part = tool_bar::hit(bar_, point.x, point.y);
  return part > 0 ? part : CHILDID_SELF;
}

void USToolBar::accessible_default_action(long child) {
  if (known(child)) push_button(static_cast<int>(child));
}

}  // namespace kestrelon
