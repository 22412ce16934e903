#include "controls/us_flex_grid/bound_watch.h"

#include <algorithm>
#include <vector>

#include "controls/us_flex_grid/bound_editor.h"
#include "frame/popup/popup_watch.h"

namespace kestrelon {
namespace {

struct Watched {
  HWND grid;
  HWND window;
  BoundEditorOwner* owner;
};

struct Watches {
  std::vector<Watched> list;
  HHOOK keys = nullptr;
  HHOOK calls = nullptr;
};
thread_local Watches watches;

const Watched* watched_by(HWND window) {
  for (const Watched& watched : watches.list)
    if (window == watched.window || IsChild(watched.window, window)) return &watched;
  return nullptr;
}

// An open list or another popup has its own use for Enter and Escape.
bool keeps_for_itself(HWND window, WPARAM key) {
  if (key == VK_TAB) return false;
  if (PopupWatch::current() != nullptr) return true;
  return SendMessageW(window, CB_GETDROPPEDSTATE, 0, 0) != 0 ||
         SendMessageW(GetParent(window), CB_GETDROPPEDSTATE, 0, 0) != 0;
}

bool ends_edit(const MSG& message) {
  if (message.message != WM_KEYDOWN || GetKeyState(VK_MENU) < 0) return false;
  switch (message.wParam) {
    case VK_TAB:
      return GetKeyState(VK_CONTROL) >= 0;
    case VK_RETURN:
    case VK_ESCAPE:
      return !keeps_for_itself(message.hwnd, message.wParam);
    default:
      return false;
  }
}

LRESULT CALLBACK key_hook(int code, WPARAM wparam, LPARAM lparam) {
  auto* const message = reinterpret_cast<MSG*>(lparam);
  if (code == HC_ACTION && wparam == PM_REMOVE && !watches.list.empty()) {
    const Watched* const watched = watched_by(message->hwnd);
    if (watched != nullptr && ends_edit(*message)) {
      PostMessageW(watched->grid, watched->owner->bound_key_message(), message->wParam,
                   GetKeyState(VK_SHIFT) < 0 ? 1 : 0);
      message->message = WM_NULL;
    }
  }
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

void seen(const CWPRETSTRUCT& call) {
  const Watched* const found = watched_by(call.hwnd);
  if (found == nullptr) return;
  const Watched watched = *found;  // what follows may stop the watch
  const HWND to = reinterpret_cast<HWND>(call.wParam);
  const bool leaves =
      call.message == WM_KILLFOCUS && to != watched.window && !IsChild(watched.window, to);
  if (leaves) return watched.owner->bound_left(to);
  if (call.message == WM_DESTROY && call.hwnd == watched.window) watched.owner->bound_gone();
}

LRESULT CALLBACK call_hook(int code, WPARAM wparam, LPARAM lparam) {
  if (code == HC_ACTION && !watches.list.empty()) {
    const auto& call = *reinterpret_cast<const CWPRETSTRUCT*>(lparam);
    if (call.message == WM_KILLFOCUS || call.message == WM_DESTROY) seen(call);
  }
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

}  // namespace

void BoundWatch::start(HWND grid, HWND window, BoundEditorOwner& owner) {
  stop(window);
  if (watches.list.empty()) {
    const DWORD thread = GetCurrentThreadId();
    watches.keys = SetWindowsHookExW(WH_GETMESSAGE, key_hook, nullptr, thread);
    watches.calls = SetWindowsHookExW(WH_CALLWNDPROCRET, call_hook, nullptr, thread);
  }
  watches.list.push_back({grid, window, &owner});
}

void BoundWatch::stop(HWND window) {
  const auto gone =
      std::erase_if(watches.list, [=](const Watched& each) { return each.window == window; });
  if (gone == 0 || !watches.list.empty()) return;
  for (HHOOK* const hook : {&watches.keys, &watches.calls}) {
    if (*hook != nullptr) UnhookWindowsHookEx(*hook);
    *hook = nullptr;
  }
}

}  // namespace kestrelon
