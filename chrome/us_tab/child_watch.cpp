#include "chrome/us_tab/child_watch.h"

#include <algorithm>
#include <vector>

#include "frame/input_state.h"

namespace kestrelon {
namespace {

// One set of hooks a thread, for as long as a window of it is watched.
struct ThreadWatch {
  std::vector<HWND> windows;
  HHOOK focus = nullptr;
  HHOOK keys = nullptr;
};

thread_local ThreadWatch* thread_watch = nullptr;

// The watched window that holds another, the innermost of them; null without one.
HWND holder_of(HWND window) {
  HWND out = nullptr;
  for (const HWND each : thread_watch->windows)
    if (IsChild(each, window) && (out == nullptr || IsChild(out, each))) out = each;
  return out;
}

LRESULT CALLBACK focus_hook(int code, WPARAM wparam, LPARAM lparam) {
  if (code == HCBT_SETFOCUS && thread_watch != nullptr)
    for (const HWND each : thread_watch->windows)
      if (IsChild(each, reinterpret_cast<HWND>(wparam)))
        PostMessageW(each, ChildWatch::focus_message(), wparam, 0);
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

bool is_page_key(const MSG& message) {
  const bool key =
      message.wParam == VK_TAB || message.wParam == VK_PRIOR || message.wParam == VK_NEXT;
  return message.message == WM_KEYDOWN && key &&
         (shift_state() & (kControlKey | kAltKey)) == kControlKey;
}

LRESULT CALLBACK key_hook(int code, WPARAM wparam, LPARAM lparam) {
  if (code == HC_ACTION && wparam == PM_REMOVE && thread_watch != nullptr) {
    auto& message = *reinterpret_cast<MSG*>(lparam);
    if (is_page_key(message)) {
      if (const HWND holder = holder_of(message.hwnd)) {
        PostMessageW(holder, ChildWatch::key_message(), message.wParam, shift_state());
        message.message = WM_NULL;
      }
    }
  }
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

}  // namespace

UINT ChildWatch::focus_message() {
  static const UINT message = RegisterWindowMessageW(L"Kestrelon2012.ChildFocus");
  return message;
}

UINT ChildWatch::key_message() {
  static const UINT message = RegisterWindowMessageW(L"Kestrelon2012.ChildKey");
  return message;
}

void ChildWatch::start(HWND window) {
  if (window == window_) return;
  stop();
  if (window == nullptr) return;
  if (thread_watch == nullptr) {
    thread_watch = new ThreadWatch;
    const DWORD thread = GetCurrentThreadId();
    thread_watch->focus = SetWindowsHookExW(WH_CBT, focus_hook, nullptr, thread);
    thread_watch->keys = SetWindowsHookExW(WH_GETMESSAGE, key_hook, nullptr, thread);
  }
  thread_watch->windows.push_back(window);
  window_ = window;
}

void ChildWatch::stop() {
  if (window_ == nullptr || thread_watch == nullptr) return;
  std::erase(thread_watch->windows, window_);
  window_ = nullptr;
  if (!thread_watch->windows.empty()) return;
  UnhookWindowsHookEx(thread_watch->focus);
  UnhookWindowsHookEx(thread_watch->keys);
  delete thread_watch;
  thread_watch = nullptr;
}

}  // namespace kestrelon
