// Text on images.
#pragma once

#include <windows.h>

#include <olectl.h>

#include <string_view>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// How and where a text stands.
struct TextPlacement {
  ImageRect area;         ///< on the image; a width or height of 0 reaches to the image's edge
  COLORREF color = 0;     ///< 0x00BBGGRR
  int32_t opacity = 100;  ///< percent, 0 to 100
  UINT format = DT_LEFT | DT_TOP | DT_WORDBREAK | DT_NOPREFIX;  ///< the DT_ flags of DrawText
};

/// Blends the text onto the image in smooth letters; colours stay at or below their alpha. False
/// without an image or a font; a text outside the image draws nothing and answers true.
bool draw_text(c32bppDIB& image, std::wstring_view text, HFONT font,
               const TextPlacement& placement);
/// The same with a font object.
bool draw_text(c32bppDIB& image, std::wstring_view text, IFont* font,
               const TextPlacement& placement);

}  // namespace kestrelon
