// Himetric (hundredths of a millimetre) and pixels of the screen.
#pragma once

#include <windows.h>

namespace kestrelon {

struct ScreenResolution {
  int x, y;  // pixels per inch
};

inline ScreenResolution screen_resolution() {
  static const ScreenResolution resolution = [] {
    const HDC screen = GetDC(nullptr);
    const ScreenResolution out{GetDeviceCaps(screen, LOGPIXELSX),
                               GetDeviceCaps(screen, LOGPIXELSY)};
    ReleaseDC(nullptr, screen);
    return out;
  }();
  return resolution;
}

inline constexpr int kHimetricPerInch = 2540;

inline SIZEL to_himetric(int width, int height) {
  const auto [x, y] = screen_resolution();
  return {MulDiv(width, kHimetricPerInch, x), MulDiv(height, kHimetricPerInch, y)};
}

inline SIZE to_pixels(const SIZEL& size) {
  const auto [x, y] = screen_resolution();
  return {MulDiv(size.cx, x, kHimetricPerInch), MulDiv(size.cy, y, kHimetricPerInch)};
}

}  // namespace kestrelon
