// The control's window and the way of its messages to the control's handlers.
#include <windowsx.h>

#include <utility>

#include "frame/control_frame.h"

namespace kestrelon {
namespace {

constexpr wchar_t kWindowClass[] = L"KestrelonControl2012";

// Mouse buttons and modifier keys as events give them.
constexpr short kLeft = 1, kRight = 2, kMiddle = 4;
constexpr short kShift = 1, kControl = 2, kAlt = 4;

short shift_state() {
  short out = 0;
  if (GetKeyState(VK_SHIFT) < 0) out |= kShift;
  if (GetKeyState(VK_CONTROL) < 0) out |= kControl;
  if (GetKeyState(VK_MENU) < 0) out |= kAlt;
  return out;
}

short buttons_held(WPARAM keys) {
  short out = 0;
  if (keys & MK_LBUTTON) out |= kLeft;
  if (keys & MK_RBUTTON) out |= kRight;
  if (keys & MK_MBUTTON) out |= kMiddle;
  return out;
}

short button_of(UINT message) {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
      return kLeft;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_RBUTTONDBLCLK:
      return kRight;
    default:
      return kMiddle;
  }
}

UINT full_repaints_message() {
  static const UINT message = RegisterWindowMessageW(kFullRepaintsMessage);
  return message;
}

}  // namespace

bool ControlFrame::create_window(HWND parent, const RECT& place) {
  // One class for all controls; the atom dies with the module (see unregister_window_class).
  static const ATOM atom = [] {
    WNDCLASSEXW window_class{};
    window_class.cbSize = sizeof window_class;
    window_class.style = CS_DBLCLKS;
    window_class.lpfnWndProc = window_procedure;
    window_class.hInstance = module_instance();
    window_class.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    window_class.lpszClassName = kWindowClass;
    return RegisterClassExW(&window_class);
  }();
  if (atom == 0) return false;
  CreateWindowExW(0, kWindowClass, nullptr,
                  WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_TABSTOP, place.left, place.top,
                  place.right - place.left, place.bottom - place.top, parent, nullptr,
                  module_instance(), this);
  if (window_ == nullptr) return false;
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
  window_message_after(message, wparam, lparam);
}

void unregister_window_class() {
  UnregisterClassW(kWindowClass, module_instance());
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
    control->stop_drops();
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    control->window_ = nullptr;
    return DefWindowProcW(window, message, wparam, lparam);
  }
  return control->dispatch_message(message, wparam, lparam);
}

LRESULT ControlFrame::dispatch_message(UINT message, WPARAM wparam, LPARAM lparam) {
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
    case WM_PAINT:
      paint_window();
      return true;
    case WM_PRINTCLIENT:
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
    case WM_SIZE:
      set_size(LOWORD(lparam), HIWORD(lparam));
      return true;
    case WM_SHOWWINDOW:
      if (visible_ != (wparam != 0)) {
        visible_ = wparam != 0;
        visible_ ? shown() : hidden();
      }
      return false;
    case WM_SETCURSOR:
      if (LOWORD(lparam) != HTCLIENT || !set_cursor()) return false;
      result = TRUE;
      return true;
    case WM_GETDLGCODE:
      result = DLGC_WANTARROWS;
      return true;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      handle_focus(message == WM_SETFOCUS);
      return true;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      resized();  // colours named by the system have new values: everything is drawn again
      return false;
    case WM_CAPTURECHANGED:
      if (reinterpret_cast<HWND>(lparam) != window_) buttons_down_ = 0;
      return false;
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_CHAR:
    case WM_SYSKEYDOWN:
    case WM_SYSKEYUP:
      return handle_key(message, wparam);
    default:
      if (message == full_repaints_message()) {
        result = full_repaints_;
        return true;
      }
      return message >= WM_MOUSEMOVE && message <= WM_MBUTTONDBLCLK &&
             handle_mouse(message, wparam, lparam);
  }
}

bool ControlFrame::handle_mouse(UINT message, WPARAM wparam, LPARAM lparam) {
  const int pixel_x = GET_X_LPARAM(lparam), pixel_y = GET_Y_LPARAM(lparam);
  const auto x = static_cast<float>(pixel_x), y = static_cast<float>(pixel_y);
  const short shift = shift_state();
  switch (message) {
    case WM_MOUSEMOVE:
      mouse_move(buttons_held(wparam), shift, x, y);
      return true;
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN: {
      const short button = button_of(message);
      buttons_down_ = static_cast<short>(buttons_down_ | button);
      click_pending_ = true;
      grab_focus();
      if (!has_capture()) capture_mouse();
      mouse_down(button, shift, x, y);
      return true;
    }
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDBLCLK:
      // The press that completes a double click; its release brings no second click.
      buttons_down_ = static_cast<short>(buttons_down_ | button_of(message));
      click_pending_ = false;
      if (!has_capture()) capture_mouse();
      double_click();
      return true;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP: {
      const short button = button_of(message);
      const bool pressed_here = (buttons_down_ & button) != 0;
      buttons_down_ = static_cast<short>(buttons_down_ & ~button);
      const bool clicks = pressed_here && click_pending_ && pixel_x >= 0 && pixel_y >= 0 &&
                          pixel_x < width_ && pixel_y < height_;
      if (buttons_down_ == 0) click_pending_ = false;
      mouse_up(button, shift, x, y);
      if (buttons_down_ == 0) release_mouse();
      if (clicks) click();
      return true;
    }
    default:
      return false;
  }
}

bool ControlFrame::handle_key(UINT message, WPARAM wparam) {
  const auto code = static_cast<short>(wparam);
  switch (message) {
    case WM_KEYDOWN:
      key_down(code, shift_state());
      return true;
    case WM_KEYUP:
      key_up(code, shift_state());
      return true;
    case WM_CHAR:
      key_press(code);
      return true;
    case WM_SYSKEYDOWN:
      key_down(code, shift_state());
      return false;  // the window's own work with Alt goes on
    case WM_SYSKEYUP:
      key_up(code, shift_state());
      return false;
    default:
      return false;
  }
}

void ControlFrame::grab_focus() {
  if ((traits_.misc_status & OLEMISC_NOUIACTIVATE) != 0) return;  // a picture, for one
  if (windowless_) {
    if (windowless_site_->GetFocus() != S_OK) activate_ui();
    return;
  }
  if (window_ != nullptr && ::GetFocus() != window_ && !IsChild(window_, ::GetFocus()))
    ::SetFocus(window_);
}

void ControlFrame::handle_focus(bool gained) {
  if (gained && !ui_active_ && in_place_active_) activate_ui();
  const ComPtr<IOleControlSite> site = control_site_;
  if (site) site->OnFocus(gained);
  if (window_ == nullptr && !windowless_) return;
  gained ? got_focus() : lost_focus();
}

void ControlFrame::paint_window() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(window_, &paint);
  if (dc == nullptr) return;
  const RECT& area = paint.rcPaint;
  if (has_alpha()) {
    DibSection whole;
    if (whole.create(width_, height_)) {
      draw_over_parent(whole.dc());
      BitBlt(dc, area.left, area.top, area.right - area.left, area.bottom - area.top, whole.dc(),
             area.left, area.top, SRCCOPY);
    }
  } else if (surface_) {
    BitBlt(dc, area.left, area.top, area.right - area.left, area.bottom - area.top, surface_.dc(),
           area.left, area.top, SRCCOPY);
  }
  EndPaint(window_, &paint);
}

namespace {

// The system pointer for a pointer number, null where the number names none.
LPCWSTR system_cursor(long pointer) {
  switch (pointer) {
    case 1:
      return reinterpret_cast<LPCWSTR>(IDC_ARROW);
    case 2:
      return reinterpret_cast<LPCWSTR>(IDC_CROSS);
    case 3:
      return reinterpret_cast<LPCWSTR>(IDC_IBEAM);
    case 4:
      return reinterpret_cast<LPCWSTR>(IDC_ICON);
    case 5:
    case 15:
      return reinterpret_cast<LPCWSTR>(IDC_SIZEALL);
    case 6:
      return reinterpret_cast<LPCWSTR>(IDC_SIZENESW);
    case 7:
      return reinterpret_cast<LPCWSTR>(IDC_SIZENS);
    case 8:
      return reinterpret_cast<LPCWSTR>(IDC_SIZENWSE);
    case 9:
      return reinterpret_cast<LPCWSTR>(IDC_SIZEWE);
    case 10:
      return reinterpret_cast<LPCWSTR>(IDC_UPARROW);
    case 11:
      return reinterpret_cast<LPCWSTR>(IDC_WAIT);
    case 12:
      return reinterpret_cast<LPCWSTR>(IDC_NO);
    case 13:
      return reinterpret_cast<LPCWSTR>(IDC_APPSTARTING);
    case 14:
      return reinterpret_cast<LPCWSTR>(IDC_HELP);
    default:
      return nullptr;
  }
}

constexpr long kCustomPointer = 99;

}  // namespace

// The control's own cursor, copied from its icon when the pointer first needs it.
HCURSOR ControlFrame::own_cursor() {
  const PictureProperty* const icon = mouse_icon();
  if (own_cursor_ == nullptr && icon != nullptr && icon->type() == PICTYPE_ICON)
    own_cursor_ = CopyCursor(reinterpret_cast<HCURSOR>(static_cast<LONG_PTR>(icon->handle())));
  return own_cursor_;
}

bool ControlFrame::set_cursor() {
  if (mouse_pointer() == kCustomPointer && own_cursor() != nullptr) {
    SetCursor(own_cursor_);
    return true;
  }
  const LPCWSTR name = system_cursor(mouse_pointer());
  if (name == nullptr) return false;
  SetCursor(LoadCursorW(nullptr, name));
  return true;
}

void ControlFrame::apply_mouse_pointer() {
  const HCURSOR old = std::exchange(own_cursor_, nullptr);
  if (!windowless_ && pointer_over_window())
    SendMessageW(window_, WM_SETCURSOR, reinterpret_cast<WPARAM>(window_),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  if (old != nullptr) DestroyCursor(old);
}

}  // namespace kestrelon
