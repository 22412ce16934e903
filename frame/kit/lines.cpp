#include "frame/kit/lines.h"

#include <cstdlib>

#include "frame/kit/row_ops.h"

namespace kestrelon {
namespace {

// Pixels from..to of a line that leaves out its end, whichever way it runs, as a half-open range.
struct Run {
  int64_t from, to;
  Run(int64_t start, int64_t end)
      : from(start <= end ? start : end + 1), to(start <= end ? end : start + 1) {}
};

void level_line(const PixelView& view, uint32_t pixel, int y, Run run) {
  if (y < 0 || y >= view.height) return;
  const int from = static_cast<int>(std::max<int64_t>(run.from, 0));
  const int to = static_cast<int>(std::min<int64_t>(run.to, view.width));
  if (from < to) fill_row(view.row(y) + from, to - from, pixel);
}

void upright_line(const PixelView& view, uint32_t pixel, int x, Run run) {
  if (x < 0 || x >= view.width) return;
  const int from = static_cast<int>(std::max<int64_t>(run.from, 0));
  const int to = static_cast<int>(std::min<int64_t>(run.to, view.height));
  uint32_t* at = view.bits + static_cast<ptrdiff_t>(from) * view.stride + x;
  for (int y = from; y < to; ++y, at += view.stride) *at = pixel;
}

// One axis of a slanting line.
struct Axis {
  int64_t start, size;
  int step;
  Axis(int from, int to)
      : start(from), size(std::llabs(int64_t{to} - from)), step(to < from ? -1 : 1) {}
};

// Steps along `major` that fall inside 0..limit-1, as a half-open range of 0..size.
Run visible_steps(const Axis& major, int limit) {
  const int64_t first = major.step > 0 ? -major.start : major.start - limit + 1;
  const int64_t end = major.step > 0 ? limit - major.start : major.start + 1;
  Run run(0, 0);
  run.from = std::max<int64_t>(first, 0);
  run.to = std::min(end, major.size);
  return run;
}

// Bresenham's line without its last point: at step i the minor axis has moved by
// floor((2 * minor * i + bias) / (2 * major)), where the bias settles which way a tie falls.
void slanting_line(const PixelView& view, uint32_t pixel, const Axis& x, const Axis& y) {
  const bool flat = x.size >= y.size;
  const Axis& major = flat ? x : y;
  const Axis& minor = flat ? y : x;
  const int minor_limit = flat ? view.height : view.width;
  const ptrdiff_t major_stride = flat ? 1 : view.stride;
  const ptrdiff_t minor_stride = flat ? view.stride : 1;
  const Run steps = visible_steps(major, flat ? view.width : view.height);
  if (steps.from >= steps.to) return;
  const bool tie_moves = minor.step > 0 ? false : true;
  const int64_t whole = 2 * major.size;
  const int64_t moved = 2 * minor.size * steps.from + major.size - (tie_moves ? 0 : 1);
  int64_t at_minor = minor.start + minor.step * (moved / whole);
  int64_t rest = moved % whole;
  ptrdiff_t at_major = static_cast<ptrdiff_t>(major.start + major.step * steps.from);
  for (int64_t i = steps.from; i < steps.to; ++i, at_major += major.step) {
    if (at_minor >= 0 && at_minor < minor_limit)
      view.bits[at_major * major_stride + static_cast<ptrdiff_t>(at_minor) * minor_stride] = pixel;
    rest += 2 * minor.size;
    if (rest >= whole) {
      rest -= whole;
      at_minor += minor.step;
    }
  }
}

}  // namespace

void fill_rect(const PixelView& view, const PixelRect& area, ColorRef color) {
  const PixelRect seen = intersect(area, view.bounds());
  if (seen.empty()) return;
  const uint32_t pixel = to_pixel(color);
  for (int y = seen.top; y < seen.bottom; ++y)
    fill_row(view.row(y) + seen.left, seen.right - seen.left, pixel);
}

void DrawLineTo(const PixelView& view, ColorRef color, int x1, int y1, int x2, int y2) {
  const uint32_t pixel = to_pixel(color);
  if (x1 == x2) return upright_line(view, pixel, x1, Run(y1, int64_t{y2} + 1));
  if (y1 == y2) return level_line(view, pixel, y1, Run(x1, int64_t{x2} + 1));
  slanting_line(view, pixel, Axis(x1, x2), Axis(y1, y2));
}

void DrawFrame(const PixelView& view, ColorRef color, int left, int top, int right, int bottom) {
  if (left > right) std::swap(left, right);
  if (top > bottom) std::swap(top, bottom);
  const int64_t width = int64_t{right} - left;
  const int64_t height = int64_t{bottom} - top;
  if (width == 0 || height == 0 || (width == 1 && height == 1)) return;
  const uint32_t pixel = to_pixel(color);
  level_line(view, pixel, top, Run(left, right));
  level_line(view, pixel, bottom - 1, Run(left, right));
  upright_line(view, pixel, left, Run(top, bottom));
  upright_line(view, pixel, right - 1, Run(top, bottom));
}

void set_pixel(const PixelView& view, int x, int y, ColorRef color) {
  if (x >= 0 && x < view.width && y >= 0 && y < view.height) view.row(y)[x] = to_pixel(color);
}

void draw_focus_rect(const PixelView& view, const PixelRect& area) {
  const PixelRect box = {std::min(area.left, area.right), std::min(area.top, area.bottom),
                         std::max(area.left, area.right), std::max(area.top, area.bottom)};
  const PixelRect seen = intersect(box, view.bounds());
  if (seen.empty()) return;
  const int right = box.right - 1;
  const int bottom = box.bottom - 1;
  const auto invert = [&](int x, int y) {
    if (x >= seen.left && x < seen.right && y >= seen.top && y < seen.bottom)
      view.row(y)[x] ^= kColorBits;
  };
  const bool ends_alike = ((right ^ box.top ^ box.left ^ bottom) & 1) == 0;
  if (box.left == right || box.top == bottom) {
    if (box.left == right && box.top == bottom) return;
    invert(right, box.top);
    if (ends_alike) invert(box.left, bottom);
    return;
  }
  // Dots lie where the sum of column and row is as even as at the top right.
  const auto first_dot = [&](int from, int across) {
    return from + ((from ^ across ^ right ^ box.top) & 1);
  };
  for (const int y : {box.top, bottom}) {
    if (y < seen.top || y >= seen.bottom) continue;
    for (int x = first_dot(seen.left, y); x < seen.right; x += 2) view.row(y)[x] ^= kColorBits;
  }
  const int upper = std::max(seen.top, box.top + 1);
  const int lower = std::min(seen.bottom, bottom);
  for (const int x : {box.left, right}) {
    if (x < seen.left || x >= seen.right) continue;
    for (int y = first_dot(upper, x); y < lower; y += 2) view.row(y)[x] ^= kColorBits;
  }
}

}  // namespace kestrelon
