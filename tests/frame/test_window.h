// A plain window that records what reaches its own procedure.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kestrelon {

class TestWindow {
 public:
  explicit TestWindow(HWND parent = nullptr) {
    static const ATOM atom = [] {
      WNDCLASSW window_class = {};
      window_class.lpfnWndProc = procedure;
      window_class.hInstance = GetModuleHandleW(nullptr);
      window_class.lpszClassName = L"KestrelonTestWindow";
      return RegisterClassW(&window_class);
    }();
    window_ = CreateWindowExW(0, MAKEINTATOM(atom), L"", parent != nullptr ? WS_CHILD : WS_POPUP, 0,
                              0, 50, 50, parent, nullptr, GetModuleHandleW(nullptr), this);
  }
  TestWindow(const TestWindow&) = delete;
  ~TestWindow() { destroy(); }

  operator HWND() const { return window_; }
  HWND handle() const { return window_; }
  void destroy() {
    if (window_ != nullptr) DestroyWindow(window_);
  }
  /// The window procedure answers a user message with its wParam and writes its number down.
  std::string log;

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NCCREATE)
      SetWindowLongPtrW(window, GWLP_USERDATA,
                        reinterpret_cast<LONG_PTR>(
                            reinterpret_cast<const CREATESTRUCTW*>(lparam)->lpCreateParams));
    auto* const self = reinterpret_cast<TestWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self != nullptr && message == WM_NCDESTROY) self->window_ = nullptr;
    if (self == nullptr || message < WM_USER)
      return DefWindowProcW(window, message, wparam, lparam);
    self->log += "w" + std::to_string(message - WM_USER) + " ";
    return static_cast<LRESULT>(wparam);
  }

  HWND window_ = nullptr;
};

}  // namespace kestrelon
