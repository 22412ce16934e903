#include "host/units.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace kestrelon::host {
namespace {

constexpr double kTwipsPerInch = 1440.0;
constexpr int kHimetricPerInch = 2540;

}  // namespace

int screen_dpi(Axis axis) {
  HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, axis == Axis::kX ? LOGPIXELSX : LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return dpi > 0 ? dpi : 96;
}

double twips_per_pixel(Axis axis) {
  return kTwipsPerInch / screen_dpi(axis);
}

double twips_per_unit(ScaleMode mode, Axis axis) {
  switch (mode) {
    case ScaleMode::kPoint:
      return 20.0;
    case ScaleMode::kPixel:
      return twips_per_pixel(axis);
    case ScaleMode::kCharacter:
      return axis == Axis::kX ? 120.0 : 240.0;
    case ScaleMode::kInch:
      return kTwipsPerInch;
    case ScaleMode::kMillimetre:
      return kTwipsPerInch / 25.4;
    case ScaleMode::kCentimetre:
      return kTwipsPerInch / 2.54;
    case ScaleMode::kUser:
    case ScaleMode::kTwip:
      break;
  }
  return 1.0;
}

int to_pixels(double length, ScaleMode mode, Axis axis) {
  const double pixels = length * twips_per_unit(mode, axis) / twips_per_pixel(axis);
  if (std::isnan(pixels)) return 0;
  return static_cast<int>(std::nearbyint(std::clamp<double>(pixels, INT_MIN / 2.0, INT_MAX / 2.0)));
}

double from_pixels(double pixels, ScaleMode mode, Axis axis) {
  return pixels * twips_per_pixel(axis) / twips_per_unit(mode, axis);
}

int himetric_to_pixels(long himetric, Axis axis) {
  return MulDiv(himetric, screen_dpi(axis), kHimetricPerInch);
}
long pixels_to_himetric(int pixels, Axis axis) {
  return MulDiv(pixels, kHimetricPerInch, screen_dpi(axis));
}

}  // namespace kestrelon::host
