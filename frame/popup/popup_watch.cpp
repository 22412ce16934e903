#include "frame/popup/popup_watch.h"

namespace kestrelon {
namespace {

constexpr UINT kLookInterval = 100;  // milliseconds
thread_local PopupWatch* watching = nullptr;

bool is_press(WPARAM message) {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_NCLBUTTONDOWN:
    case WM_NCRBUTTONDOWN:
    case WM_NCMBUTTONDOWN:
      return true;
    default:
      return false;
  }
}

}  // namespace

PopupWatch* PopupWatch::current() {
  return watching;
}

void PopupWatch::start(HWND control) {
  if (watching != nullptr) watching->end(PopupEnd::kReplaced);
  control_ = control;
  GetWindowRect(control, &place_);
  watching = this;
  hook_ = SetWindowsHookExW(WH_MOUSE, mouse_hook, nullptr, GetCurrentThreadId());
  const HWND top = GetAncestor(control, GA_ROOT);
  if (top_level_.sc_Subclass(top, 0, 1, this, false))
    for (const UINT message : {WM_ACTIVATE, WM_ACTIVATEAPP, WM_WINDOWPOSCHANGED, WM_ENABLE})
      top_level_.sc_AddMsg(top, message, MSG_AFTER);
  timer_.start(kLookInterval, [this] { look(); });
}

void PopupWatch::stop() {
  if (control_ == nullptr) return;
  control_ = nullptr;
  if (watching == this) watching = nullptr;
  if (hook_ != nullptr) UnhookWindowsHookEx(hook_);
  hook_ = nullptr;
  top_level_.sc_Terminate();
  timer_.stop();
}

void PopupWatch::control_gone(HWND window) {
  PopupWatch* const watch = watching;
  if (watch != nullptr && (watch->control_ == window || IsChild(window, watch->control_)))
    watch->end(PopupEnd::kControlGone);
}

bool PopupWatch::is_outside(HWND window) const {
  const HWND popup = watcher_.popup_window();
  return window != popup && !IsChild(popup, window) && window != control_ &&
         !IsChild(control_, window);
}

LRESULT CALLBACK PopupWatch::mouse_hook(int code, WPARAM wparam, LPARAM lparam) {
  PopupWatch* const watch = watching;
  const auto* const mouse = reinterpret_cast<const MOUSEHOOKSTRUCT*>(lparam);
  // Only when the message is taken from the queue: a look at it must not act twice.
  if (code == HC_ACTION && watch != nullptr && is_press(wparam) && watch->is_outside(mouse->hwnd))
    watch->end(PopupEnd::kPressOutside);
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

void PopupWatch::WindowProcHook(bool, bool&, LRESULT&, HWND, UINT message, WPARAM wparam, LPARAM,
                                LPARAM) {
  const bool left = (message == WM_ACTIVATE && LOWORD(wparam) == WA_INACTIVE) ||
                    (message == WM_ACTIVATEAPP && wparam == 0);
  if (left) return end(PopupEnd::kProgramLeft);
  look();
}

void PopupWatch::look() {
  if (control_ == nullptr) return;
  if (!IsWindow(control_) || !IsWindowVisible(control_) || !IsWindowEnabled(control_) ||
      !IsWindowEnabled(GetAncestor(control_, GA_ROOT)))
    return end(PopupEnd::kControlGone);
  RECT now{};
  GetWindowRect(control_, &now);
  if (!EqualRect(&now, &place_)) end(PopupEnd::kControlMoved);
}

}  // namespace kestrelon
