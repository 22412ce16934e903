// How a picture control looks, as a value, and the painter of it.
#pragma once

#include <memory>
#include <optional>

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

/// Draws one look after another. While only the opacity changes, as in a fade, the picture is not
/// scaled and turned again each time: from the second drawing on it is blended from layers.
class PicturePainter {
 public:
  /// As picture_on_nothing(); the version in the look tells one picture from another.
  bool draw(const PictureLook& look, const c32bppDIB& picture, const c32bppDIB* shadow,
            c32bppDIB& canvas);
  /// Gives the layers' memory back.
  void release();

 private:
  bool make_layers(const c32bppDIB& picture, const c32bppDIB* shadow);

  std::optional<PictureLook> last_;  // what was drawn last, in full opacity
  std::unique_ptr<c32bppDIB> picture_, shadow_;
};

}  // namespace kestrelon
