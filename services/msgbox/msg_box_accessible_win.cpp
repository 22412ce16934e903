// What a message box tells screen readers: an alert named by its title, the text, the parts.
#include "services/msgbox/msg_box_window_win.h"

namespace kestrelon {

long MsgBoxWindow::accessible_count() const {
  return 1 + static_cast<long>(stops().size());
}

bool MsgBoxWindow::accessible_item(long child, AccessibleItem& item) const {
  if (child == CHILDID_SELF) {
    item.role = ROLE_SYSTEM_ALERT;
    item.name = request_.title;
    item.description = request_.text;
    item.value = request_.text;
    return true;
  }
  if (child != 1) return child > 1 && child <= accessible_count();
  const PixelRect& text = places_.text;
  item.role = ROLE_SYSTEM_STATICTEXT;
  item.state = STATE_SYSTEM_READONLY;
  item.name = request_.text;
  item.place = {text.left, text.top, text.right, text.bottom};
  return true;
}

ComPtr<IDispatch> MsgBoxWindow::accessible_object(long child) const {
  const std::vector<HWND> windows = stops();
  const auto index = static_cast<size_t>(child - 2);
  if (child < 2 || index >= windows.size()) return nullptr;
  return accessible_of_window(windows[index], static_cast<DWORD>(OBJID_CLIENT));
}

HWND MsgBoxWindow::accessible_window(RECT& place) const {
  place = {0, 0, places_.width, places_.height};
  return window_;
}

}  // namespace kestrelon
