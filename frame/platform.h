// Questions to the running system and small window services that depend on the answers.
#pragma once

#include <windows.h>

#include <oaidl.h>

namespace kestrelon {

/// Whether the system is of the NT family. The first call asks, the answer is kept.
bool IsNtPlatform();
/// Whether it is older than 6.1; answered by the same one question.
bool IsBeforeWindows7();

/// Whether a library exports a function. A library that is not loaded is loaded for the question
/// and freed again. Both texts are in the ANSI code page; a null or unknown one answers false.
bool IsFunctionExported(const char* name, const char* library);

/// Asks for one WM_MOUSELEAVE when the pointer leaves the window. Does nothing on a system that
/// cannot tell.
void TrackMouseLeave(HWND window);

/// The window behind an object's late-bound property "hWnd"; null when it has none.
HWND WindowOfObject(IDispatch* object);

/// Makes the window that an object names by its late-bound property "hWnd" as opaque as alpha says,
/// 255 being fully so. The window's extended style becomes WS_EX_LAYERED alone. On an object
/// without such a window nothing happens.
void SetWindowOpacity(IDispatch* form, BYTE alpha);

}  // namespace kestrelon
