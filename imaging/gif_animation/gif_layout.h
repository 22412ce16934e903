// Where the canvas of an animation lies in its control, and its drawing there.
#pragma once

#include <cstdint>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// `ENUM_SCALE_GIF_CONSTANTS`. A number that names no rule leaves the size as it is.
enum class GifScale : int32_t {
  Clip = 0,         ///< the canvas' own size, cut off at the edges
  Always = 1,       ///< as large as fits, ratio kept
  Stretch = 2,      ///< the size of the control
  ShrinkToFit = 3,  ///< as Always, but never enlarged
  ActualSize = 4    ///< the canvas' own size
};

/// A size in pixels.
struct GifSize {
  int32_t width = 0, height = 0;
  bool operator==(const GifSize&) const = default;
};

/// The drawn size of `canvas` in a control of `width` by `height` pixels; nothing without an image.
GifSize scaled_size(const c32bppDIB& canvas, GifScale rule, int32_t width, int32_t height);

/// What a drawing depends on besides the canvas.
struct GifLook {
  ImageRect place;  ///< of the whole canvas in the control
  bool mirror_x = false, mirror_y = false;
  uint32_t background = 0;  ///< premultiplied 0xAARRGGBB behind and beside the canvas
  bool outlined = false;    ///< dashes along the edges, for a designer to see an empty control
  bool operator==(const GifLook&) const = default;
};

/// Fills `target` with the background and draws the outline, then the canvas over it.
void draw_canvas(const c32bppDIB& canvas, const GifLook& look, const MutableImageView& target);

}  // namespace kestrelon
