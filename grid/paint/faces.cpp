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
  const PixelRect bar = {area.left, area.top, area.left + width, area.bottom};
  paper.gradient(bar, look.colors.progress1, look.colors.progress2, GradientDirection::TopToBottom);
  paper.frame(area, look.colors.progress_border, scale.line(1));
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
