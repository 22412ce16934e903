// Lengths of the form model: pixels of the screen, twips, the scale modes, himetric.
#pragma once

#include <windows.h>

namespace kestrelon::host {

/// The numbers are those of the form model's ScaleMode property.
enum class ScaleMode : long {
  kUser = 0,
  kTwip = 1,
  kPoint = 2,
  kPixel = 3,
  kCharacter = 4,
  kInch = 5,
  kMillimetre = 6,
  kCentimetre = 7,
};

enum class Axis { kX, kY };

/// Pixels an inch of the screen.
int screen_dpi(Axis axis);

double twips_per_pixel(Axis axis);
/// Twips in one unit of `mode`. kUser counts as twips: a form without a scale of its own.
double twips_per_unit(ScaleMode mode, Axis axis);

/// To whole pixels, to the nearest; lengths beyond 32 bits are held at its ends.
int to_pixels(double length, ScaleMode mode, Axis axis);
double from_pixels(double pixels, ScaleMode mode, Axis axis);

int himetric_to_pixels(long himetric, Axis axis);
long pixels_to_himetric(int pixels, Axis axis);

inline int width_of(const RECT& r) {
  return r.right - r.left;
}
inline int height_of(const RECT& r) {
  return r.bottom - r.top;
}
inline RECT make_rect(int left, int top, int width, int height) {
  return {left, top, left + width, top + height};
}

}  // namespace kestrelon::host
