// Text through GDI, in the language's own characters wherever the system can.
#pragma once

#include <windows.h>

#include <string_view>

namespace kestrelon {

/// Draws or, with DT_CALCRECT, measures `length` characters of a text (-1 for all of it) by the
/// rules of `DrawText`, with the font and colours of the device context. Returns the height; 0 for
/// an empty text, which is neither drawn nor measured. The text is never modified: DT_MODIFYSTRING
/// is left out.
int DrawTextUnicode(HDC dc, std::wstring_view text, int length, RECT* rect, UINT flags);

}  // namespace kestrelon
