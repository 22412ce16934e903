#include "chrome/us_ribbon/ribbon_shapes.h"

#include "frame/kit/lines.h"

namespace kestrelon::ribbon {
namespace {

constexpr int kSamples = 4;  // a side, for a pixel on a corner's edge
constexpr int kWhole = kSamples * kSamples;

ColorRef mix(ColorRef from, ColorRef to, int part, int whole) {
  ColorRef out = 0;
  for (int shift = 0; shift < 24; shift += 8) {
    const int a = static_cast<int>(from >> shift & 0xFF), b = static_cast<int>(to >> shift & 0xFF);
    out |= static_cast<ColorRef>((a * (whole - part) + b * part + whole / 2) / whole) << shift;
  }
  return out;
}

// How many of a pixel's samples lie in a quarter circle of `radius` whose centre is `radius` away
// from both sides; x and y count from the corner.
int corner_cover(int x, int y, int radius) {
  const int full = radius * 2 * kSamples;
  int covered = 0;
  for (int j = 0; j < kSamples; ++j)
    for (int i = 0; i < kSamples; ++i) {
      const int dx = full - (2 * (x * kSamples + i) + 1), dy = full - (2 * (y * kSamples + j) + 1);
      if (dx * dx + dy * dy <= full * full) ++covered;
    }
  return covered;
}

void put(const Canvas& canvas, int x, int y, ColorRef color, int cover) {
  if (cover == 0 || x < canvas.clip.left || x >= canvas.clip.right) return;
  uint32_t& pixel = canvas.view.row(y)[x];
  pixel = to_pixel(mix(to_color(pixel), color, cover, kWhole));
}

void fill_row(const Canvas& canvas, const PixelRect& area, int y, ColorRef color, Corners corners) {
  const int from_top = y - area.top, from_bottom = area.bottom - 1 - y;
  const int edge = corners.bottom && from_bottom < from_top ? from_bottom : from_top;
  const int inset = edge < corners.radius ? corners.radius : 0;
  for (int i = 0; i < inset; ++i) {
    const int cover = corner_cover(i, edge, corners.radius);
    put(canvas, area.left + i, y, color, cover);
    put(canvas, area.right - 1 - i, y, color, cover);
  }
  const int from = std::max(area.left + inset, canvas.clip.left);
  const int to = std::min(area.right - inset, canvas.clip.right);
  if (from < to) std::fill(canvas.view.row(y) + from, canvas.view.row(y) + to, to_pixel(color));
}

Canvas within(const Canvas& canvas) {
  return {canvas.view, intersect(canvas.clip, canvas.view.bounds())};
}

PixelRect shrunk(const PixelRect& area, int by) {
  return {area.left + by, area.top + by, area.right - by, area.bottom - by};
}

}  // namespace

ColorRef row_color(const Gradient& gradient, int y, int height) {
  const int upper = height * gradient.split / 100;
  const ColorRef* const band = gradient.colors + (y < upper ? 0 : 2);
  const int at = y < upper ? y : y - upper, size = (y < upper ? upper : height - upper) - 1;
  return size <= 0 ? band[0] : mix(band[0], band[1], at, size);
}

void fill(const Canvas& target, const PixelRect& area, const Gradient& gradient, Corners corners) {
  const Canvas canvas = within(target);
  if (area.empty() || canvas.clip.empty()) return;
  const int height = area.bottom - area.top;
  corners.radius = std::min({corners.radius, height / 2, (area.right - area.left) / 2});
  const int end = std::min(area.bottom, canvas.clip.bottom);
  for (int y = std::max(area.top, canvas.clip.top); y < end; ++y)
    fill_row(canvas, area, y, row_color(gradient, y - area.top, height), corners);
}

void fill(const Canvas& canvas, const PixelRect& area, ColorRef color) {
  const PixelRect seen = intersect(area, canvas.clip);
  if (!seen.empty()) fill_rect(canvas.view, seen, color);
}

void framed_box(const Canvas& canvas, const PixelRect& area, int line, ColorRef border,
                const Gradient& inside, Corners corners) {
  fill(canvas, area, Gradient::plain(border), corners);
  corners.radius = std::max(corners.radius - line, 0);
  PixelRect inner = shrunk(area, line);
  if (!corners.bottom) inner.bottom = area.bottom;
  fill(canvas, inner, inside, corners);
}

void frame(const Canvas& target, const PixelRect& area, int line, ColorRef color, int radius) {
  const Canvas canvas = within(target);
  if (area.empty() || canvas.clip.empty()) return;
  const int r = std::min(radius, (area.bottom - area.top) / 2);
  fill(canvas, {area.left + r, area.top, area.right - r, area.top + line}, color);
  fill(canvas, {area.left + r, area.bottom - line, area.right - r, area.bottom}, color);
  fill(canvas, {area.left, area.top + r, area.left + line, area.bottom - r}, color);
  fill(canvas, {area.right - line, area.top + r, area.right, area.bottom - r}, color);
  for (int y = 0; y < r; ++y)
    for (int x = 0; x < r; ++x) {
      const bool hole = x >= line && y >= line;
      const int cover = corner_cover(x, y, r) -
                        (hole ? corner_cover(x - line, y - line, std::max(r - line, 0)) : 0);
      for (const int row : {area.top + y, area.bottom - 1 - y}) {
        if (row < canvas.clip.top || row >= canvas.clip.bottom) continue;
        put(canvas, area.left + x, row, color, cover);
        put(canvas, area.right - 1 - x, row, color, cover);
      }
    }
}

void triangle(const Canvas& canvas, const PixelRect& area, int size, Pointing pointing,
              ColorRef color) {
  const int x = (area.left + area.right) / 2, y = (area.top + area.bottom) / 2;
  for (int i = 0; i < size; ++i) {
    const int half = size - 1 - i;
    const int at = i - size / 2;
    if (pointing == Pointing::kDown)
      fill(canvas, {x - half, y + at, x + half + 1, y + at + 1}, color);
    else if (pointing == Pointing::kRight)
      fill(canvas, {x + at, y - half, x + at + 1, y + half + 1}, color);
    else
      fill(canvas, {x - at, y - half, x - at + 1, y + half + 1}, color);
  }
}

void launcher_mark(const Canvas& canvas, const PixelRect& area, Scale scale, ColorRef color,
                   ColorRef light) {
  constexpr const char* kMark[] = {"XXXXXX..", "X.......", "X.......", "X..X....",
                                   "X...X..X", "X....X.X", "......XX", "....XXXX"};
  constexpr int kCells = 8;
  const int edge = scale(kCells), line = scale.line();
  const int left = (area.left + area.right - edge) / 2, top = (area.top + area.bottom - edge) / 2;
  for (const bool shadow : {true, false})
    for (int y = 0; y < kCells; ++y)
      for (int x = 0; x < kCells; ++x) {
        if (kMark[y][x] != 'X') continue;
        const int by = shadow ? line : 0;
        fill(canvas,
             {left + by + x * edge / kCells, top + by + y * edge / kCells,
              left + by + (x + 1) * edge / kCells, top + by + (y + 1) * edge / kCells},
             shadow ? light : color);
      }
}

}  // namespace kestrelon::ribbon
