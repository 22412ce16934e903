// The button of a window in the task bar. Each call answers the system's code, or 0 where the
// system has no such task bar.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

namespace kestrelon::task_bar {

long set_state(long window, long flags);
/// `percent` of 100.
long set_value(long window, long percent);
long set_overlay(long window, long icon, const std::wstring& description);
long set_clip(long window, RECT clip);
long set_tip(long window, const std::wstring& tip);
/// 1 to 7 buttons; `icons` is an array of icon handles. Works once a window.
long add_buttons(long window, long buttons, const VARIANT& icons);

}  // namespace kestrelon::task_bar
