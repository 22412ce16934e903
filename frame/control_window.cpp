// The control's window and the way of its messages to the control's handlers.
#include <windowsx.h>

#include "frame/control_frame.h"
#include "frame/popup/popup_watch.h"
#include "frame/screen.h"
#include "frame/standing_controls.h"
#include "frame/window_class.h"

namespace kestrelon {
namespace {

constexpr wchar_t kWindowClass[] = L"KestrelonControl2012";
constexpr UINT kDpiChangedAfterParent = 0x02E3;  // WM_DPICHANGED_AFTERPARENT

UINT full_repaints_message() {
  static const UINT message = RegisterWindowMessageW(kFullRepaintsMessage);
  return message;
}

}  // namespace

bool ControlFrame::create_window(HWND parent, const RECT& place) {
  const ATOM atom = window_class(kWindowClass, window_procedure, CS_DBLCLKS);
  if (atom == 0) return false;
  CreateWindowExW(0, kWindowClass, nullptr,
                  WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_TABSTOP, place.left, place.top,
                  place.right - place.left, place.bottom - place.top, parent, nullptr,
                  module_instance(), this);
  if (window_ == nullptr) return false;
  rescale();
  apply_enabled();
  intercept_messages();
  apply_drops();
  window_created();
  ShowWindow(window_, SW_SHOWNA);
  return window_ != nullptr;
}

void ControlFrame::intercept_messages() {
  if (!was_read_ || !user_mode_) return;
  interception_.sc_Subclass(window_, 0, 1, this, false);
  interception_.sc_AddMsg(window_, WM_MOUSELEAVE, MSG_AFTER);
  for (const UINT message : intercepted_messages())
    interception_.sc_AddMsg(window_, message, MSG_AFTER);
}

void ControlFrame::WindowProcHook(bool, bool&, LRESULT&, HWND, UINT message, WPARAM wparam,
                                  LPARAM lparam, LPARAM) {
  const Hold hold(*this);
  // With the pointer over an inner window the control is still under it; see track_leave().
  if (message == WM_MOUSELEAVE && !inner_windows_.empty()) return;
  window_message_after(message, wparam, lparam);
}

LRESULT CALLBACK ControlFrame::window_procedure(HWND window, UINT message, WPARAM wparam,
                                                LPARAM lparam) {
  if (message == WM_NCCREATE) {
    const auto* const create = reinterpret_cast<const CREATESTRUCTW*>(lparam);
    auto* const control = static_cast<ControlFrame*>(create->lpCreateParams);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(control));
    control->window_ = window;
  }
  auto* const control = reinterpret_cast<ControlFrame*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (control == nullptr) return DefWindowProcW(window, message, wparam, lparam);
  const Hold hold(*control);
  if (message == WM_NCDESTROY) {
    PopupWatch::control_gone(window);
    control->stop_drops();
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    control->window_ = nullptr;
    return DefWindowProcW(window, message, wparam, lparam);
  }
  return control->dispatch_message(message, wparam, lparam);
}

LRESULT ControlFrame::dispatch_message(UINT message, WPARAM wparam, LPARAM lparam) {
  const bool input = (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
                     (message >= WM_KEYFIRST && message <= WM_KEYLAST);
  const bool passes = !frame_site_ || !input || !input_barred(window_);
  FrameFilter filter(passes ? frame_site_ : ComPtr<ISimpleFrameSite>(), window_, message, wparam,
                     lparam);
  if (filter.taken()) return filter.result();
  return filter.after(own_message(message, wparam, lparam));
}

LRESULT ControlFrame::own_message(UINT message, WPARAM wparam, LPARAM lparam) {
  LRESULT result = 0;
  const HWND window = window_;
  try {
    if (handle_message(message, wparam, lparam, result)) return result;
  } catch (...) {
    return 0;  // a failing handler leaves the window as far as it got
  }
  return window_ == window ? DefWindowProcW(window, message, wparam, lparam) : 0;
}

bool ControlFrame::handle_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  if (window_message_before(message, wparam, lparam, result)) return true;
  switch (message) {
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      handle_focus(message == WM_SETFOCUS, reinterpret_cast<HWND>(wparam));
      return true;
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_CHAR:
    case WM_SYSKEYDOWN:
    case WM_SYSKEYUP:
      return handle_key(message, wparam);
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
      return handle_wheel(message, wparam);
    default:
      break;
  }
  if (message >= WM_MOUSEMOVE && message <= WM_MBUTTONDBLCLK)
    return handle_mouse(message, wparam, lparam);
  return handle_query(message, wparam, lparam, result) || handle_life(message, wparam, lparam) ||
         handle_reflected(message, wparam, lparam, result);
}

// What the system wants to know or to have drawn.
bool ControlFrame::handle_query(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  switch (message) {
    case WM_PAINT:
      paint_window();
      return true;
    case WM_PRINTCLIENT:
      // What stands on a control that lets through asks it for all that lies behind itself.
      if (has_alpha())
        draw_over_parent(reinterpret_cast<HDC>(wparam));
      else
        draw_to(reinterpret_cast<HDC>(wparam), {0, 0, width_, height_});
      return true;
    case WM_NCHITTEST: {
      POINT point{GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
      if (window_ == nullptr || !ScreenToClient(window_, &point) || hit(point)) return false;
      result = HTTRANSPARENT;
      return true;
    }
    case WM_ERASEBKGND:
      result = 1;
      return true;
    case WM_SETCURSOR:
      if (LOWORD(lparam) != HTCLIENT || reinterpret_cast<HWND>(wparam) != window_ || !set_cursor())
        return false;
      result = TRUE;
      return true;
    case WM_GETOBJECT:
      return answer_readers(wparam, lparam, result);
    case WM_GETDLGCODE:
      result = dialog_code(reinterpret_cast<const MSG*>(lparam));
      return true;
    default:
      if (message != full_repaints_message()) return false;
      result = wparam == 1 ? part_repaints_ : full_repaints_;
      return true;
  }
}

// What happens to the window; its own procedure hears of most of it too.
bool ControlFrame::handle_life(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SIZE:
      set_size(LOWORD(lparam), HIWORD(lparam));
      return true;
    case WM_SHOWWINDOW:
      if (visible_ != (wparam != 0)) {
        visible_ = wparam != 0;
        visible_ ? shown() : hidden();
        if (!visible_ && window_ != nullptr) PopupWatch::control_gone(window_);
      }
      return false;
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      screen_settings_changed();
      if (message != WM_SETTINGCHANGE || wparam == SPI_SETHIGHCONTRAST) resized();
      return false;
    case kDpiChangedAfterParent:
      rescale();
      return false;
    case WM_ENABLE:
      if (wparam == 0) PopupWatch::control_gone(window_);
      tell_readers(EVENT_OBJECT_STATECHANGE);
      return false;
    case WM_CAPTURECHANGED:
      if (reinterpret_cast<HWND>(lparam) != window_) buttons_down_ = 0;
      return false;
    default:
      return false;
  }
}

void ControlFrame::rescale() {
  const Scale now = window_scale(window_);
  if (now == scale_) return;
  scale_ = now;
  rescaled();
  resized();
}

}  // namespace kestrelon
