#include "frame/task_bar.h"

#include <shobjidl.h>

#include <algorithm>
#include <array>
#include <span>

#include "base/com_win.h"
#include "frame/platform.h"

namespace kestrelon::task_bar {
namespace {

HWND window_of(long window) {
  return reinterpret_cast<HWND>(static_cast<LONG_PTR>(window));
}
HICON icon_of(long icon) {
  return reinterpret_cast<HICON>(static_cast<LONG_PTR>(icon));
}

template <class Call>
long with_bar(Call&& call) {
  if (IsBeforeWindows7()) return 0;
  ComPtr<ITaskbarList3> bar;
  if (FAILED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER,
                              __uuidof(ITaskbarList3), bar.put_void())) ||
      FAILED(bar->HrInit()))
    return 0;
  return call(*bar.get());
}

constexpr long kMostButtons = 7;

/// The icon handles in an array of Longs; false for anything else or too few of them.
bool read_icons(const VARIANT& icons, std::span<THUMBBUTTON> buttons) {
  Variant plain;
  if (FAILED(VariantCopyInd(&plain, const_cast<VARIANT*>(&icons)))) return false;
  if ((V_VT(&plain) & VT_ARRAY) == 0 || SafeArrayGetDim(V_ARRAY(&plain)) != 1) return false;
  LONG index = 0;
  SafeArrayGetLBound(V_ARRAY(&plain), 1, &index);
  for (size_t i = 0; i < buttons.size(); ++i, ++index) {
    Variant entry;
    void* const place = V_VT(&plain) == (VT_ARRAY | VT_VARIANT) ? static_cast<void*>(&entry)
                                                                : static_cast<void*>(&V_I4(&entry));
    if (FAILED(SafeArrayGetElement(V_ARRAY(&plain), &index, place))) return false;
    if (V_VT(&plain) != (VT_ARRAY | VT_VARIANT)) V_VT(&entry) = VT_I4;
    if (!entry.change(VT_I4)) return false;
    buttons[i].dwMask = THB_ICON;
    buttons[i].iId = static_cast<UINT>(i);
    buttons[i].hIcon = icon_of(V_I4(&entry));
  }
  return true;
}

}  // namespace

long set_state(long window, long flags) {
  return with_bar([&](ITaskbarList3& bar) {
    return bar.SetProgressState(window_of(window), static_cast<TBPFLAG>(flags));
  });
}

long set_value(long window, long percent) {
  return with_bar([&](ITaskbarList3& bar) {
    return bar.SetProgressValue(window_of(window),
                                static_cast<ULONGLONG>(std::clamp(percent, 0L, 100L)), 100);
  });
}

long set_overlay(long window, long icon, const std::wstring& description) {
  return with_bar([&](ITaskbarList3& bar) {
    return bar.SetOverlayIcon(window_of(window), icon_of(icon), description.c_str());
  });
}

long set_clip(long window, RECT clip) {
  return with_bar(
      [&](ITaskbarList3& bar) { return bar.SetThumbnailClip(window_of(window), &clip); });
}

long set_tip(long window, const std::wstring& tip) {
  return with_bar(
      [&](ITaskbarList3& bar) { return bar.SetThumbnailTooltip(window_of(window), tip.c_str()); });
}

long add_buttons(long window, long buttons, const VARIANT& icons) {
  if (buttons < 1 || buttons > kMostButtons) return 0;
  std::array<THUMBBUTTON, kMostButtons> list{};
  const auto used = std::span(list).first(static_cast<size_t>(buttons));
  const VARTYPE type = V_VT(&icons);
  if ((type & VT_ARRAY) == 0 && type != (VT_BYREF | VT_VARIANT)) return 0;
  if (!read_icons(icons, used)) return 0;
  return with_bar([&](ITaskbarList3& bar) {
    return bar.ThumbBarAddButtons(window_of(window), static_cast<UINT>(buttons), list.data());
  });
}

}  // namespace kestrelon::task_bar
