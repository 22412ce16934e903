// The bar: look, mouse, keyboard, screen readers.
#include <algorithm>

#include "base/text.h"
#include "chrome/us_menu/us_menu.h"
#include "frame/kit/access_key.h"
#include "frame/kit/gradient.h"
#include "frame/screen.h"
#include "frame/selected_font.h"
#include "frame/text.h"

namespace kestrelon {

using menu_model::kNone;

std::vector<int> USMenu::bar_items() const {
  std::vector<int> out = menu_model::children(items.get(), kNone);
  std::erase_if(out, [this](int index) {
    const MenuItem& item = items[static_cast<size_t>(index)];
    return !item.visible || item.separates();
  });
  return out;
}

void USMenu::lay_out() {
  if (laid_out_ || !surface()) return;
  laid_out_ = true;
  const SelectedFont selected(surface().dc(), Font.handle());
  std::vector<int> widths;
  for (const int index : bar_items()) {
    const std::wstring text = without_access_marks(items[static_cast<size_t>(index)].caption);
    SIZE size{};
    GetTextExtentPoint32W(surface().dc(), text.c_str(), static_cast<int>(text.size()), &size);
    widths.push_back(static_cast<int>(size.cx));
  }
  bar_ = menu_model::lay_out_bar(widths, width(), height(), scale(), right_to_left());
  if (hot_ > static_cast<int>(bar_.places.size())) hot_ = kNone;
}

void USMenu::draw() {
  laid_out_ = false;  // the size may be another
  lay_out();
  const MenuLook now = look();
  const PixelView view = surface().pixels();
  if (high_contrast()) {
    surface().clear(now.back);
  } else {
    fill_system_gradient(view, view.bounds(), shown_color(GradientColor1.get(), COLOR_MENU),
                         shown_color(GradientColor2.get(), COLOR_MENU),
                         GradientDirection::TopToBottom);
  }
  const ColorRef border = shown_color(BorderColor.get(), COLOR_WINDOWFRAME);
  fill_rect(view, {0, height() - scale().line(), width(), height()}, border);
  for (int place = 0; place < static_cast<int>(bar_.places.size()); ++place) draw_bar_item(place);
  if (!bar_.overflow.empty()) draw_bar_item(static_cast<int>(bar_.places.size()));
}

void USMenu::draw_bar_item(int place) {
  const auto at = static_cast<size_t>(place);
  const bool overflow = at >= bar_.places.size();
  const PixelRect r = overflow ? bar_.overflow : bar_.places[at];
  const std::vector<int> shown = bar_items();
  MenuItem item;
  item.caption = L">>";
  if (!overflow) item = items[static_cast<size_t>(shown[at])];
  const MenuLook now = look();
  const PixelView view = surface().pixels();
  const bool live = item.enabled && Enabled.get();
  const bool over = live && (place == open_ || (open_ == kNone && place == hot_));
  const PixelRect box{r.left, r.top + scale()(1), r.right, r.bottom - scale()(2)};
  if (over) {
    fill_system_gradient(view, box, now.over1, now.over2, GradientDirection::TopToBottom);
    DrawFrame(view, now.border_over, box.left, box.top, box.right, box.bottom);
  }
  const HDC dc = surface().dc();
  const SelectedFont selected(dc, now.font);
  SetTextColor(dc, !live ? now.ink_disabled : over ? now.ink_over : now.ink);
  RECT text{r.left, r.top, r.right, r.bottom};
  DrawTextUnicode(dc, item.caption, -1, &text,
                  DT_SINGLELINE | DT_CENTER | DT_VCENTER | (right_to_left() ? DT_RTLREADING : 0u));
}

int USMenu::place_at(POINT point) {
  lay_out();
  const auto inside = [point](const PixelRect& r) {
    return point.x >= r.left && point.x < r.right && point.y >= r.top && point.y < r.bottom;
  };
  for (size_t i = 0; i < bar_.places.size(); ++i)
    if (inside(bar_.places[i])) return static_cast<int>(i);
  return inside(bar_.overflow) ? static_cast<int>(bar_.places.size()) : kNone;
}

void USMenu::set_hot(int place) {
  if (place == hot_) return;
  hot_ = place;
  redraw();
  if (place != kNone && focus_before_ != nullptr) tell_readers(EVENT_OBJECT_FOCUS, place + 1);
}

void USMenu::mouse_down(short button, short, float x, float y) {
  const int place = place_at({static_cast<LONG>(x), static_cast<LONG>(y)});
  if (button != 1 || place == kNone || !user_mode()) return;
  const std::vector<int> shown = bar_items();
  if (static_cast<size_t>(place) < shown.size() &&
      !items[static_cast<size_t>(shown[static_cast<size_t>(place)])].enabled)
    return;
  if (has_capture()) release_mouse();  // the menu's own loop takes it
  open_place(place, false);
}

void USMenu::mouse_move(short button, short shift, float x, float y) {
  if (!user_mode()) return;
  const Hold hold(*this);
  if (open_ == kNone && focus_before_ == nullptr)
    set_hot(place_at({static_cast<LONG>(x), static_cast<LONG>(y)}));
  DisplayControl::mouse_move(button, shift, x, y);
}

void USMenu::hover_changed() {
  if (!pointer_over() && open_ == kNone && focus_before_ == nullptr) set_hot(kNone);
}

bool USMenu::wants_key(int key, short) const {
  switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
    case VK_RETURN:
    case VK_ESCAPE:
    case VK_HOME:
    case VK_END:
      return true;
    default:
      return false;
  }
}

void USMenu::key_down(short& key, short&) {
  const int count = static_cast<int>(bar_.places.size()) + (bar_.overflow.empty() ? 0 : 1);
  if (count == 0) return;
  const int step = right_to_left() ? -1 : 1;
  switch (key) {
    case VK_LEFT:
      return set_hot((std::max(hot_, 0) - step + count) % count);
    case VK_RIGHT:
      return set_hot((hot_ + step + count) % count);
    case VK_HOME:
      return set_hot(0);
    case VK_END:
      return set_hot(count - 1);
    case VK_UP:
    case VK_DOWN:
    case VK_RETURN:
      if (hot_ != kNone) open_place(hot_, true);
      return;
    case VK_ESCAPE:
      leave_bar();
      return;
    default: {
      const std::vector<int> shown = bar_items();
      const auto letter = static_cast<wchar_t>(key);
      for (size_t i = 0; i < bar_.places.size(); ++i)
        if (access_key_from_end(items[static_cast<size_t>(shown[i])].caption) ==
            std::wstring(1, fold_case(letter)))
          return open_place(static_cast<int>(i), true);
      return;
    }
  }
}

void USMenu::lost_focus() {
  focus_before_ = nullptr;
  if (open_ == kNone) set_hot(kNone);
}

void USMenu::access_key_press(short key) {
  enter_bar(static_cast<wchar_t>(key));
}

// From the keyboard: to the first item, or straight into the menu of a letter. False when the bar
// has nothing for it.
bool USMenu::enter_bar(wchar_t letter) {
  if (window() == nullptr || !IsWindowVisible(window()) || MenuPopup::is_open()) return false;
  lay_out();
  if (bar_.places.empty()) return false;
  if (letter != 0) {
    const std::vector<int> shown = bar_items();
    for (size_t i = 0; i < bar_.places.size(); ++i) {
      const MenuItem& item = items[static_cast<size_t>(shown[i])];
      if (item.enabled && access_key_from_end(item.caption) == std::wstring(1, fold_case(letter))) {
        open_place(static_cast<int>(i), true);
        return true;
      }
    }
    return false;
  }
  if (focus_before_ != nullptr) {
    leave_bar();
    return true;
  }
  const HWND focus = GetFocus();
  SetFocus(window());
  focus_before_ = focus;
  set_hot(0);
  return true;
}

void USMenu::leave_bar() {
  const HWND back = std::exchange(focus_before_, nullptr);
  set_hot(kNone);
  if (back != nullptr && back != window() && IsWindow(back)) SetFocus(back);
}

void USMenu::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_MENUBAR;
  if (item.name.empty()) item.name = L"Menu";
}

long USMenu::accessible_count() const {
  return static_cast<long>(bar_.places.size()) + (bar_.overflow.empty() ? 0 : 1);
}

bool USMenu::accessible_item(long child, AccessibleItem& item) const {
  if (child == CHILDID_SELF) return DisplayControl::accessible_item(child, item);
  const std::vector<int> shown = bar_items();
  const auto at = static_cast<size_t>(child - 1);
  if (child < 1 || child > accessible_count()) return false;
  const bool overflow = at >= bar_.places.size();
  const PixelRect& r = overflow ? bar_.overflow : bar_.places[at];
  item.role = ROLE_SYSTEM_MENUITEM;
  item.state = STATE_SYSTEM_HASPOPUP | STATE_SYSTEM_FOCUSABLE;
  item.place = {r.left, r.top, r.right, r.bottom};
  item.default_action = L"Abrir";
  if (static_cast<int>(at) == hot_) item.state |= STATE_SYSTEM_HOTTRACKED;
  if (overflow) {
    item.name = L"Mais itens";
    return true;
  }
  const MenuItem& record = items[static_cast<size_t>(shown[at])];
  name_after(item, record.caption);
  item.description = record.description;
  if (!record.enabled) item.state |= STATE_SYSTEM_UNAVAILABLE;
  return true;
}

long USMenu::accessible_at(POINT point) const {
  return const_cast<USMenu*>(this)->place_at(point) + 1;
}

void USMenu::accessible_default_action(long child) {
  if (child >= 1 && child <= accessible_count()) open_place(static_cast<int>(child - 1), false);
}

}  // namespace kestrelon
