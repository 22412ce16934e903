// Windows inside the control: what they send to their parent, and hover over them.
#include <algorithm>

#include "frame/control_frame.h"
#include "frame/inner/inner_window.h"

namespace kestrelon {

void ControlFrame::inner_added(InnerWindow& window) {
  inner_windows_.push_back(&window);
}

void ControlFrame::inner_removed(InnerWindow& window) {
  std::erase(inner_windows_, &window);
}

InnerWindow* ControlFrame::inner_of(HWND window) const {
  for (InnerWindow* const inner : inner_windows_)
    if (inner->hwnd() == window) return inner;
  return nullptr;
}

void ControlFrame::inner_mouse(UINT message, WPARAM wparam, POINT point) {
  // Capture and focus are the inner window's own affair.
  in_inner_mouse_ = true;
  handle_mouse(message, wparam, MAKELPARAM(point.x, point.y));
  in_inner_mouse_ = false;
}

bool ControlFrame::handle_reflected(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  switch (message) {
    case WM_COMMAND:
      if (InnerWindow* const inner = inner_of(reinterpret_cast<HWND>(lparam))) {
        inner->command(HIWORD(wparam));
        return true;
      }
      return false;
    case WM_NOTIFY: {
      auto& header = *reinterpret_cast<NMHDR*>(lparam);
      InnerWindow* const inner = inner_of(header.hwndFrom);
      if (inner == nullptr) return false;
      result = inner->notify(header);
      return true;
    }
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN: {
      InnerWindow* const inner = inner_of(reinterpret_cast<HWND>(lparam));
      const HBRUSH brush =
          inner != nullptr ? inner->colors(reinterpret_cast<HDC>(wparam)) : nullptr;
      result = reinterpret_cast<LRESULT>(brush);
      return brush != nullptr;
    }
    default:
      return false;
  }
}

}  // namespace kestrelon
