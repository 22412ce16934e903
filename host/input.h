// Real mouse and keyboard input for tests and for pictures of states: it goes through the system's
// input queue, so that capture, focus, hover and double clicks are the system's own.
#pragma once

#include <windows.h>

#include <string_view>

namespace kestrelon::host {

class ContainerWindow;
class Form;

enum class MouseButton { kLeft, kRight, kMiddle };

/// Makes the leave notice arrive within 40 ms instead of the 400 ms of a desktop. Once a process.
void quicken_mouse_leave();

/// Brings the form to the foreground and runs until its first paint and activation are done.
void bring_up(Form& form);

/// All of these run the message loop until the input has been handled.
/// Positions are client pixels of `window`.
void mouse_move(HWND window, int x, int y);
void mouse_down(MouseButton button = MouseButton::kLeft);
void mouse_up(MouseButton button = MouseButton::kLeft);
void mouse_click(HWND window, int x, int y, MouseButton button = MouseButton::kLeft);
void mouse_double_click(HWND window, int x, int y, MouseButton button = MouseButton::kLeft);
void mouse_wheel(int delta);
/// Takes the pointer to a corner of the screen where no window of ours is, and waits for the leave.
void mouse_away();
/// Lets the double click time pass, so that the next press begins a click of its own.
void part_clicks();

void key_down(WORD key);
void key_up(WORD key);
void key_press(WORD key);
/// Holds `modifier` (VK_SHIFT, VK_CONTROL, VK_MENU) around a press of `key`.
void key_chord(WORD modifier, WORD key);
/// Types letters and digits by their keys, anything else as a Unicode character.
void type_text(std::wstring_view text);

}  // namespace kestrelon::host
