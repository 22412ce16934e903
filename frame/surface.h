// A control's persistent picture: what is drawn stays until it is drawn over.
#pragma once

#include "frame/dib_section.h"
#include "frame/kit/lines.h"

namespace kestrelon {

class Surface {
 public:
  /// Makes the surface `width` by `height` pixels. The same size keeps it as it is; sizes below 1
  /// release it. False when there is no surface afterwards.
  bool resize(int width, int height) {
    if (picture_ && width == picture_.width() && height == picture_.height()) return true;
    if (!picture_.create(width, height)) return false;
    SetBkMode(dc(), TRANSPARENT);
    SelectObject(dc(), GetStockObject(NULL_BRUSH));
    return true;
  }

  explicit operator bool() const { return static_cast<bool>(picture_); }
  HDC dc() const { return picture_.dc(); }
  int width() const { return picture_.width(); }
  int height() const { return picture_.height(); }
  PixelView pixels() const { return picture_.pixels(); }
  /// Fills everything with one colour (0x00BBGGRR).
  void clear(ColorRef colour) {
    const PixelView view = pixels();
    fill_rect(view, view.bounds(), colour);
  }

 private:
  DibSection picture_;
};

}  // namespace kestrelon
