#include "grid/paint/cell_painter_win.h"

namespace kestrelon::grid_paint {

void CellPainter::draw(const Cell& cell) {
  const CellFacts& facts = cell.facts;
  const grid_layout::CellShape shape = shape_of(cell);
  const auto parts = grid_layout::cell_parts(scene_.page.metrics, shape);
  if (facts.kind == CellKind::kCheckBox) {
    marks_.check_box(parts.check, cell.clip, facts.checked);
    return draw_image(cell, parts.image);
  }
  if (facts.kind == CellKind::kButton)
    marks_.push_button(grid_layout::cell_face(scene_.page.metrics, cell.area), cell.clip,
                       facts.pressed);
  draw_image(cell, parts.image);
  if (!facts.text.empty()) draw_text(cell, shape);
}

grid_layout::CellShape CellPainter::shape_of(const Cell& cell) const {
  const CellFacts& facts = cell.facts;
  grid_layout::CellShape shape = {cell.area, cell.leads_row,        facts.alignment,
                                  {},        facts.image_alignment, {}};
  if (scene_.pictures == nullptr) return shape;
  if (facts.picture != nullptr) {
    const PixelRect content = grid_layout::cell_parts(scene_.page.metrics, shape).content;
    shape.image = grid_layout::fitted(scene_.pictures->picture_size(facts.picture),
                                      {content.right - content.left, content.bottom - content.top});
  } else if (facts.image != 0) {
    shape.image = scene_.pictures->image_size(facts.image);
  }
  return shape;
}

void CellPainter::draw_image(const Cell& cell, const PixelRect& area) {
  if (area.empty() || intersect(area, cell.clip).empty()) return;
  const ClipInUse in_use(dc_, cell.clip);
  if (cell.facts.picture != nullptr)
    scene_.pictures->draw_picture(dc_, cell.facts.picture, area);
  else
    scene_.pictures->draw_image(dc_, cell.facts.image, area,
                                cell.selected && scene_.look.selection_on_images);
}

bool CellPainter::several_lines(const CellFacts& facts) const {
  if (!scene_.look.word_wrap) return false;
  return facts.wrap || facts.text.find(L'\r') != std::wstring_view::npos;
}

void CellPainter::draw_text(const Cell& cell, grid_layout::CellShape shape) {
  const CellFacts& facts = cell.facts;
  const PaintLook& look = scene_.look;
  const grid_layout::GridMetrics& metrics = scene_.page.metrics;
  const CellFont& font = scene_.fonts.cell(
      facts.font_name, {facts.bold, facts.italic, facts.underline, facts.strikethrough});
  const FontInUse in_use(dc_, font);
  SetTextColor(dc_, text_color(cell));
  auto parts = grid_layout::cell_parts(metrics, shape);
  const bool several = several_lines(facts);
  const int32_t mark = several && scene_.pictures != nullptr ? scene_.contents.expand_image() : 0;
  if (mark != 0 && stands_over(facts, parts.text)) {
    shape.mark = scene_.pictures->image_size(mark);
    parts = grid_layout::cell_parts(metrics, shape);
    const ClipInUse clip(dc_, cell.clip);
    scene_.pictures->draw_image(dc_, mark, parts.mark, false);
  }
  if (grid_layout::down(facts.alignment) != 1 || several) {
    parts.text.top += metrics.vertical_offset;
    parts.text.bottom -= metrics.vertical_offset;
  }
  if (facts.kind == CellKind::kButton && facts.pressed) {
    const int by = metrics.scale.line(1);
    parts.text = {parts.text.left + by, parts.text.top + by, parts.text.right + by,
                  parts.text.bottom + by};
  }
  const TextPlace place = {parts.text, cell.clip, facts.alignment, metrics.ellipsis_flag != 0,
                           look.right_to_left};
  if (several)
    draw_lines(dc_, font, facts.text, place, 0);
  else
    draw_line(dc_, font, facts.text, place);
}

bool CellPainter::stands_over(const CellFacts& facts, const PixelRect& area) const {
  const int room = grid_layout::text_room(scene_.page.metrics, area);
  return wrapped_height(dc_, facts.text, area.right - area.left, false) > room;
}

ColorRef CellPainter::text_color(const Cell& cell) const {
  const GridColors& colors = scene_.look.colors;
  if (!scene_.look.enabled) return colors.fore_disabled;
  if (cell.facts.kind == CellKind::kButton && scene_.look.high_contrast)
    return cell.facts.pressed ? colors.fore_header_over : colors.fore_header;
  const bool own = cell.facts.own_fore && !scene_.look.high_contrast;
  if (cell.selected && !(own && scene_.look.keep_text_color)) return colors.fore_selected;
  return own ? cell.facts.fore : colors.fore;
}

}  // namespace kestrelon::grid_paint
