// Mouse buttons and modifier keys as events give them.
#pragma once

#include <windows.h>

namespace kestrelon {

inline constexpr short kLeftButton = 1, kRightButton = 2, kMiddleButton = 4;
inline constexpr short kShiftKey = 1, kControlKey = 2, kAltKey = 4;

/// The modifier keys that are down, as of the message being handled.
inline short shift_state() {
  short out = 0;
  if (GetKeyState(VK_SHIFT) < 0) out |= kShiftKey;
  if (GetKeyState(VK_CONTROL) < 0) out |= kControlKey;
  if (GetKeyState(VK_MENU) < 0) out |= kAltKey;
  return out;
}

/// The buttons in the MK_ bits of a mouse message.
inline short buttons_held(WPARAM keys) {
  short out = 0;
  if (keys & MK_LBUTTON) out |= kLeftButton;
  if (keys & MK_RBUTTON) out |= kRightButton;
  if (keys & MK_MBUTTON) out |= kMiddleButton;
  return out;
}

/// The button that a press, release or double click is about.
inline short button_of(UINT message) {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
      return kLeftButton;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_RBUTTONDBLCLK:
      return kRightButton;
    default:
      return kMiddleButton;
  }
}

}  // namespace kestrelon
