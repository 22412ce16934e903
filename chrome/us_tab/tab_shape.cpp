#include "chrome/us_tab/tab_shape.h"

#include <algorithm>

#include "frame/kit/lines.h"

namespace kestrelon::tab_strip {
namespace {

// Positions along the strip from `from` to `to`, `depth` pixels from the outer edge and `thick`
// deep, as pixels of the control.
PixelRect piece(const PixelRect& tab, Side side, int from, int to, int depth, int thick) {
  switch (side) {
    case Side::kTop:
      return {tab.left + from, tab.top + depth, tab.left + to, tab.top + depth + thick};
    case Side::kBottom:
      return {tab.left + from, tab.bottom - depth - thick, tab.left + to, tab.bottom - depth};
    case Side::kLeft:
      return {tab.left + depth, tab.top + from, tab.left + depth + thick, tab.top + to};
    case Side::kRight:
      return {tab.right - depth - thick, tab.top + from, tab.right - depth, tab.top + to};
  }
  return {};
}

}  // namespace

int corner_inset(int x_radius, int y_radius, int depth) {
  if (x_radius <= 0 || y_radius <= 0 || depth >= y_radius) return 0;
  // The first pixel whose centre lies within the ellipse; in half pixels, exactly.
  const int64_t rx = 2 * static_cast<int64_t>(x_radius), ry = 2 * static_cast<int64_t>(y_radius);
  const int64_t y = ry - (2 * static_cast<int64_t>(depth) + 1);
  for (int inset = 0; inset < x_radius; ++inset) {
    const int64_t x = rx - (2 * static_cast<int64_t>(inset) + 1);
    if (x * x * ry * ry + y * y * rx * rx <= rx * rx * ry * ry) return inset;
  }
  return x_radius;
}

void paint_tab(const PixelView& view, const PixelRect& tab, Side side, int x_radius, int y_radius,
               const TabColors& colors, int line) {
  if (tab.empty()) return;
  const bool flat = side == Side::kTop || side == Side::kBottom;
  const int along = flat ? tab.right - tab.left : tab.bottom - tab.top;
  const int deep = flat ? tab.bottom - tab.top : tab.right - tab.left;
  const int rx = std::clamp(x_radius, 0, along / 2), ry = std::clamp(y_radius, 0, deep);
  const double steps = std::max(deep - 1, 1);
  int before = along;  // where the border of the row further out began
  for (int depth = 0; depth < deep; ++depth) {
    const int inset = corner_inset(rx, ry, depth);
    const ColorRef color = BlendColor(colors.start, colors.end, depth / steps);
    fill_rect(view, piece(tab, side, inset, along - inset, depth, 1), color);
    if (depth == line) {
      fill_rect(view, piece(tab, side, inset + line, along - inset - line, depth, line),
                colors.inner);
    }
    if (depth >= line + (line > 1 ? line : 1) || depth > line)
      fill_rect(view, piece(tab, side, inset + line, inset + 2 * line, depth, 1), colors.inner);
    // The border follows the corner without a gap.
    const int reach = std::clamp(before, inset + line, along / 2);
    const int border = depth < line ? along / 2 + 1 : reach;
    fill_rect(view, piece(tab, side, inset, std::min(border, along - inset), depth, 1),
              colors.border);
    fill_rect(view, piece(tab, side, std::max(along - border, inset), along - inset, depth, 1),
              colors.border);
    before = inset;
  }
}

void paint_cross(const PixelView& view, const PixelRect& area, int inset, int thick,
                 ColorRef color) {
  const int size = std::min(area.right - area.left, area.bottom - area.top) - 2 * inset;
  const int left = (area.left + area.right - size) / 2, top = (area.top + area.bottom - size) / 2;
  for (int i = 0; i < size; ++i) {
    const int width = std::min(thick, size - i);
    fill_rect(view, {left + i, top + i, left + i + width, top + i + 1}, color);
    fill_rect(view, {left + size - i - width, top + i, left + size - i, top + i + 1}, color);
  }
}

void paint_arrow(const PixelView& view, const PixelRect& area, Side to, int size, ColorRef color) {
  const int x = (area.left + area.right) / 2, y = (area.top + area.bottom) / 2;
  for (int i = 0; i < size; ++i) {
    const int half = i;  // the row i steps from the point is 2 i + 1 long
    const int off = i - size / 2;
    switch (to) {
      case Side::kLeft:
        fill_rect(view, {x + off, y - half, x + off + 1, y + half + 1}, color);
        break;
      case Side::kRight:
        fill_rect(view, {x - off, y - half, x - off + 1, y + half + 1}, color);
        break;
      case Side::kTop:
        fill_rect(view, {x - half, y + off, x + half + 1, y + off + 1}, color);
        break;
      case Side::kBottom:
        fill_rect(view, {x - half, y - off, x + half + 1, y - off + 1}, color);
        break;
    }
  }
}

}  // namespace kestrelon::tab_strip
