// The keyboard and screen readers.
#include <cwctype>

#include "chrome/us_tab/us_tab.h"
#include "frame/input_state.h"
#include "frame/kit/access_key.h"

namespace kestrelon {

int USTab::next_tab(int direction, bool round) const {
  return tab_strip::walk(static_cast<int>(active_.get()), direction, static_cast<int>(tab_count()),
                         round, [this](int index) { return usable(index); });
}

bool USTab::wants_key(int key, short shift) const {
  switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
    case VK_PRIOR:
    case VK_NEXT:
    case VK_HOME:
    case VK_END:
      return true;
    case VK_TAB:
      // The last tab lets it go, so that the focus can leave.
      if ((shift & kControlKey) != 0) return true;
      return next_tab((shift & kShiftKey) != 0 ? -1 : 1, false) != active_.get();
    default:
      return false;
  }
}

void USTab::key_down(short& key, short& shift) {
  raise_key_down(key, shift);
  const bool control = (shift & kControlKey) != 0, back = (shift & kShiftKey) != 0;
  if (control && (key == VK_TAB || key == VK_PRIOR || key == VK_NEXT)) return page_key(key, shift);
  switch (key) {
    case VK_LEFT:
    case VK_UP:
    case VK_PRIOR:
      switch_to(next_tab(-1, false));
      break;
    case VK_RIGHT:
    case VK_DOWN:
    case VK_NEXT:
      switch_to(next_tab(1, false));
      break;
    case VK_HOME:
      switch_to(tab_strip::walk(-1, 1, static_cast<int>(tab_count()), false,
                                [this](int index) { return usable(index); }));
      break;
    case VK_END: {
      const auto count = static_cast<int>(tab_count());
      switch_to(
          tab_strip::walk(count, -1, count, false, [this](int index) { return usable(index); }));
      break;
    }
    case VK_TAB:
      // Where the program refuses the next page the focus goes on.
      if (!switch_to(next_tab(back ? -1 : 1, false))) send_tab(back);
      break;
    default:
      break;
  }
}

// Ctrl with Tab, Page Up or Page Down, round the ends, wherever in the control the focus is.
void USTab::page_key(int key, short shift) {
  const bool back = key == VK_PRIOR || (key == VK_TAB && (shift & kShiftKey) != 0);
  const bool within = IsChild(window(), GetFocus()) != FALSE;
  if (!switch_to(next_tab(back ? -1 : 1, true)) || !within || window() == nullptr) return;
  SetFocus(window());  // what had the focus is out of view
}

void USTab::access_key_press(short key) {
  const auto wanted = std::towlower(static_cast<wint_t>(key));
  for (int i = 0; i < tab_count(); ++i) {
    const std::wstring own = access_key_from_start(at(i).caption);
    if (usable(i) && !own.empty() && static_cast<wint_t>(own[0]) == wanted) return choose(i);
  }
}

void USTab::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_PAGETABLIST;
}

bool USTab::accessible_item(long child, AccessibleItem& item) const {
  if (child == CHILDID_SELF) return ControlFrame::accessible_item(child, item);
  const auto index = static_cast<int>(child - 1);
  if (!known(index)) return false;
  const auto place = static_cast<size_t>(index);
  const PixelRect area = place < strip_.tabs.size() ? strip_.tabs[place] : PixelRect{};
  item.role = ROLE_SYSTEM_PAGETAB;
  item.place = {area.left, area.top, area.right, area.bottom};
  name_after(item, at(index).caption);
  item.default_action = L"Alternar";
  item.state |= STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
  if (index == active_.get()) item.state |= STATE_SYSTEM_SELECTED;
  if (!usable(index)) item.state |= STATE_SYSTEM_UNAVAILABLE;
  if (hot_.part == tab_strip::Part::kTab && hot_.tab == index)
    item.state |= STATE_SYSTEM_HOTTRACKED;
  if (area.empty()) item.state |= STATE_SYSTEM_INVISIBLE;
  return true;
}

long USTab::accessible_at(POINT point) const {
  const tab_strip::Hit part = tab_strip::hit(strip_, point.x, point.y);
  return part.tab >= 0 ? part.tab + 1 : CHILDID_SELF;
}

void USTab::accessible_default_action(long child) {
  choose(static_cast<int>(child - 1));
}

bool USTab::accessible_select(long child, long flags) {
  const auto index = static_cast<int>(child - 1);
  if ((flags & (SELFLAG_TAKESELECTION | SELFLAG_TAKEFOCUS)) == 0 || !usable(index)) return false;
  return switch_to(index);
}

}  // namespace kestrelon
