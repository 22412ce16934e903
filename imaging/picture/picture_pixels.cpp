#include "imaging/picture/picture_pixels.h"

#include <algorithm>
#include <utility>

#include "imaging/premultiply.h"

namespace kestrelon {
namespace {

bool is_straight_row(const uint8_t* row, int32_t width) {
  for (const uint8_t* const end = row + ptrdiff_t{width} * 4; row < end; row += 4)
    if (std::max({row[0], row[1], row[2]}) > row[3]) return true;
  return false;
}

}  // namespace

AlphaType alpha_type_of(const ImageView& view) {
  bool transparent = false;
  for (int32_t y = 0; y < view.height; ++y) {
    const uint8_t* alpha = view.pixel(0, y) + 3;
    for (int32_t x = 0; x < view.width; ++x, alpha += 4) {
      if (*alpha == 255) continue;
      if (*alpha != 0) return AlphaType::Complex;
      transparent = true;
    }
  }
  return transparent ? AlphaType::Simple : AlphaType::None;
}

void settle_stored_pixels(c32bppDIB& image) {
  const int32_t width = image.Width(), height = image.Height();
  bool straight = false;
  for (int32_t y = 0; y < height && !straight; ++y) straight = is_straight_row(image.row(y), width);
  for (int32_t y = 0; y < height && straight; ++y)
    premultiply_row(image.row(y), image.row(y), static_cast<size_t>(width));
  image.set_alpha(alpha_type_of(std::as_const(image).view()));
}

}  // namespace kestrelon
