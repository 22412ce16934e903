#include "chrome/us_form/form_back.h"

#include "base/module_win.h"
#include "frame/window_class.h"

namespace kestrelon {
namespace {

constexpr wchar_t kClass[] = L"KestrelonFormBack2012";
constexpr BYTE kOpacity = 125;

HWND shown = nullptr;

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_ERASEBKGND: {
      RECT area{};
      GetClientRect(window, &area);
      const HBRUSH brush =
          CreateSolidBrush(static_cast<COLORREF>(GetWindowLongPtrW(window, GWLP_USERDATA)));
      FillRect(reinterpret_cast<HDC>(wparam), &area, brush);
      DeleteObject(brush);
      return 1;
    }
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATEANDEAT;
    case WM_NCDESTROY:
      if (shown == window) shown = nullptr;
      break;
    default:
      break;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

}  // namespace

void FormBack::show(HWND parent, COLORREF color) {
  if (shown != nullptr || !IsWindow(parent) || window_class(kClass, procedure, 0) == 0) return;
  RECT place{};
  GetWindowRect(parent, &place);
  shown = CreateWindowExW(WS_EX_LAYERED | WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, kClass, nullptr,
                          WS_POPUP, place.left, place.top, place.right - place.left,
                          place.bottom - place.top, GetAncestor(parent, GA_ROOT), nullptr,
                          module_instance(), nullptr);
  if (shown == nullptr) return;
  SetWindowLongPtrW(shown, GWLP_USERDATA, static_cast<LONG_PTR>(color));
  SetLayeredWindowAttributes(shown, 0, kOpacity, LWA_ALPHA);
  ShowWindow(shown, SW_SHOWNOACTIVATE);
}

void FormBack::hide() {
  if (shown != nullptr) DestroyWindow(shown);
}

}  // namespace kestrelon
