// The face and frame of a USButton on pixels: functions of size, look and state.
#pragma once

#include <array>

#include "frame/kit/color.h"

namespace kestrelon {

/// The nine colours that follow from the button's own, by the index under which they are known.
using DerivedColors = std::array<ColorRef, 9>;
enum DerivedColor : size_t {
  kDerivedBack = 0,
  kDerivedBackDarker = 1,
  kDerivedFore = 3,
  kDerivedMask = 7,
  kDerivedValueEnd = 8,
};
/// All arguments are translated colours.
DerivedColors derive_colors(ColorRef back, ColorRef fore, ColorRef mask);

using FaceStops = std::array<ColorRef, 4>;

/// Fills the face with two colours over its height, or with four in two bands.
void paint_face(const PixelView& view, const FaceStops& stops, bool four_colors);
/// The face of a button whose value is true, at rest or under the pointer.
void paint_value_face(const PixelView& view, const DerivedColors& colors);

/// The frame, and the pixels that close its round corners on the sides that have them.
/// `shape` is a value of `ENUM_BUTTON_SHAPES`.
void paint_frame(const PixelView& view, ColorRef border, int shape);

/// A picture drawn on the face. Pixels of the key colour, if there is one, let the face through;
/// the others are mixed with it by `opacity`, 0 to 1.
struct PictureMix {
  bool has_key = false;
  ColorRef key = 0;
  double opacity = 1;
};
void mix_picture(const PixelView& view, int x, int y, const PixelView& picture,
                 const PictureMix& mix);

}  // namespace kestrelon
