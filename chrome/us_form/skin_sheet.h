// The pictures of one theme at one scale, loaded from the library's resources.
#pragma once

#include <windows.h>

#include "chrome/us_form/skin_layout.h"
#include "frame/dib_section.h"

namespace kestrelon {

class SkinSheet {
 public:
  /// Loads the sheet unless it is there already. A theme without pictures leaves it empty.
  void load(long theme, Scale scale);
  explicit operator bool() const { return static_cast<bool>(pixels_); }

  /// A part of the sheet, enlarged where the scale lies between two sheets.
  void draw(const PixelView& target, const PixelRect& area, const PixelRect& from) const;
  /// The same on a device context.
  void draw(HDC target, const RECT& area, const PixelRect& from) const;

 private:
  DibSection pixels_;
  long theme_ = -1;
  int percent_ = 0;
};

}  // namespace kestrelon
