// Argument bundles and enumerations of the image class.
#pragma once

#include <cstddef>
#include <cstdint>

#include "imaging/image_view.h"
#include "imaging/tones.h"

namespace kestrelon {

class c32bppDIB;

/// `ENUM_SCALE_OPTIONS`.
enum class ScaleOption : int32_t { ToSize = 0, DownAsNeeded = 1, Stretched = 2 };

/// `ENUM_TRIM_OPTIONS`; bits may be combined, All stands for all four.
enum TrimOption : int32_t {
  kTrimAll = 0,
  kTrimLeft = 1,
  kTrimTop = 2,
  kTrimRight = 4,
  kTrimBottom = 8
};

/// `ENUM_REGION_STYLES`.
enum class RegionStyle : int32_t { Bounds = 0, Enclosed = 1, Shaped = 2 };

/// Layout of pixels handed in or out as bytes.
struct BitsFormat {
  bool bgr = true;            ///< blue first; otherwise red first
  bool with_alpha = true;     ///< four bytes a pixel, otherwise three
  bool dword_aligned = true;  ///< rows of three-byte pixels padded to four bytes
  bool bottom_up = true;
  bool premultiplied = true;  ///< of bytes handed out; bytes handed in are stored as they are

  size_t row_length(int32_t width) const {
    const size_t bytes = static_cast<size_t>(width) * (with_alpha ? 4 : 3);
    return !with_alpha && dword_aligned ? (bytes + 3) & ~size_t{3} : bytes;
  }
};

/// Bytes of a bitmap row in a file: padded to 32 bits. No overflow for any width.
constexpr int64_t bitmap_row_length(int32_t bits_per_pixel, int32_t width) {
  return (int64_t{bits_per_pixel} * width + 31) / 32 * 4;
}

struct LoadOptions {
  int32_t icon_cx = 0, icon_cy = 0;  ///< wanted icon size; negative counts as 0
  int32_t icon_bit_depth = 32;       ///< 0 to 32, others count as 32
  bool save_format = false;          ///< keep the source bytes with the image
};

/// A picture in an icon file. A depth of 0 marks a broken one.
struct IconSize {
  int32_t Width = 0, Height = 0;
  int32_t bitDepth = 0;
};

/// Arguments of a drawing, named as in the public interface. Sizes of 0 mean the image's own;
/// negative ones mirror.
struct RenderArguments {
  int32_t destX = 0, destY = 0;
  int32_t destWidth = 0, destHeight = 0;
  int32_t SrcX = 0, SrcY = 0;
  int32_t SrcWidth = 0, SrcHeight = 0;
  int32_t Opacity = 100;  ///< percent; above 100 it wraps, below 1 nothing is drawn
  bool Blend = true;
  bool SetHalfTone = true;
  c32bppDIB* destHostDIB = nullptr;  ///< receives true 32-bit blending
  GrayScale grayScale = GrayScale::None;
  float LightAdjustment = 0;  ///< percent, -100 to 100
  double Angle = 0;           ///< degrees clockwise
  bool CenterOnDestXY = false;
};

}  // namespace kestrelon
