// Mouse messages to the control's handlers: presses, clicks, the wheel, the pointer's shape.
#include <windowsx.h>

#include <utility>

#include "frame/control_frame.h"
#include "frame/input_state.h"

namespace kestrelon {

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
      if (!in_inner_mouse_) grab_focus();
      if (!in_inner_mouse_ && !has_capture()) capture_mouse();
      mouse_down(button, shift, x, y);
      return true;
    }
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDBLCLK:
      // The press that completes a double click; its release brings no second click.
      buttons_down_ = static_cast<short>(buttons_down_ | button_of(message));
      click_pending_ = false;
      if (!in_inner_mouse_ && !has_capture()) capture_mouse();
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
      if (buttons_down_ == 0 && !in_inner_mouse_) release_mouse();
      if (clicks) click();
      return true;
    }
    default:
      return false;
  }
}

bool ControlFrame::handle_wheel(UINT message, WPARAM wparam) {
  return mouse_wheel(message == WM_MOUSEHWHEEL, GET_WHEEL_DELTA_WPARAM(wparam), shift_state());
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
