// Pixels in memory as the drawing kit sees them: no device context, no window.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace kestrelon {

/// A colour as the public interface holds it, 0x00BBGGRR; system colours are translated before.
using ColorRef = uint32_t;

/// The same colour as a pixel in memory, 0x00RRGGBB; the alpha byte is 0.
constexpr uint32_t to_pixel(ColorRef color) {
  return (color & 0xFFu) << 16 | (color & 0xFF00u) | (color >> 16 & 0xFFu);
}
/// The colour of a pixel; its alpha byte is left out.
constexpr ColorRef to_color(uint32_t pixel) {
  return to_pixel(pixel);
}

/// The bits of a pixel that carry its colour. What GDI leaves in the alpha byte is chance.
inline constexpr uint32_t kColorBits = 0x00FFFFFF;

/// Pixels from left and top up to, but not with, right and bottom; laid out as Windows' RECT.
struct PixelRect {
  int32_t left = 0, top = 0, right = 0, bottom = 0;

  constexpr bool empty() const { return left >= right || top >= bottom; }
  constexpr bool operator==(const PixelRect&) const = default;
};

constexpr PixelRect intersect(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

/// A rectangle of 32-bit pixels, row 0 at the top, somebody else's memory. Everything in the kit
/// clips to it, so coordinates may lie anywhere.
struct PixelView {
  uint32_t* bits = nullptr;
  int width = 0;
  int height = 0;
  int stride = 0;  ///< pixels from one row to the next; negative for bottom-up memory

  uint32_t* row(int y) const { return bits + static_cast<ptrdiff_t>(y) * stride; }
  PixelRect bounds() const { return {0, 0, width, height}; }
};

}  // namespace kestrelon
