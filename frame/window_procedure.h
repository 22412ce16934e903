// Taking a window's procedure over and giving it back, without harm to others who do the same.
#pragma once

#include <windows.h>

namespace kestrelon {

/// The procedure in the window's own character width. The calls below keep to that width: an ANSI
/// procedure on a wide window would narrow its texts.
WNDPROC window_procedure(HWND window);

/// Puts a procedure in place; the answer is the one before, null on failure.
WNDPROC replace_procedure(HWND window, WNDPROC next);

LRESULT call_procedure(WNDPROC procedure, HWND window, UINT message, WPARAM wparam, LPARAM lparam);

/// Gives the window its former procedure back if `ours` is still the outermost. Otherwise
/// somebody's procedure calls ours, which then has to stay and pass everything on while the window
/// lives: the answer is false, and the module is never unloaded.
bool withdraw_procedure(HWND window, WNDPROC ours, WNDPROC former);

}  // namespace kestrelon
