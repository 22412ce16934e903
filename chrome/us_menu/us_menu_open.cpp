// Popups: of the bar's items and of a program's call.
#include <utility>

#include "chrome/us_menu/us_menu.h"
#include "frame/screen.h"
#include "frame/translate_color.h"

namespace kestrelon {

using menu_model::kNone;

namespace {

// A text handed to handlers by reference: they may put another in its place.
class EventText {
 public:
  explicit EventText(const std::wstring& text) : text_(Bstr(text).detach()) {}
  ~EventText() { SysFreeString(text_); }
  EventText(const EventText&) = delete;
  EventText& operator=(const EventText&) = delete;
  operator BSTR&() { return text_; }

 private:
  BSTR text_;
};

}  // namespace

MenuLook USMenu::look() {
  MenuLook out{};
  const COLORREF face = GetSysColor(COLOR_MENU), mark = GetSysColor(COLOR_HIGHLIGHT);
  const bool high = high_contrast();
  const auto shade = [high](const Property<OLE_COLOR>& color, COLORREF system) {
    return high ? system : TranslateColor(color.get());
  };
  out.back = shade(BackColor, face);
  out.border_over = shade(BorderColorOver, mark);
  out.ink = shade(ForeColor, GetSysColor(COLOR_MENUTEXT));
  out.ink_disabled = shade(ForeColorDisabled, GetSysColor(COLOR_GRAYTEXT));
  out.ink_over = shade(ForeColorOver, GetSysColor(COLOR_HIGHLIGHTTEXT));
  out.column1 = shade(GradientColorImage1, face);
  out.column2 = shade(GradientColorImage2, high ? GetSysColor(COLOR_MENUTEXT) : face);
  out.over1 = shade(GradientColorOver1, mark);
  out.over2 = shade(GradientColorOver2, mark);
  out.font = Font.handle();
  out.scale = scale();
  out.image_size = ImageSize.get();
  out.short_cuts = ShowShortCuts.get();
  out.right_to_left = right_to_left();
  return out;
}

void USMenu::submenu_opening(const std::wstring& key) {
  const Hold hold(*this);
  EventText name(key);
  VARIANT_BOOL cancel = VARIANT_FALSE;
  raise_before_popup(name, cancel);
}

void USMenu::menu_highlight(const std::wstring& key, const std::wstring& description) {
  const Hold hold(*this);
  EventText name(key), text(description);
  raise_item_highlight(name, text);
}

MenuPopup::Outcome USMenu::open_popup(int parent, POINT at, UINT flags, const RECT* spare,
                                      bool by_key) {
  const HWND form = form_window();
  if (ended_ || MenuPopup::is_open() || form == nullptr) return {};
  const std::wstring own_key =
      parent >= 0 ? items[static_cast<size_t>(parent)].key : std::wstring();
  EventText key(own_key);
  VARIANT_BOOL cancel = VARIANT_FALSE;
  raise_before_popup(key, cancel);
  if (cancel != VARIANT_FALSE || ended_ || !IsWindow(form)) return {};
  // The handler may have changed the list.
  if (!own_key.empty()) parent = menu_model::find(items.get(), own_key);
  if (parent == kNone && !own_key.empty()) return {};
  if (parent >= static_cast<int>(items.size())) return {};
  MenuPopup::Outcome out;
  {
    MenuPopup popup(*this, look());
    out = popup.run(form, parent, at, flags, spare, by_key);
  }
  EventText closed(own_key);
  raise_popup_closed(closed);
  return out;
}

std::wstring USMenu::popup_menu(const std::wstring& key, long x, long y,
                                ENUM_ALIGNMENTS alignment) {
  const int parent = menu_model::find(items.get(), key);
  if (!key.empty() && parent == kNone) return {};
  POINT at{static_cast<LONG>(x), static_cast<LONG>(y)};
  POINT pointer{};
  GetCursorPos(&pointer);
  if (x == -1) at.x = pointer.x;
  if (y == -1) at.y = pointer.y;
  const UINT sides[] = {TPM_LEFTALIGN, TPM_CENTERALIGN, TPM_RIGHTALIGN};
  const UINT side = alignment >= 0 && alignment <= 2 ? sides[alignment] : TPM_LEFTALIGN;
  const MenuPopup::Outcome out = open_popup(parent, at, side | TPM_RIGHTBUTTON, nullptr, false);
  if (!out.chosen) return {};
  choose(out.key);
  return out.key;
}

void USMenu::close_menu() {
  MenuPopup::cancel();
}

void USMenu::choose(const std::wstring& key) {
  if (ended_) return;
  EventText name(key);
  raise_item_click(name);
}

// Opens the menu of a place of the bar, and those that the user goes on to.
void USMenu::open_place(int place, bool by_key) {
  if (MenuPopup::is_open() || ended_ || window() == nullptr) return;
  const Hold hold(*this);
  MenuPopup::Outcome out;
  std::optional<int> next = place;
  while (next && !ended_ && window() != nullptr) {
    lay_out();
    const std::vector<int> shown = bar_items();
    const int now = *next;
    const auto at = static_cast<size_t>(now);
    const bool overflow = at >= bar_.places.size();
    if (now < 0 || (overflow && bar_.overflow.empty())) break;
    const PixelRect& r = overflow ? bar_.overflow : bar_.places[at];
    const int parent = overflow ? kNone : shown[at];
    if (!overflow && menu_model::children(items.get(), parent).empty()) {
      out = {};
      out.chosen = next == place;  // an item without a menu acts by itself
      out.key = items[static_cast<size_t>(parent)].key;
      break;
    }
    open_ = now;
    set_hot(now);
    redraw();
    update_now();
    RECT spare{r.left, r.top, r.right, r.bottom};
    MapWindowPoints(window(), nullptr, reinterpret_cast<POINT*>(&spare), 2);
    const bool from_right = right_to_left();
    const POINT corner{from_right ? spare.right : spare.left, spare.bottom};
    out = open_popup(parent, corner, from_right ? TPM_RIGHTALIGN : TPM_LEFTALIGN, &spare, by_key);
    by_key = out.switch_to.has_value();
    next = out.switch_to;
  }
  open_ = kNone;
  if (!ended_) {
    leave_bar();
    set_hot(kNone);
    redraw();
    if (out.chosen) choose(out.key);
  }
}

std::optional<int> USMenu::bar_step(int step) {
  const int count = static_cast<int>(bar_.places.size()) + (bar_.overflow.empty() ? 0 : 1);
  if (open_ == kNone || count < 2) return std::nullopt;
  return (open_ + step + count) % count;
}

std::optional<int> USMenu::bar_at(POINT screen) {
  if (open_ == kNone || window() == nullptr || WindowFromPoint(screen) != window())
    return std::nullopt;
  ScreenToClient(window(), &screen);
  const int place = place_at(screen);
  if (place == kNone || place == open_) return std::nullopt;
  return place;
}

}  // namespace kestrelon
