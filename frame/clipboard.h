// Texts on the system's clipboard.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace kestrelon {

/// The text on the clipboard; empty without one, or while another program holds it.
std::wstring clipboard_text(HWND owner);

/// False while another program holds the clipboard.
bool put_clipboard_text(HWND owner, std::wstring_view text);

}  // namespace kestrelon
