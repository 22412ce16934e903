// The choice of the PNG colour type and the rows of samples that follow from it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "imaging/c32bpp_dib.h"
#include "imaging/png_format.h"

namespace kestrelon::png {

/// How an image is written: at depth 8, with the smallest plain colour type that holds it.
struct ColorPlan {
  ColorType type = ColorType::Rgba;
  /// The distinct premultiplied pixels of a palette image, rising; bytes alpha, red, green, blue
  /// from the highest. The colours that need an alpha entry come first.
  std::vector<uint32_t> palette;
  /// Gray value that stands for transparent in an RGB image.
  std::optional<uint8_t> key;
  /// Straight colours are rounded up, so that premultiplying them gives the same pixels again.
  bool exact = false;
};

/// Palette for up to 256 distinct pixels; RGB without alpha, or with a key where all alphas are 0
/// or 255 and a byte value is free; RGBA otherwise. `background` (0x00BBGGRR) gets a palette entry
/// of its own if there is room.
ColorPlan plan_colors(const c32bppDIB& image, std::optional<uint32_t> background);

/// A palette entry as straight colour: alpha, red, green, blue from the highest byte.
uint32_t straight_color(uint32_t premultiplied, bool exact);

/// Writes picture rows as samples: indices, or straight colour in the order red, green, blue,
/// alpha.
class SampleRows {
 public:
  SampleRows(const c32bppDIB& image, const ColorPlan& plan);
  size_t row_bytes() const { return row_bytes_; }
  /// `dst` gets row_bytes() bytes; `y` counts from the top.
  void read(uint8_t* dst, int32_t y);

 private:
  void read_indices(uint8_t* dst, const uint8_t* src) const;

  const c32bppDIB& image_;
  const ColorPlan& plan_;
  size_t row_bytes_;
  std::vector<uint8_t> straight_;
};

}  // namespace kestrelon::png
