#include "chrome/us_form/edge_windows.h"

#include <windowsx.h>

#include "base/module_win.h"
#include "frame/window_class.h"

namespace kestrelon {
namespace {

constexpr wchar_t kClass[] = L"KestrelonEdge2012";

int width_of(HWND window) {
  RECT client{};
  GetClientRect(window, &client);
  return static_cast<int>(client.right);
}

}  // namespace

void EdgeWindows::create(HWND parent) {
  if (exist() || window_class(kClass, procedure, 0) == 0) return;
  for (HWND& window : windows_) {
    window = CreateWindowExW(WS_EX_NOPARENTNOTIFY, kClass, nullptr, WS_CHILD | WS_CLIPSIBLINGS, 0,
                             0, 1, 1, parent, nullptr, module_instance(), nullptr);
    if (window != nullptr)
      SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }
}

void EdgeWindows::destroy() {
  for (HWND& slot : windows_) {
    const HWND window = slot;
    slot = nullptr;
    if (window == nullptr) continue;
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    DestroyWindow(window);
  }
}

void EdgeWindows::place(const skin::Edges& places, HWND above) {
  const PixelRect* const areas[] = {&places.left, &places.right, &places.bottom};
  for (size_t i = 0; i < windows_.size(); ++i) {
    if (windows_[i] == nullptr) continue;
    SetWindowPos(windows_[i], above != nullptr ? above : HWND_TOP, areas[i]->left, areas[i]->top,
                 areas[i]->right - areas[i]->left, areas[i]->bottom - areas[i]->top,
                 SWP_NOACTIVATE | SWP_SHOWWINDOW | SWP_NOOWNERZORDER);
  }
}

void EdgeWindows::invalidate() {
  for (const HWND window : windows_)
    if (window != nullptr) InvalidateRect(window, nullptr, FALSE);
}

LRESULT CALLBACK EdgeWindows::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* const self = reinterpret_cast<EdgeWindows*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self != nullptr)
    for (size_t i = 0; i < self->windows_.size(); ++i)
      if (self->windows_[i] == window)
        return self->handle(window, static_cast<skin::Edge>(i), message, wparam, lparam);
  return DefWindowProcW(window, message, wparam, lparam);
}

LRESULT EdgeWindows::handle(HWND window, skin::Edge edge, UINT message, WPARAM wparam,
                            LPARAM lparam) {
  switch (message) {
    case WM_PAINT: {
      PAINTSTRUCT paint;
      const HDC dc = BeginPaint(window, &paint);
      RECT area{};
      GetClientRect(window, &area);
      owner_.paint_edge(edge, dc, area);
      EndPaint(window, &paint);
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    case WM_SETCURSOR: {
      POINT at{};
      GetCursorPos(&at);
      ScreenToClient(window, &at);
      owner_.edge_moved(edge, static_cast<int>(at.x), width_of(window));
      return TRUE;
    }
    case WM_LBUTTONDOWN:
      if (wparam == MK_LBUTTON) owner_.edge_pressed(edge, GET_X_LPARAM(lparam), width_of(window));
      return 0;
    case WM_NCDESTROY:
      windows_[static_cast<size_t>(edge)] = nullptr;
      break;
    default:
      break;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

}  // namespace kestrelon
