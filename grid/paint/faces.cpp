#include "grid/paint/faces.h"

#include <cmath>

namespace kestrelon::grid_paint {
namespace {

void draw_rest_face(const Paper& paper, const PixelRect& cell, const PaintLook& look,
                    const Scale& scale, FaceKind kind) {
  const GridColors& colors = look.colors;
  const bool caption = kind == FaceKind::kCaption;
  const int line = scale.line(1);
  paper.gradient(cell, caption ? colors.caption1 : colors.header1,
                 caption ? colors.caption2 : colors.header2, GradientDirection::TopToBottom);
  paper.fill({cell.left, cell.bottom - 2 * line, cell.right, cell.bottom - line},
             colors.header_shine);
  paper.fill({cell.left, cell.bottom - line, cell.right, cell.bottom}, colors.grid);
  paper.fill({cell.left, cell.top + scale.px(3), cell.left + line, cell.bottom - scale.px(3)},
             colors.header_shine);
}

void draw_active_face(const Paper& paper, const PixelRect& cell, HeaderState state,
                      const PaintLook& look, const Scale& scale) {
  const GridColors& colors = look.colors;
  paper.fill(cell, state == HeaderState::kDown ? colors.header_down : colors.header_over);
  const int line = scale.line(1);
  for (int i = 0; i < 3; ++i) {
    const int inset = (2 - i) * line;
    const int bottom = cell.bottom - (2 - i) * line;
    paper.fill({cell.left + inset, bottom - line, cell.right - inset, bottom},
               colors.header_accent[static_cast<size_t>(i)]);
  }
}

struct Point {
  double x, y;
};
struct Stroke {
  Point from, to;
};

double distance(const Stroke& stroke, Point at) {
  const double dx = stroke.to.x - stroke.from.x;
  const double dy = stroke.to.y - stroke.from.y;
  const double along =
      ((at.x - stroke.from.x) * dx + (at.y - stroke.from.y) * dy) / (dx * dx + dy * dy);
  const double t = std::clamp(along, 0.0, 1.0);
  return std::hypot(at.x - stroke.from.x - t * dx, at.y - stroke.from.y - t * dy);
}

// A line with round ends whose edge pixels are mixed by how much of them it covers.
void draw_stroke(const Paper& paper, const PixelRect& area, const Stroke& stroke, double half_width,
                 ColorRef color) {
  const PixelRect seen = intersect(area, paper.clip());
  for (int y = seen.top; y < seen.bottom; ++y)
    for (int x = seen.left; x < seen.right; ++x) {
      const double cover = half_width + 0.5 - distance(stroke, {x + 0.5, y + 0.5});
      if (cover > 0)
        paper.pixel(x, y, BlendColor(paper.color_at(x, y), color, std::min(cover, 1.0)));
    }
}

}  // namespace

void DrawHeaderCell(const Paper& paper, const PixelRect& cell, HeaderState state,
                    const PaintLook& look, const Scale& scale, FaceKind kind) {
  const PixelRect face = {cell.left, cell.top + scale.line(1), cell.right, cell.bottom};
  // The pixel row that the face leaves free at its top belongs to the band above.
  paper.fill({cell.left, cell.top, cell.right, face.top},
             kind == FaceKind::kCaption ? look.colors.caption1 : look.colors.header1);
  if (face.empty()) return;
  if (look.headers_react && (state == HeaderState::kOver || state == HeaderState::kDown))
    return draw_active_face(paper, face, state, look, scale);
  draw_rest_face(paper, face, look, scale, kind);
}

void draw_header_divider(const Paper& paper, const PixelRect& cell, int line_width,
                         const PaintLook& look, const Scale& scale) {
  const int line = std::max(line_width, scale.line(1));
  const ColorRef color = look.high_contrast ? look.colors.grid : header_divider(look.colors);
  paper.fill({cell.right - line, cell.top + scale.px(3), cell.right, cell.bottom - scale.px(3)},
             color);
}

void DrawSortArrow(const Paper& paper, const PixelRect& area, bool up, ColorRef color) {
  const int rows = area.bottom - area.top;
  for (int i = 0; i < rows; ++i) {
    const int inset = up ? rows - 1 - i : i;
    paper.fill({area.left + inset, area.top + i, area.right - inset, area.top + i + 1}, color);
  }
}

void draw_progress(const Paper& paper, const PixelRect& area, double value, const PaintLook& look,
                   const Scale& scale) {
  if (std::isnan(value) || value < 0 || area.empty()) return;
  const int width = grid_layout::progress_width(area.right - area.left, value);
  PixelRect bar = {area.left, area.top, area.left + width, area.bottom};
  if (look.high_contrast) bar.top = std::max(area.bottom - scale.px(4), area.top);
  paper.gradient(bar, look.colors.progress1, look.colors.progress2, GradientDirection::TopToBottom);
  paper.frame(area, look.colors.progress_border, scale.line(1));
}

void draw_check_box(const Paper& paper, const PixelRect& area, bool checked, const PaintLook& look,
                    const Scale& scale) {
  if (area.empty()) return;
  const GridColors& colors = look.colors;
  const ColorRef ink = look.enabled ? colors.check_tick : colors.fore_disabled;
  paper.fill(area, colors.check_back);
  paper.frame(area, look.enabled ? colors.check_frame : colors.fore_disabled, scale.line(1));
  if (!checked) return;
  const double side = area.right - area.left;
  const auto point = [&](double x, double y) {
    return Point{area.left + x * side, area.top + y * side};
  };
  draw_stroke(paper, area, {point(0.24, 0.52), point(0.42, 0.70)}, side * 0.065, ink);
  draw_stroke(paper, area, {point(0.42, 0.70), point(0.77, 0.31)}, side * 0.065, ink);
}

void draw_button(const Paper& paper, const PixelRect& area, bool pressed, const PaintLook& look,
                 const Scale& scale) {
  PaintLook reacting = look;
  reacting.headers_react = true;
  DrawHeaderCell(paper, area, pressed ? HeaderState::kDown : HeaderState::kNormal, reacting, scale);
  paper.frame(area, look.colors.border, scale.line(1));
}

void draw_highlight(const Paper& paper, const PixelRect& area, const PaintLook& look) {
  const GridColors& colors = look.colors;
  if (look.highlight == HighlightStyle::kSolid) return paper.fill(area, colors.selected2);
  paper.gradient(area, colors.selected1, colors.selected2,
                 look.highlight == HighlightStyle::kHorizontalGradient
                     ? GradientDirection::LeftToRight
                     : GradientDirection::TopToBottom);
}

void draw_focus(const Paper& paper, const PixelRect& area, const PaintLook& look,
                const Scale& scale) {
  if (area.empty()) return;
  const int line = scale.line(1);
  int width = line;
  if (look.focus_style == FocusStyle::kHeavy) width = 2 * line;
  if (look.focus_style == FocusStyle::kLight)
    paper.dotted_frame(area, look.colors.focus, line);
  else
    paper.frame(area, look.colors.focus, width);
  if (!look.full_row_select || look.high_contrast) return;
  const PixelRect inner = {area.left + width, area.top + width, area.right - width,
                           area.bottom - width};
  const ColorRef second = look.theme == 2 ? mix_colors(look.colors.focus, look.colors.back, 64)
                                          : darkened(look.colors.selected1, 50);
  paper.frame(inner, second, line);
}

}  // namespace kestrelon::grid_paint
