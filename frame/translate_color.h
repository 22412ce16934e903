// OLE colours as plain ones.
#pragma once

#include <windows.h>

#include <olectl.h>

namespace kestrelon {

/// The colour as 0x00BBGGRR, system colours resolved; 0 for a value that names no colour.
inline COLORREF TranslateColor(OLE_COLOR colour) {
  COLORREF out = 0;
  if (FAILED(OleTranslateColor(colour, nullptr, &out))) return 0;
  return out & 0x00FFFFFF;
}

}  // namespace kestrelon
