#include "grid/paint/grid_painter_win.h"

#include "frame/kit/blit.h"

namespace kestrelon::grid_paint {
namespace {

// The room below the rows; the upright lines go on to its bottom unless there are no rows at all.
void draw_rest(Surface& surface, const GridScene& scene, const PixelRect& clip) {
  const GridPage& page = scene.page;
  const PixelRect rest = {0, page.rows_bottom, page.inner.right, page.rows_area.bottom};
  const PixelRect seen = intersect(scene.seen(rest), clip);
  if (seen.empty()) return;
  const Paper paper(surface.pixels(), seen);
  paper.fill(seen, scene.look.colors.background);
  if (page.rows.empty() || !scene.look.lines.vertical) return;
  const int line = page.metrics.line_width;
  for (const PlacedColumn& column : page.columns)
    paper.fill({column.right() - line, rest.top, column.right(), rest.bottom},
               scene.look.colors.grid);
}

void draw_rows(Surface& surface, const GridScene& scene, const PixelRect& clip) {
  RowPainter painter(surface, scene);
  for (const PlacedRow& row : scene.page.rows) painter.draw(row, clip);
}

}  // namespace

void draw_area(Surface& surface, const GridScene& scene, const PixelRect& area) {
  HeaderPainter header(surface, scene);
  header.DrawCaption(area);
  header.DrawHeader(area);
  draw_rows(surface, scene, area);
  draw_rest(surface, scene, area);
  header.draw_total_line(area);
}

void DrawGrid(Surface& surface, const GridScene& scene, ColorRef border) {
  const PixelRect all = {0, 0, surface.width(), surface.height()};
  const Paper paper(surface.pixels(), all);
  paper.fill(all, scene.look.colors.background);
  paper.frame(all, border, scene.page.border);
  draw_area(surface, scene, scene.page.inner);
}

void draw_damage(Surface& surface, const GridScene& scene, const grid_layout::Damage& damage) {
  if (damage.move_by != 0) {
    const PixelRect& from = damage.moved;
    const PixelView pixels = surface.pixels();
    blit(pixels,
         {from.left, from.top + damage.move_by, from.right - from.left, from.bottom - from.top,
          from.left, from.top},
         pixels);
  }
  for (const PixelRect& area : damage.draw) draw_area(surface, scene, area);
}

}  // namespace kestrelon::grid_paint
