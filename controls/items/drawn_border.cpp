#include "controls/items/drawn_border.h"

namespace kestrelon {
namespace {

void paint(const DrawnBorder& border, HWND window) {
  RECT place{};
  if (border.thickness <= 0 || !GetWindowRect(window, &place)) return;
  const HDC dc = GetWindowDC(window);
  OffsetRect(&place, -place.left, -place.top);
  const HBRUSH brush = CreateSolidBrush(border.color);
  for (int i = 0; i < border.thickness; ++i) {
    FrameRect(dc, &place, brush);
    InflateRect(&place, -1, -1);
  }
  DeleteObject(brush);
  ReleaseDC(window, dc);
}

}  // namespace

bool DrawnBorder::handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                         LRESULT& result) const {
  switch (message) {
    case WM_NCCALCSIZE: {
      auto& area = *reinterpret_cast<RECT*>(lparam);  // first in either form of the message
      InflateRect(&area, -thickness, -thickness);
      result = DefWindowProcW(window, message, wparam, lparam);
      return true;
    }
    case WM_NCPAINT:
      result = DefWindowProcW(window, message, wparam, lparam);
      paint(*this, window);
      return true;
    default:
      return false;
  }
}

void DrawnBorder::renew(HWND window) {
  if (window != nullptr)
    SetWindowPos(window, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

}  // namespace kestrelon
