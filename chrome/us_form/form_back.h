// FormBack: a half transparent window that dims a form while another one asks for attention.
#pragma once

#include <windows.h>

namespace kestrelon {

/// One a process. It belongs to the dimmed window and goes with it.
class FormBack {
 public:
  /// Dims a window; nothing happens while another one is dimmed.
  static void show(HWND parent, COLORREF color);
  static void hide();
};

}  // namespace kestrelon
