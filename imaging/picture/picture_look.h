// How a picture control looks, as a value, and the painter of it.
#pragma once

#include "imaging/c32bpp_dib.h"
#include "imaging/picture/picture_layout.h"

namespace kestrelon {

/// The shadow behind a picture. It shares the picture's size, angle, mirroring and opacity.
struct ShadowLook {
  bool shown = false;
  int32_t color = 0;      ///< 0x00BBGGRR
  int32_t depth = 0;      ///< 0 to 10, in pixels of the picture
  int32_t opacity = 100;  ///< percent
  int32_t x = 0, y = 0;   ///< pixels from the place right behind the picture
  bool operator==(const ShadowLook&) const = default;
};

/// All that decides what a picture control shows; two equal looks show the same pixels.
struct PictureLook {
  uint32_t version = 0;  ///< of the picture's pixels
  PictureSize room;      ///< of the control
  PictureSize drawn;     ///< of the picture, before it is turned
  int32_t x = 0, y = 0;  ///< how far the picture's centre is from the room's
  bool mirror_x = false, mirror_y = false;
  int32_t degrees = 0;  ///< clockwise
  int32_t opacity = 100;
  GrayScale gray = GrayScale::None;
  float light = 0;  ///< percent, -100 to 100
  bool smooth = true;
  ShadowLook shadow;
  bool operator==(const PictureLook&) const = default;

  /// The same shape, fully visible and alone: what hit tests are made of.
  PictureLook shape() const;
};

/// Draws a picture and its shadow over `canvas`, which has the size of the room. `shadow` is what
/// CreateDropShadow made of the picture, null without one.
void draw_picture(const PictureLook& look, const c32bppDIB& picture, const c32bppDIB* shadow,
                  c32bppDIB& canvas);

/// Makes `canvas` the room with the picture in it on nothing. False without memory or room; where
/// there is no picture the canvas stays empty.
bool picture_on_nothing(const PictureLook& look, const c32bppDIB& picture, const c32bppDIB* shadow,
                        c32bppDIB& canvas);

}  // namespace kestrelon
