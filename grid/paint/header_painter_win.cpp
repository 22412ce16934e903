#include "grid/paint/header_painter_win.h"

namespace kestrelon::grid_paint {
namespace {

HeaderState state_of(const HeadingFacts& heading, const PaintLook& look) {
  if (!look.enabled) return HeaderState::kDisabled;
  if (!look.headers_react || heading.state < 2 || heading.state > 3) return HeaderState::kNormal;
  return heading.state == 2 ? HeaderState::kOver : HeaderState::kDown;
}

ColorRef text_color(HeaderState state, const GridColors& colors) {
  if (state == HeaderState::kDisabled) return colors.fore_disabled;
  return state == HeaderState::kNormal ? colors.fore_header : colors.fore_header_over;
}

// Headings keep the horizontal alignment of their column and stand in the middle.
int heading_alignment(int alignment) {
  return 4 + grid_layout::across(alignment);
}

PixelRect shifted(const PixelRect& area, int by) {
  return {area.left + by, area.top + by, area.right + by, area.bottom + by};
}

}  // namespace

void HeaderPainter::DrawCaption(const PixelRect& clip) {
  const GridPage& page = scene_.page;
  const PixelRect seen = intersect(scene_.seen(page.caption), clip);
  if (seen.empty()) return;
  const PaintLook& look = scene_.look;
  const Scale& scale = page.metrics.scale;
  DrawHeaderCell(Paper(surface_.pixels(), seen), page.caption, HeaderState::kNormal, look, scale,
                 FaceKind::kCaption);
  const CellFont& font = scene_.fonts.cell({}, {});
  const FontInUse in_use(surface_.dc(), font);
  SetTextColor(surface_.dc(), look.enabled ? look.colors.fore_header : look.colors.fore_disabled);
  const TextPlace place = {{page.caption.left + scale.px(10), page.caption.top + 2 * scale.px(1),
                            page.caption.right - scale.px(10), page.caption.bottom},
                           seen,
                           heading_alignment(look.caption_alignment),
                           page.metrics.ellipsis_flag != 0,
                           look.right_to_left};
  if (look.caption_wraps)
    draw_lines(surface_.dc(), font, scene_.contents.caption(), place, 0);
  else
    draw_line(surface_.dc(), font, scene_.contents.caption(), place);
}

void HeaderPainter::DrawHeader(const PixelRect& clip) {
  const GridPage& page = scene_.page;
  const PixelRect seen = intersect(scene_.seen(page.header), clip);
  if (seen.empty()) return;
  const PixelRect& band = page.header;
  if (page.number_width > 0)
    draw_face({0, band.top, page.number_width, band.bottom}, HeaderState::kNormal, seen);
  for (const PlacedColumn& column : page.columns) draw_heading(column, 0, seen);
  const int end = page.columns.empty() ? page.number_width : page.columns.back().right();
  if (end < page.inner.right) {
    const PixelRect rest = {end, band.top, page.inner.right, band.bottom};
    DrawHeaderCell(Paper(surface_.pixels(), seen), rest, HeaderState::kNormal, scene_.look,
                   page.metrics.scale);
  }
  if (const PlacedColumn* dragged = page.column(scene_.dragged))
    draw_heading(*dragged, scene_.dragged_by, seen);
}

void HeaderPainter::draw_heading(const PlacedColumn& column, int moved_by, const PixelRect& clip) {
  const GridPage& page = scene_.page;
  const HeadingFacts heading = scene_.contents.heading(column.store);
  const auto parts = grid_layout::header_parts(page, column.left + moved_by,
                                               column.right() + moved_by, heading.sort != 0);
  const PixelRect seen = intersect(scene_.seen(parts.cell), clip);
  if (seen.empty()) return;
  const HeaderState state = state_of(heading, scene_.look);
  draw_face(parts.cell, state, seen);
  const int by = state == HeaderState::kDown ? page.metrics.scale.line(1) : 0;
  if (heading.sort != 0)
    DrawSortArrow(Paper(surface_.pixels(), seen), shifted(parts.arrow, by), heading.sort == 2,
                  scene_.look.colors.sort_arrow);
  draw_heading_text(heading, state, shifted(parts.text, by), seen);
}

void HeaderPainter::draw_face(const PixelRect& cell, HeaderState state, const PixelRect& clip) {
  const GridPage& page = scene_.page;
  const Paper paper(surface_.pixels(), intersect(clip, cell));
  DrawHeaderCell(paper, cell, state, scene_.look, page.metrics.scale);
  if (state == HeaderState::kNormal || state == HeaderState::kDisabled)
    draw_header_divider(paper, cell, page.metrics.line_width, scene_.look, page.metrics.scale);
}

void HeaderPainter::draw_heading_text(const HeadingFacts& heading, HeaderState state,
                                      const PixelRect& area, const PixelRect& clip) {
  const PaintLook& look = scene_.look;
  const CellFont& font = scene_.fonts.header();
  const FontInUse in_use(surface_.dc(), font);
  SetTextColor(surface_.dc(), text_color(state, look.colors));
  draw_lines(surface_.dc(), font, heading.text,
             {area, clip, heading_alignment(heading.alignment),
              scene_.page.metrics.ellipsis_flag != 0, look.right_to_left},
             look.header_lines);
}

void HeaderPainter::draw_total_line(const PixelRect& clip) {
  const GridPage& page = scene_.page;
  const PixelRect& band = page.total_line;
  const PixelRect seen = intersect(scene_.seen(band), clip);
  if (seen.empty()) return;
  DrawHeaderCell(Paper(surface_.pixels(), seen), band, HeaderState::kNormal, scene_.look,
                 page.metrics.scale);
  for (const PlacedColumn& column : page.columns) draw_total(column, seen);
}

void HeaderPainter::draw_total(const PlacedColumn& column, const PixelRect& clip) {
  const GridPage& page = scene_.page;
  const PixelRect cell = {column.left, page.total_line.top, column.right(), page.total_line.bottom};
  const PixelRect seen = intersect(cell, clip);
  if (seen.empty()) return;
  draw_face(cell, HeaderState::kNormal, seen);
  TotalFacts total;
  scene_.contents.total(column.store, total);
  if (total.text.empty()) return;
  const CellFont& font = scene_.fonts.cell({}, {});
  const FontInUse in_use(surface_.dc(), font);
  const GridColors& colors = scene_.look.colors;
  const ColorRef fore = scene_.look.high_contrast ? colors.fore_header : total.fore;
  SetTextColor(surface_.dc(), scene_.look.enabled ? fore : colors.fore_disabled);
  // The texts stand below those of the cells.
  const PixelRect area =
      grid_layout::cell_parts(page.metrics, {cell, false, total.alignment, {}, 4, {}}).text;
  draw_line(surface_.dc(), font, total.text,
            {area, seen, heading_alignment(total.alignment), page.metrics.ellipsis_flag != 0,
             scene_.look.right_to_left});
}

}  // namespace kestrelon::grid_paint
