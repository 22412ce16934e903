#include "frame/kit/coverage.h"

#include "frame/kit/row_ops.h"

namespace kestrelon {
namespace {

constexpr uint32_t kAlpha = 0xFF000000u;

}  // namespace

void lay_over(const PixelView& view, const PixelView& mask, const PixelRect& area, ColorRef color) {
  const PixelRect part = intersect(area, intersect(view.bounds(), mask.bounds()));
  const uint32_t ink = kAlpha | to_pixel(color);
  for (int y = part.top; y < part.bottom; ++y) {
    uint32_t* const to = view.row(y);
    const uint32_t* const from = mask.row(y);
    for (int x = part.left; x < part.right; ++x) {
      const uint32_t m = from[x] & kColorBits;
      if (m == 0) continue;
      const uint32_t a = ((m & 0xFF) + (m >> 8 & 0xFF) * 2 + (m >> 16)) / 4;
      const uint32_t rest = 255 - a, old = to[x];
      uint32_t mixed = 0;
      for (int shift = 0; shift < 32; shift += 8)
        mixed |= (((ink >> shift & 0xFF) * a + (old >> shift & 0xFF) * rest + 127) / 255) << shift;
      to[x] = mixed;
    }
  }
}

void fill_opaque(const PixelView& view, const PixelRect& area, ColorRef color) {
  const PixelRect part = intersect(area, view.bounds());
  if (part.empty()) return;
  for (int y = part.top; y < part.bottom; ++y)
    fill_row(view.row(y) + part.left, part.right - part.left, kAlpha | to_pixel(color));
}

}  // namespace kestrelon
