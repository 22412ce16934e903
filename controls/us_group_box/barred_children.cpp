#include "controls/us_group_box/barred_children.h"

#include <algorithm>
#include <utility>

namespace kestrelon {

void BarredChildren::bar(HWND parent) {
  barred_ = true;
  for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    if (std::ranges::find(windows_, child) != windows_.end()) continue;
    if (listener_.sc_Subclass(child, 0, 1, this)) listener_.sc_AddMsg(child, WM_ENABLE, MSG_AFTER);
    if (!IsWindowEnabled(child)) continue;
    windows_.push_back(child);
    EnableWindow(child, FALSE);
  }
}

void BarredChildren::release() {
  barred_ = false;
  listener_.sc_Terminate();
  const std::vector<HWND> windows = std::exchange(windows_, {});
  for (const HWND window : windows)
    if (IsWindow(window) && wanted_(window)) EnableWindow(window, TRUE);
}

void BarredChildren::WindowProcHook(bool, bool&, LRESULT&, HWND window, UINT message, WPARAM wparam,
                                    LPARAM, LPARAM) {
  if (message != WM_ENABLE || wparam == FALSE || !barred_) return;
  if (std::ranges::find(windows_, window) == windows_.end()) windows_.push_back(window);
  EnableWindow(window, FALSE);
}

}  // namespace kestrelon
