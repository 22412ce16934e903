// What the screen and its user ask of drawing: scale and high contrast.
#pragma once

#include <windows.h>

#include "frame/kit/scale.h"

namespace kestrelon {

/// The scale of the monitor that a window is drawn for, as its process sees it; that of the system
/// for null and where the system knows no other.
Scale window_scale(HWND window);
Scale system_scale();

/// The part of the monitor nearest to a rectangle of the screen that the task bar leaves free.
RECT work_area(const RECT& near_to);

/// Whether the user asks for high contrast: colours are then the system's and no property counts.
/// Kept until screen_settings_changed().
bool high_contrast();
/// To be called at WM_SETTINGCHANGE, WM_SYSCOLORCHANGE and WM_THEMECHANGED.
void screen_settings_changed();
/// Whether the user wants windows to move and fade.
bool animations_wanted();

}  // namespace kestrelon
