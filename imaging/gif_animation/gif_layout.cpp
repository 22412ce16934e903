#include "imaging/gif_animation/gif_layout.h"

#include <algorithm>

#include "imaging/drawing.h"

namespace kestrelon {
namespace {

// Three pixels on, three off; what lies between them shows.
void draw_outline(const MutableImageView& target) {
  constexpr uint32_t kInk = 0xFF7F8A96;
  constexpr int32_t kDash = 3;
  const int32_t right = target.width - 1, bottom = target.height - 1;
  for (int32_t y = 0; y <= bottom; ++y) {
    auto* const row = reinterpret_cast<uint32_t*>(target.row(y));
    const int32_t step = y == 0 || y == bottom ? 1 : std::max(right, 1);
    for (int32_t x = 0; x <= right; x += step)
      if ((x + y) / kDash % 2 == 0) row[x] = kInk;
  }
}

}  // namespace

GifSize scaled_size(const c32bppDIB& canvas, GifScale rule, int32_t width, int32_t height) {
  GifSize out{canvas.Width(), canvas.Height()};
  const auto scale = [&](ScaleOption option) {
    canvas.ScaleImage(width, height, out.width, out.height, option);
  };
  switch (rule) {
    case GifScale::Always:
      scale(ScaleOption::ToSize);
      break;
    case GifScale::Stretch:
      scale(ScaleOption::Stretched);
      break;
    case GifScale::ShrinkToFit:
      scale(ScaleOption::DownAsNeeded);
      break;
    case GifScale::Clip:
    case GifScale::ActualSize:
      break;
  }
  return out;
}

void draw_canvas(const c32bppDIB& canvas, const GifLook& look, const MutableImageView& target) {
  for (int32_t y = 0; y < target.height; ++y)
    std::fill_n(reinterpret_cast<uint32_t*>(target.row(y)), target.width, look.background);
  if (look.outlined) draw_outline(target);
  if (!canvas.has_image() || look.place.empty()) return;
  ScaledSource source;
  source.pixels = canvas.view();
  source.dest_x = look.place.x;
  source.dest_y = look.place.y;
  source.dest_width = look.place.width;
  source.dest_height = look.place.height;
  source.mirror_x = look.mirror_x;
  source.mirror_y = look.mirror_y;
  source.high_quality = true;
  draw_scaled(source, {}, {target, 0, 0, false});
}

}  // namespace kestrelon
