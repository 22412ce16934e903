// A border of one colour around a window, outside its client area, so that the platform's scroll
// bars lie within it.
#pragma once

#include <windows.h>

namespace kestrelon {

struct DrawnBorder {
  int thickness = 0;  ///< pixels; 0: none
  COLORREF color = 0;

  /// Makes room for the border and paints it; true when `result` is the answer to a message.
  bool handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) const;
  /// Has the window measured and painted again after a change.
  static void renew(HWND window);
};

}  // namespace kestrelon
