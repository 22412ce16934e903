#include "host/input.h"

#include "host/form.h"
#include "host/message_loop.h"

namespace kestrelon::host {
namespace {

// Input travels through the window server; this long at most until it is in our queue.
constexpr DWORD kArrival = 200;
// The leave notice is polled by the system.
constexpr DWORD kLeave = 80;

struct ButtonFlags {
  DWORD down;
  DWORD up;
};
ButtonFlags flags_of(MouseButton button) {
  switch (button) {
    case MouseButton::kRight:
      return {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP};
    case MouseButton::kMiddle:
      return {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP};
    case MouseButton::kLeft:
      break;
  }
  return {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP};
}

// Sends one input and handles messages until none waits any more; one more round takes in what the
// handling itself brought up.
void send(INPUT input) {
  SendInput(1, &input, sizeof input);
  bool seen = false;
  pump_until(
      [&] {
        if (seen) return true;
        seen = !GetInputState();
        return false;
      },
      kArrival);
}

void send_mouse(DWORD flags, DWORD data = 0) {
  INPUT input = {};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  input.mi.mouseData = data;
  send(input);
}

void send_key(WORD key, DWORD flags) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = flags;
  send(input);
}

void send_character(wchar_t character) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wScan = static_cast<WORD>(character);
  input.ki.dwFlags = KEYEVENTF_UNICODE;
  send(input);
  input.ki.dwFlags |= KEYEVENTF_KEYUP;
  send(input);
}

}  // namespace

void quicken_mouse_leave() {
  SystemParametersInfoW(SPI_SETMOUSEHOVERTIME, 10, nullptr, 0);
}

void bring_up(Form& form) {
  form.show();
  SetForegroundWindow(form.hwnd());
  pump_until([&] { return GetForegroundWindow() == form.hwnd(); }, 1000);
  pump_for(20);
}

void mouse_move(HWND window, int x, int y) {
  POINT at = {x, y};
  ClientToScreen(window, &at);
  const LONG width = GetSystemMetrics(SM_CXSCREEN);
  const LONG height = GetSystemMetrics(SM_CYSCREEN);
  INPUT input = {};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
  // To the middle of the pixel in the 65536 steps of the absolute scale.
  input.mi.dx = static_cast<LONG>((at.x * 65536LL + 32768) / width);
  input.mi.dy = static_cast<LONG>((at.y * 65536LL + 32768) / height);
  send(input);
}

void mouse_down(MouseButton button) {
  send_mouse(flags_of(button).down);
}
void mouse_up(MouseButton button) {
  send_mouse(flags_of(button).up);
}

void mouse_click(HWND window, int x, int y, MouseButton button) {
  part_clicks();
  mouse_move(window, x, y);
  mouse_down(button);
  mouse_up(button);
}

void mouse_double_click(HWND window, int x, int y, MouseButton button) {
  mouse_click(window, x, y, button);
  mouse_down(button);
  mouse_up(button);
}

void mouse_wheel(int delta) {
  send_mouse(MOUSEEVENTF_WHEEL, static_cast<DWORD>(delta));
}

void mouse_away() {
  SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
  pump_for(kLeave);
}

void part_clicks() {
  static ULONGLONG last = 0;
  const ULONGLONG gap = GetDoubleClickTime() + 20;
  const ULONGLONG now = GetTickCount64();
  if (last != 0 && now < last + gap) pump_for(static_cast<DWORD>(last + gap - now));
  last = GetTickCount64();
}

void key_down(WORD key) {
  send_key(key, 0);
}
void key_up(WORD key) {
  send_key(key, KEYEVENTF_KEYUP);
}
void key_press(WORD key) {
  key_down(key);
  key_up(key);
}
void key_chord(WORD modifier, WORD key) {
  key_down(modifier);
  key_press(key);
  key_up(modifier);
}

void type_text(std::wstring_view text) {
  for (wchar_t character : text) {
    const SHORT key = VkKeyScanW(character);
    if (key == -1 || HIBYTE(key) > 1) {
      send_character(character);
    } else if (HIBYTE(key) == 1) {
      key_chord(VK_SHIFT, LOBYTE(key));
    } else {
      key_press(LOBYTE(key));
    }
  }
}

}  // namespace kestrelon::host
