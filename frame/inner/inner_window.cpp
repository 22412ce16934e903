#include "frame/inner/inner_window.h"

#include <windowsx.h>

#include "frame/window_procedure.h"

namespace kestrelon {

bool InnerWindow::create(const wchar_t* window_class, DWORD style, DWORD extended_style,
                         const RECT& place) {
  destroy();
  const HWND parent = host_.host_window();
  if (parent == nullptr) return false;
  window_ = CreateWindowExW(extended_style, window_class, nullptr, style | WS_CHILD, place.left,
                            place.top, place.right - place.left, place.bottom - place.top, parent,
                            nullptr, module_instance(), nullptr);
  if (window_ == nullptr) return false;
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  former_ = replace_procedure(window_, procedure);
  host_.inner_added(*this);
  return true;
}

void InnerWindow::destroy() {
  if (window_ == nullptr) return;
  host_.inner_removed(*this);
  const HWND window = window_;
  DestroyWindow(window);  // WM_NCDESTROY clears window_
}

void InnerWindow::move(const RECT& place) {
  if (window_ == nullptr) return;
  SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void InnerWindow::show(bool visible) {
  if (window_ != nullptr) ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE);
}

void InnerWindow::enable(bool enabled) {
  if (window_ != nullptr) EnableWindow(window_, enabled);
}

LRESULT InnerWindow::call_former(UINT message, WPARAM wparam, LPARAM lparam) {
  return window_ == nullptr ? 0 : call_procedure(former_, window_, message, wparam, lparam);
}

LRESULT CALLBACK InnerWindow::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* const inner = reinterpret_cast<InnerWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (inner == nullptr) return DefWindowProcW(window, message, wparam, lparam);
  const AutomationObject::Hold hold(inner->host_.host_object());
  if (message == WM_NCDESTROY) {
    const WNDPROC former = inner->former_;
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    if (inner->window_ == window) {
      inner->host_.inner_removed(*inner);
      inner->window_ = nullptr;
    }
    return call_procedure(former, window, message, wparam, lparam);
  }
  try {
    return inner->handle(message, wparam, lparam);
  } catch (...) {
    return 0;  // a failing handler leaves the window as far as it got
  }
}

LRESULT InnerWindow::handle(UINT message, WPARAM wparam, LPARAM lparam) {
  const HWND window = window_;
  const WNDPROC former = former_;
  LRESULT result = 0;
  if (as_controls_own(message, wparam, lparam, result)) return result;
  // A handler may have destroyed the window, and with the control's part of it this object.
  if (GetWindowLongPtrW(window, GWLP_USERDATA) != reinterpret_cast<LONG_PTR>(this)) return 0;
  if (this->message(message, wparam, lparam, result)) return result;
  if (!IsWindow(window)) return 0;
  result = call_procedure(former, window, message, wparam, lparam);
  if (message == WM_GETDLGCODE && lparam != 0) {
    const auto* const key = reinterpret_cast<const MSG*>(lparam);
    if (key->message == WM_KEYDOWN && host_.inner_wants_key(static_cast<int>(key->wParam)))
      result |= DLGC_WANTMESSAGE;
  }
  return result;
}

bool InnerWindow::as_controls_own(UINT message, WPARAM& wparam, LPARAM lparam, LRESULT& result) {
  switch (message) {
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      host_.inner_focus(message == WM_SETFOCUS, reinterpret_cast<HWND>(wparam));
      return false;
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_CHAR:
    case WM_SYSKEYDOWN:
    case WM_SYSKEYUP:
      result = 0;
      return !host_.inner_key(message, wparam);
    default:
      break;
  }
  if (message < WM_MOUSEMOVE || message > WM_MBUTTONDBLCLK) return false;
  POINT point{GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
  MapWindowPoints(window_, host_.host_window(), &point, 1);
  host_.inner_mouse(message, wparam, point);
  return false;
}

}  // namespace kestrelon
