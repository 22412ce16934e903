// The enumerations of the image engine, with the values the public interface gives them.
#pragma once

#include <cstdint>

namespace kestrelon {

/// What the pixels of an image came from (`ENUM_IMAGE_FORMAT`); not how they are stored.
enum class ImageFormat : int32_t {
  Error = -1,
  None = 0,
  Bitmap = 1,
  Wmf = 2,
  Icon = 3,
  Emf = 4,
  Cursor = 5,
  BitmapArgb = 6,
  BitmapPargb = 7,
  IconArgb = 8,
  Gif = 9,
  Png = 10,
  PngIcon = 11,
  CursorArgb = 12,
  CheckerBoard = 64,
  Tga = 128,
};

/// `ENUM_ALPHA_TYPE`: a hint for writers and for drawing; readers may understate it for palette
/// PNGs.
enum class AlphaType : int32_t {
  None = 0,     ///< every pixel opaque
  Simple = 1,   ///< only alphas 0 and 255
  Complex = 2,  ///< some alpha between
};

}  // namespace kestrelon
