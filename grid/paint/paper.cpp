#include "grid/paint/paper.h"

#include "frame/kit/lines.h"

namespace kestrelon::grid_paint {

Paper::Paper(const PixelView& picture, const PixelRect& clip)
    : picture_(picture), clip_(intersect(clip, picture.bounds())) {
  if (clip_.empty()) {
    clip_ = {};
    return;
  }
  seen_ = {picture.row(clip_.top) + clip_.left, clip_.right - clip_.left, clip_.bottom - clip_.top,
           picture.stride};
}

void Paper::fill(const PixelRect& area, ColorRef color) const {
  fill_rect(seen_, local(area), color);
}

void Paper::gradient(const PixelRect& area, ColorRef from, ColorRef to,
                     GradientDirection direction) const {
  if (area.empty()) return;
  if (from == to) return fill(area, from);
  fill_system_gradient(seen_, local(area), from, to, direction);
}

void Paper::frame(const PixelRect& area, ColorRef color, int thickness) const {
  if (area.empty()) return;
  const int across = std::min(thickness, (area.right - area.left + 1) / 2);
  const int down = std::min(thickness, (area.bottom - area.top + 1) / 2);
  fill({area.left, area.top, area.right, area.top + down}, color);
  fill({area.left, area.bottom - down, area.right, area.bottom}, color);
  fill({area.left, area.top, area.left + across, area.bottom}, color);
  fill({area.right - across, area.top, area.right, area.bottom}, color);
}

void Paper::dotted_frame(const PixelRect& area, ColorRef color, int thickness) const {
  if (area.empty() || thickness <= 0) return;
  const auto dot = [&](int x, int y) {
    if (((x - area.left) / thickness + (y - area.top) / thickness) % 2 != 0) return;
    fill(intersect({x, y, x + thickness, y + thickness}, area), color);
  };
  for (int x = area.left; x < area.right; x += thickness) {
    dot(x, area.top);
    dot(x, area.bottom - thickness);
  }
  for (int y = area.top + thickness; y < area.bottom - thickness; y += thickness) {
    dot(area.left, y);
    dot(area.right - thickness, y);
  }
}

void Paper::pixel(int x, int y, ColorRef color) const {
  set_pixel(seen_, x - clip_.left, y - clip_.top, color);
}

ColorRef Paper::color_at(int x, int y) const {
  const PixelRect all = picture_.bounds();
  if (x < 0 || y < 0 || x >= all.right || y >= all.bottom) return 0;
  return to_color(picture_.row(y)[x]);
}

ColorRef mix_colors(ColorRef a, ColorRef b, int alpha) {
  const Channels from = SplitRGB(a);
  const Channels to = SplitRGB(b);
  const auto channel = [alpha](int x, int y) { return (x * alpha + y * (255 - alpha)) / 255; };
  return PackRGB(channel(from.r, to.r), channel(from.g, to.g), channel(from.b, to.b));
}

ColorRef darkened(ColorRef color, int by) {
  const Channels from = SplitRGB(color);
  return PackRGB(std::max(from.r - by, 0), std::max(from.g - by, 0), std::max(from.b - by, 0));
}

}  // namespace kestrelon::grid_paint
