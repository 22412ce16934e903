// Pictures of the strips' buttons and tabs.
#pragma once

#include <ocidl.h>

#include "base/com_win.h"
#include "frame/surface.h"

namespace kestrelon {

/// How a picture of a strip is drawn.
struct StripPicture {
  IPictureDisp* picture = nullptr;  ///< a bitmap or an icon
  PixelRect place;                  ///< a square
  bool use_mask_color = false;      ///< of bitmaps only
  OLE_COLOR mask_color = 0;
  bool dim = false;
};

void paint_picture(Surface& surface, const StripPicture& what);

}  // namespace kestrelon
