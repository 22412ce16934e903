#include "grid/paint/row_painter_win.h"

#include <charconv>

namespace kestrelon::grid_paint {

void RowPainter::draw(const PlacedRow& row, const PixelRect& clip) {
  const GridPage& page = scene_.page;
  const PixelRect band = {0, row.top, page.inner.right, row.bottom()};
  const PixelRect seen = intersect(scene_.seen(intersect(band, page.rows_area)), clip);
  if (seen.empty()) return;
  facts_ = scene_.contents.row(row.position);
  const Paper paper(surface_.pixels(), seen);
  paper.fill({page.columns_right, row.top, page.inner.right, row.bottom()},
             scene_.look.colors.background);
  draw_number(row, paper);
  draw_back(row, paper);
  if (!facts_.group_header) {
    fetch_cells(row, seen);
    for (size_t i = first_; i < end_; ++i) draw_cell_face(i, row, paper);
  }
  draw_lines_of(row, paper);
  draw_number_text(row, seen);
  draw_row_marks(row, seen);
  if (facts_.group_header)
    draw_group(row, seen);
  else
    draw_cells(row, seen);
  if (scene_.focus.top < row.bottom() && scene_.focus.bottom > row.top)
    draw_focus(Paper(surface_.pixels(), seen), scene_.focus, scene_.look, page.metrics.scale);
}

ColorRef RowPainter::base_color(const PlacedRow& row) const {
  const GridColors& colors = scene_.look.colors;
  if (facts_.group_header) return mix_colors(colors.header1, colors.header2, 128);
  return scene_.look.even_rows && row.position % 2 == 1 ? colors.even_rows : colors.back;
}

void RowPainter::draw_number(const PlacedRow& row, const Paper& paper) {
  const GridPage& page = scene_.page;
  if (page.number_width == 0) return;
  const GridColors& colors = scene_.look.colors;
  const int line = page.metrics.scale.line(1);
  const PixelRect cell = {0, row.top, page.number_width, row.bottom()};
  paper.fill(cell, mix_colors(colors.header1, colors.header2, 128));
  paper.fill({cell.left, cell.bottom - line, cell.right, cell.bottom}, colors.grid);
  paper.fill({cell.right - line, cell.top, cell.right, cell.bottom}, colors.grid);
}

void RowPainter::draw_back(const PlacedRow& row, const Paper& paper) {
  const GridPage& page = scene_.page;
  const PaintLook& look = scene_.look;
  ColorRef base = base_color(row);
  if (facts_.selected && look.alpha_blend_selection)
    base = mix_colors(look.colors.selected2, base, 128);
  paper.fill({page.number_width, row.top, page.columns_right, row.bottom()}, base);
  if (highlighted())
    draw_highlight(
        paper, grid_layout::highlight_rect(page, row, look.row_check_boxes, look.theme == 2), look);
}

void RowPainter::fetch_cells(const PlacedRow& row, const PixelRect& clip) {
  const std::vector<PlacedColumn>& columns = scene_.page.columns;
  first_ = 0;
  while (first_ < columns.size() && columns[first_].right() <= clip.left) ++first_;
  for (end_ = first_; end_ < columns.size() && columns[end_].left < clip.right; ++end_) {
    cells_[end_].clear();
    scene_.contents.cell(row.position, columns[end_].store, cells_[end_]);
  }
}

void RowPainter::draw_cell_face(size_t index, const PlacedRow& row, const Paper& paper) {
  const PaintLook& look = scene_.look;
  const CellFacts& facts = cells_[index];
  const Scale& scale = scene_.page.metrics.scale;
  const PixelRect cell = grid_layout::cell_rect(scene_.page.columns[index], row);
  if (facts.own_back && !look.high_contrast && !highlighted())
    paper.fill(cell,
               facts_.selected ? mix_colors(look.colors.selected2, facts.back, 128) : facts.back);
  if (facts.kind != CellKind::kProgress) return;
  const PixelRect face = grid_layout::cell_face(scene_.page.metrics, cell);
  draw_progress(paper.within(cell),
                {cell.left, face.top + scale.line(1), face.right, face.bottom - scale.line(1)},
                facts.progress, look, scale);
}

void RowPainter::draw_lines_of(const PlacedRow& row, const Paper& paper) {
  const GridPage& page = scene_.page;
  const PaintLook& look = scene_.look;
  const int line = page.metrics.line_width;
  if (look.lines.horizontal)
    paper.fill({page.number_width, row.bottom() - line, page.columns_right, row.bottom()},
               look.colors.grid);
  if (!look.lines.vertical || facts_.group_header) return;
  for (const PlacedColumn& column : page.columns)
    paper.fill({column.right() - line, row.top, column.right(), row.bottom()}, look.colors.grid);
}

void RowPainter::draw_number_text(const PlacedRow& row, const PixelRect& clip) {
  const GridPage& page = scene_.page;
  if (page.number_width == 0 || clip.left >= page.number_width) return;
  char digits[16];
  const auto end = std::to_chars(digits, digits + sizeof digits, int64_t{row.position} + 1).ptr;
  const std::wstring text(digits, end);
  const CellFont& font = scene_.fonts.cell({}, {});
  const FontInUse in_use(surface_.dc(), font);
  const PaintLook& look = scene_.look;
  SetTextColor(surface_.dc(), look.enabled ? look.colors.fore_header : look.colors.fore_disabled);
  const int line = page.metrics.scale.line(1);
  draw_line(surface_.dc(), font, text,
            {{0, row.top, page.number_width - line, row.bottom() - line}, clip, 5, true, false});
}

void RowPainter::draw_row_marks(const PlacedRow& row, const PixelRect& clip) {
  const GridPage& page = scene_.page;
  const PaintLook& look = scene_.look;
  if (look.row_check_boxes)
    marks_.check_box(grid_layout::row_check_rect(page.metrics, row, page.number_width), clip,
                     facts_.checked);
  if (facts_.image == 0 || scene_.pictures == nullptr || page.columns.empty()) return;
  const PixelRect area =
      grid_layout::row_image_rect(page.metrics, row, page.number_width, look.center_row_image);
  const PixelRect cell = intersect(
      clip,
      grid_layout::cell_face(page.metrics, grid_layout::cell_rect(page.columns.front(), row)));
  if (area.empty() || intersect(area, cell).empty()) return;
  const ClipInUse in_use(surface_.dc(), cell);
  scene_.pictures->draw_image(surface_.dc(), facts_.image, area,
                              facts_.selected && look.selection_on_images);
}

void RowPainter::draw_cells(const PlacedRow& row, const PixelRect& clip) {
  CellPainter painter(surface_.dc(), scene_, marks_);
  for (size_t i = first_; i < end_; ++i) {
    const PixelRect area = grid_layout::cell_rect(scene_.page.columns[i], row);
    const PixelRect seen = intersect(grid_layout::cell_face(scene_.page.metrics, area), clip);
    if (!seen.empty()) painter.draw({cells_[i], area, seen, i == 0, highlighted()});
  }
}

void RowPainter::draw_group(const PlacedRow& row, const PixelRect& clip) {
  const GridPage& page = scene_.page;
  CellFacts facts;
  scene_.contents.group_cell(row.position, facts);
  facts.kind = CellKind::kText;
  if (!facts.own_fore) {
    facts.fore = scene_.look.colors.fore_header;
    facts.own_fore = !facts_.selected;
  }
  const PixelRect area = {page.number_width, row.top, page.columns_right, row.bottom()};
  CellPainter painter(surface_.dc(), scene_, marks_);
  painter.draw({facts, area, intersect(grid_layout::cell_face(page.metrics, area), clip), true,
                highlighted()});
}

}  // namespace kestrelon::grid_paint
