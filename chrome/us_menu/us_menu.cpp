// Life, theme, and what the menu hears of its form: Alt, F10 and short cuts.
#include "chrome/us_menu/us_menu.h"

#include <algorithm>

#include "services/late_object_win.h"

namespace kestrelon {
namespace {

constexpr ThemeEntry kEntries[] = {
    {L"BorderColor", {0xF2CEB3, 0xBEBEBE, 0xDBC9BA}},
    {L"BorderColorOver", {0x78A8C1, 0x78A8C1, 0xB17F3C}},
    {L"GradientColor1", {0xFEF9F4, 0xF8F4F1, 0xFEF9F4}},
    {L"GradientColor2", {0xFFEADA, 0xE7DCD6, 0xF5E7DC}},
    {L"GradientColorImage1", {0xFEF9F4, 0xF8F4F1, 0xFEF9F4}},
    {L"GradientColorImage2", {0xFFEADA, 0xE7DCD6, 0xF5E7DC}},
    {L"GradientColorOver1", {0xDBFDFF, 0xDBFDFF, 0xFDF5E8}},
    {L"GradientColorOver2", {0xBBF2FF, 0xBBF2FF, 0xFCF1DC}},
};

ControlTraits traits() {
  ControlTraits out;
  out.misc_status |= OLEMISC_ALIGNABLE;
  out.initial_pixels = {320, 24};
  return out;
}

// The menus of this thread that listen to keys; newest last.
thread_local std::vector<USMenu*> listeners;
constexpr short kAlignTop = 1;

}  // namespace

USMenu::USMenu() : USMenuGlue(traits()) {}

void USMenu::init_properties() {
  DisplayControl::init_properties();
  // A bar lies at the top of its form; a container without such a property leaves it where it is.
  try {
    if (const ComPtr<IDispatch> own = extender())
      LateObject(own).put_property(L"Align", Variant(kAlignTop));
  } catch (const ComError&) {
    return;
  }
}

void USMenu::properties_read() {
  images_read();
  DisplayControl::properties_read();
}

void USMenu::window_created() {
  listen();
}

void USMenu::shown() {
  if (user_mode() && !is_bar() && window() != nullptr) ShowWindow(window(), SW_HIDE);
}

void USMenu::terminate() {
  end();
  DisplayControl::terminate();
}

// Nothing of the menu stays open or listens.
void USMenu::end() {
  if (ended_) return;
  ended_ = true;
  if (open_ != menu_model::kNone) MenuPopup::cancel();
  if (hook_ != nullptr) UnhookWindowsHookEx(hook_);
  hook_ = nullptr;
  std::erase(listeners, this);
  form_listener_.sc_Terminate();
  listened_ = nullptr;
}

void USMenu::ambient_changed(DISPID id) {
  if (id == DISPID_AMBIENT_RIGHTTOLEFT || id == DISPID_UNKNOWN) items_changed();
}

void USMenu::apply_theme() {
  assign_theme(ThemeTable(kEntries), Theme.get());
}

void USMenu::mode_changed() {
  if (user_mode() && window() != nullptr) ShowWindow(window(), is_bar() ? SW_SHOWNA : SW_HIDE);
  redraw();
}

void USMenu::items_changed() {
  laid_out_ = false;
  redraw();
  tell_readers(EVENT_OBJECT_REORDER);
}

HWND USMenu::form_window() const {
  return window() != nullptr ? GetAncestor(window(), GA_ROOT) : nullptr;
}

void USMenu::listen() {
  const HWND form = form_window();
  if (!user_mode() || ended_ || form == nullptr || form == listened_) return;
  form_listener_.sc_Terminate();
  listened_ = form;
  if (form_listener_.sc_Subclass(form, 0, 1, &listener_, false))
    form_listener_.sc_AddMsg(form, WM_SYSCOMMAND, MSG_BEFORE);
  if (hook_ == nullptr) {
    listeners.push_back(this);
    hook_ = SetWindowsHookExW(WH_GETMESSAGE, key_hook, nullptr, GetCurrentThreadId());
  }
}

void USMenu::FormListener::WindowProcHook(bool, bool& handled, LRESULT& result, HWND, UINT,
                                          WPARAM wparam, LPARAM lparam, LPARAM) {
  USMenu& menu = menu_;
  if ((wparam & 0xFFF0) != SC_KEYMENU || lparam == VK_SPACE || !menu.is_bar() ||
      !menu.Enabled.get())
    return;
  const Hold hold(menu);
  if (!menu.enter_bar(static_cast<wchar_t>(lparam))) return;
  handled = true;
  result = 0;
}

LRESULT CALLBACK USMenu::key_hook(int code, WPARAM wparam, LPARAM lparam) {
  auto* const message = reinterpret_cast<MSG*>(lparam);
  const bool key = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN;
  if (code == HC_ACTION && wparam == PM_REMOVE && key) {
    const std::vector<USMenu*> asked = listeners;
    for (USMenu* const menu : asked) {
      if (std::find(listeners.begin(), listeners.end(), menu) == listeners.end()) continue;
      if (menu->short_cut_pressed(*message)) {
        message->message = WM_NULL;
        break;
      }
    }
  }
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

bool USMenu::short_cut_pressed(const MSG& message) {
  const HWND form = form_window();
  if (form == nullptr || !Enabled.get() || MenuPopup::is_open() || !IsWindowEnabled(form))
    return false;
  if (message.hwnd != form && !IsChild(form, message.hwnd)) return false;
  menu_model::ShortCut pressed;
  pressed.key = static_cast<int>(message.wParam);
  if (GetKeyState(VK_SHIFT) < 0) pressed.modifiers |= menu_model::kShift;
  if (GetKeyState(VK_CONTROL) < 0) pressed.modifiers |= menu_model::kControl;
  if (GetKeyState(VK_MENU) < 0) pressed.modifiers |= menu_model::kAlt;
  const int index = menu_model::find_short_cut(items.get(), pressed);
  if (index < 0) return false;
  const Hold hold(*this);
  choose(items[static_cast<size_t>(index)].key);
  return true;
}

}  // namespace kestrelon
