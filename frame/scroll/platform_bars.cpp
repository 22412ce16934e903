#include "frame/scroll/platform_bars.h"

#include <windows.h>
//
#include <commctrl.h>

namespace kestrelon {
namespace {

// Newer control libraries keep the names without the function, and no import library has them all.
struct FlatEngine {
  BOOL(WINAPI* initialize)(HWND) = nullptr;
  HRESULT(WINAPI* uninitialize)(HWND) = nullptr;
  BOOL(WINAPI* set_prop)(HWND, UINT, INT_PTR, BOOL) = nullptr;
  BOOL(WINAPI* get_info)(HWND, int, LPSCROLLINFO) = nullptr;
  int(WINAPI* set_info)(HWND, int, LPSCROLLINFO, BOOL) = nullptr;
  BOOL(WINAPI* show)(HWND, int, BOOL) = nullptr;
  BOOL(WINAPI* enable)(HWND, int, UINT) = nullptr;
  bool complete = false;

  FlatEngine() {
    // Never freed: a window under its control holds on to it.
    const HMODULE library = LoadLibraryW(L"comctl32.dll");
    if (library == nullptr) return;
    complete = find(library, "InitializeFlatSB", initialize) &&
               find(library, "UninitializeFlatSB", uninitialize) &&
               find(library, "FlatSB_SetScrollProp", set_prop) &&
               find(library, "FlatSB_GetScrollInfo", get_info) &&
               find(library, "FlatSB_SetScrollInfo", set_info) &&
               find(library, "FlatSB_ShowScrollBar", show) &&
               find(library, "FlatSB_EnableScrollBar", enable);
  }

 private:
  template <class Function>
  static bool find(HMODULE library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    return function != nullptr;
  }
};

const FlatEngine& engine() {
  static const FlatEngine instance;
  return instance;
}

}  // namespace

bool PlatformBars::make_flat(int mode) {
  if (window_ == nullptr || !engine().complete) return false;
  if (!flat_) flat_ = engine().initialize(window_) != FALSE;
  if (!flat_) return false;
  engine().set_prop(window_, WSB_PROP_HSTYLE, mode, TRUE);
  engine().set_prop(window_, WSB_PROP_VSTYLE, mode, TRUE);
  return true;
}

void PlatformBars::make_plain() {
  if (flat_ && IsWindow(window_)) engine().uninitialize(window_);
  flat_ = false;
}

bool PlatformBars::get_info(int bar, SCROLLINFO& info) const {
  return (flat_ ? engine().get_info(window_, bar, &info) : GetScrollInfo(window_, bar, &info)) != 0;
}

void PlatformBars::set_info(int bar, const SCROLLINFO& info, bool redraw) const {
  SCROLLINFO copy = info;
  if (flat_)
    engine().set_info(window_, bar, &copy, redraw);
  else
    SetScrollInfo(window_, bar, &copy, redraw);
}

void PlatformBars::show(int bar, bool shown) const {
  if (flat_)
    engine().show(window_, bar, shown);
  else
    ShowScrollBar(window_, bar, shown);
}

void PlatformBars::enable(int bar, bool enabled) const {
  const UINT arrows = enabled ? ESB_ENABLE_BOTH : ESB_DISABLE_BOTH;
  if (flat_)
    engine().enable(window_, bar, arrows);
  else
    EnableScrollBar(window_, static_cast<UINT>(bar), arrows);
}

}  // namespace kestrelon
