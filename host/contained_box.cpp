#include "host/contained_box.h"

#include "host/control_site.h"

namespace kestrelon::host {

IDispatch* ContainedBox::container_dispatch() {
  return site_.dispatch();
}

void ContainedBox::paint_background(HDC hdc) {
  painting_ = true;
  SendMessageW(hwnd(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(hdc), PRF_CLIENT);
  painting_ = false;
}

bool ContainedBox::before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  if (message == WM_PAINT && has_windowless_items()) {
    on_paint();
    return true;
  }
  return forward(message, wparam, lparam, result);
}

void ContainedBox::after(UINT message, WPARAM wparam) {
  if (message == WM_PRINTCLIENT && !painting_) paint_items(reinterpret_cast<HDC>(wparam));
  if (message != WM_SIZE) return;
  align_items();
  clip_items();
}

}  // namespace kestrelon::host
