// What happens in the windows that stand on a control: the focus that comes to one of them, and
// keys that are the control's wherever the focus is.
#pragma once

#include <windows.h>

namespace kestrelon {

/// Watches the windows within one window of this thread. News is posted to that window, so nothing
/// runs within the system's own calls.
class ChildWatch {
 public:
  ChildWatch() = default;
  ChildWatch(const ChildWatch&) = delete;
  ChildWatch& operator=(const ChildWatch&) = delete;
  ~ChildWatch() { stop(); }

  void start(HWND window);
  void stop();

  /// Registered messages. The focus has come to the window in wParam.
  static UINT focus_message();
  /// A key in wParam with the modifiers in lParam (input_state.h): Ctrl with Tab, Page Up or Page
  /// Down, taken from a window within, the innermost watched one's.
  static UINT key_message();

 private:
  HWND window_ = nullptr;
};

}  // namespace kestrelon
