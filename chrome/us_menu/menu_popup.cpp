#include "chrome/us_menu/menu_popup.h"

#include <utility>

#include "base/module_win.h"
#include "base/text.h"
#include "frame/kit/access_key.h"
#include "frame/window_class.h"

namespace kestrelon {
namespace {

constexpr wchar_t kWindowClass[] = L"KestrelonMenu2012";
constexpr DWORD kReaderSignature = 0xAA0DF00D;
thread_local MenuPopup* current = nullptr;

UINT state_of(const MenuItem& item) {
  UINT out = item.enabled ? MFS_ENABLED : MFS_GRAYED;
  if (item.checked) out |= MFS_CHECKED;
  if (item.is_default) out |= MFS_DEFAULT;
  return out;
}

}  // namespace

MenuPopup::MenuPopup(MenuPopupOwner& owner, const MenuLook& look) : owner_(owner), look_(look) {}

MenuPopup::~MenuPopup() {
  if (current == this) current = nullptr;
  if (root_ != nullptr) DestroyMenu(root_);  // with its sub-menus
  if (window_ != nullptr) DestroyWindow(window_);
}

bool MenuPopup::is_open() {
  return current != nullptr;
}

void MenuPopup::cancel() {
  if (current != nullptr) EndMenu();
}

MenuPopup::Outcome MenuPopup::run(HWND form, int parent, POINT at, UINT flags, const RECT* spare,
                                  bool select_first) {
  if (current != nullptr || window_class(kWindowClass, procedure, 0) == 0) return {};
  CreateWindowExW(0, kWindowClass, nullptr, WS_POPUP, 0, 0, 0, 0, form, nullptr, module_instance(),
                  this);
  root_ = CreatePopupMenu();
  if (window_ == nullptr || root_ == nullptr) return {};
  fill(root_, owner_.menu_items(), parent);
  if (entries_.empty()) return {};
  current = this;
  const HHOOK hook = SetWindowsHookExW(WH_MSGFILTER, filter, nullptr, GetCurrentThreadId());
  // As the user's own key would: the loop takes it when it begins.
  if (select_first) PostMessageW(window_, WM_KEYDOWN, VK_DOWN, 0);
  TPMPARAMS keep_free{};
  keep_free.cbSize = sizeof keep_free;
  if (spare != nullptr) keep_free.rcExclude = *spare;
  if (look_.right_to_left) flags |= TPM_LAYOUTRTL;
  const int id = TrackPopupMenuEx(root_, flags | TPM_RETURNCMD | TPM_VERTICAL, at.x, at.y, window_,
                                  spare != nullptr ? &keep_free : nullptr);
  if (hook != nullptr) UnhookWindowsHookEx(hook);
  current = nullptr;
  if (id > 0 && static_cast<size_t>(id) <= entries_.size()) {
    outcome_.chosen = true;
    outcome_.switch_to.reset();
    outcome_.key = entries_[static_cast<size_t>(id - 1)].item.key;
  }
  return outcome_;
}

void MenuPopup::fill(HMENU menu, const std::vector<MenuItem>& items, int parent) {
  for (const int index : menu_model::children(items, parent)) {
    const MenuItem& item = items[static_cast<size_t>(index)];
    if (!item.visible) continue;
    Entry& entry = entries_.emplace_back();
    entry.item = item;
    entry.text = without_access_marks(item.caption);
    if (!item.short_cut.empty()) entry.text += L"\t" + item.short_cut;
    entry.reader = {kReaderSignature, static_cast<DWORD>(entry.text.size()), entry.text.data()};
    const bool opens = !item.separates() && !menu_model::children(items, index).empty();
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_DATA | (opens ? MIIM_SUBMENU : 0u);
    info.fType = MFT_OWNERDRAW;
    if (item.separates()) info.fType |= MFT_SEPARATOR;
    if (item.radio) info.fType |= MFT_RADIOCHECK;
    info.fState = state_of(item);
    info.wID = static_cast<UINT>(entries_.size());
    info.dwItemData = reinterpret_cast<ULONG_PTR>(&entry);
    if (opens) {
      info.hSubMenu = entry.submenu = CreatePopupMenu();
      parents_[entry.submenu] = &entry;
      // Until it is opened: something that can be stepped into.
      AppendMenuW(entry.submenu, MF_OWNERDRAW | MF_GRAYED, 0, nullptr);
    }
    InsertMenuItemW(menu, static_cast<UINT>(GetMenuItemCount(menu)), TRUE, &info);
  }
}

// Items are read afresh: a handler may have changed them since the menu opened.
void MenuPopup::fill_submenu(HMENU menu) {
  const auto found = parents_.find(menu);
  if (found == parents_.end()) return;
  const MenuItem parent = found->second->item;
  owner_.submenu_opening(parent.key);
  if (current != this) return;
  const std::vector<MenuItem>& items = owner_.menu_items();
  int at = menu_model::find(items, parent.key);
  // Without a key an item is found by its looks.
  for (size_t i = 0; at == menu_model::kNone && parent.key.empty() && i < items.size(); ++i)
    if (items[i].key.empty() && items[i].caption == parent.caption &&
        items[i].level == parent.level)
      at = static_cast<int>(i);
  while (GetMenuItemCount(menu) > 0 && RemoveMenu(menu, 0, MF_BYPOSITION)) {
  }
  if (at != menu_model::kNone) fill(menu, items, at);
}

LRESULT CALLBACK MenuPopup::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* const popup =
        static_cast<MenuPopup*>(reinterpret_cast<const CREATESTRUCTW*>(lparam)->lpCreateParams);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(popup));
    popup->window_ = window;
  }
  auto* const popup = reinterpret_cast<MenuPopup*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (popup == nullptr) return DefWindowProcW(window, message, wparam, lparam);
  if (message == WM_NCDESTROY) {
    popup->window_ = nullptr;
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    return DefWindowProcW(window, message, wparam, lparam);
  }
  try {
    LRESULT result = 0;
    if (popup->handle(message, wparam, lparam, result)) return result;
  } catch (...) {
    return 0;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

bool MenuPopup::handle(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  switch (message) {
    case WM_INITMENUPOPUP:
      fill_submenu(reinterpret_cast<HMENU>(wparam));
      return true;
    case WM_MEASUREITEM:
      measure(*reinterpret_cast<MEASUREITEMSTRUCT*>(lparam));
      result = TRUE;
      return true;
    case WM_DRAWITEM:
      draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
      result = TRUE;
      return true;
    case WM_MENUCHAR:
      result =
          choose_by_letter(reinterpret_cast<HMENU>(lparam), static_cast<wchar_t>(LOWORD(wparam)));
      return true;
    case WM_MENUSELECT:
      highlight(LOWORD(wparam), HIWORD(wparam), reinterpret_cast<HMENU>(lparam));
      return true;
    default:
      return false;
  }
}

void MenuPopup::highlight(UINT id, UINT flags, HMENU menu) {
  if (flags == 0xFFFF && menu == nullptr) return;
  highlighted_menu_ = menu;
  highlighted_opens_ = (flags & MF_POPUP) != 0;
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_DATA;
  // A sub-menu is told by its position, any other item by its number.
  if (!GetMenuItemInfoW(menu, id, highlighted_opens_, &info)) return;
  const Entry* const entry = entry_of(info.dwItemData);
  if (entry == nullptr || entry->item.separates()) return;
  const std::wstring key = entry->item.key, description = entry->item.description;
  owner_.menu_highlight(key, description);
}

const MenuPopup::Entry* MenuPopup::entry_of(ULONG_PTR data) const {
  for (const Entry& each : entries_)
    if (reinterpret_cast<ULONG_PTR>(&each) == data) return &each;
  return nullptr;
}

LRESULT MenuPopup::choose_by_letter(HMENU menu, wchar_t letter) const {
  const std::wstring wanted(1, fold_case(letter));
  const int count = GetMenuItemCount(menu);
  std::vector<int> found;
  int selected = -1;
  for (int i = 0; i < count; ++i) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_DATA | MIIM_STATE;
    if (!GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &info)) continue;
    if ((info.fState & MFS_HILITE) != 0) selected = i;
    const Entry* const entry = entry_of(info.dwItemData);
    if (entry != nullptr && access_key_from_end(entry->item.caption) == wanted) found.push_back(i);
  }
  if (found.empty()) return MAKELRESULT(0, MNC_IGNORE);
  if (found.size() == 1) return MAKELRESULT(found.front(), MNC_EXECUTE);
  for (const int each : found)
    if (each > selected) return MAKELRESULT(each, MNC_SELECT);
  return MAKELRESULT(found.front(), MNC_SELECT);
}

LRESULT CALLBACK MenuPopup::filter(int code, WPARAM wparam, LPARAM lparam) {
  MenuPopup* const popup = current;
  if (code == MSGF_MENU && popup != nullptr &&
      popup->wants(*reinterpret_cast<const MSG*>(lparam))) {
    EndMenu();
    return TRUE;
  }
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

// Whether a message leads out of the popup to another item of the bar.
bool MenuPopup::wants(const MSG& message) {
  std::optional<int> to;
  if (message.message == WM_KEYDOWN) {
    const bool onward = message.wParam == (look_.right_to_left ? VK_LEFT : VK_RIGHT);
    const bool back = message.wParam == (look_.right_to_left ? VK_RIGHT : VK_LEFT);
    const bool at_root = highlighted_menu_ == nullptr || highlighted_menu_ == root_;
    if (onward && !highlighted_opens_) to = owner_.bar_step(1);
    if (back && at_root) to = owner_.bar_step(-1);
  } else if (message.message == WM_MOUSEMOVE) {
    to = owner_.bar_at(message.pt);
  }
  if (!to) return false;
  outcome_.switch_to = to;
  return true;
}

}  // namespace kestrelon
