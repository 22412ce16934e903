#include "grid/layout/hit_test.h"

#include <algorithm>

namespace kestrelon::grid_layout {
namespace {

constexpr int kBand = 4;       // half the width of a resize band, at 96 dpi
constexpr int kCheckEnd = 15;  // last pixel of the strip of the row's check box, at 96 dpi

GridHit header_hit(const GridPage& page, const HitOptions& options, int x) {
  if (options.resize_columns) {
    const int32_t edge = column_edge_at(page.columns, x, page.metrics.scale.px(kBand));
    if (edge >= 0) return {GridPart::kColumnEdge, -1, edge};
  }
  return {GridPart::kHeader, -1, ColumnAtX(page.columns, x)};
}

bool in_row_image(const GridPage& page, const HitOptions& options, const PlacedRow& row, int x,
                  int y) {
  if (page.metrics.row_content_left == page.metrics.row_image_left) return false;
  return contains(row_image_rect(page.metrics, row, page.number_width, options.center_row_image), x,
                  y);
}

GridHit row_hit(const GridPage& page, const HitOptions& options, int x, int y) {
  const int32_t position = RowAtY(page.rows, y);
  if (position < 0) return {};
  if (x < page.number_width) return {GridPart::kRowNumber, position, -1};
  const int32_t column = ColumnAtX(page.columns, x);
  if (column < 0) return {};
  const int strip_end = page.number_width + page.metrics.scale.px(kCheckEnd);
  if (options.row_check_boxes && x <= strip_end) return {GridPart::kRowCheck, position, column};
  if (in_row_image(page, options, *page.row(position), x, y))
    return {GridPart::kRowImage, position, column};
  return {GridPart::kCell, position, column};
}

}  // namespace

GridHit hit_test(const GridPage& page, const HitOptions& options, int x, int y) {
  if (!contains({0, 0, page.inner.right, page.inner.bottom}, x, y)) return {};
  if (y < page.caption.bottom) return {GridPart::kCaption, -1, -1};
  if (options.resize_rows && y >= page.rows_area.top && y < page.rows_area.bottom) {
    const int32_t edge = row_edge_at(page.rows, y, page.metrics.scale.px(kBand));
    if (edge >= 0) return {GridPart::kRowEdge, edge, -1};
  }
  if (y < page.header.bottom) return header_hit(page, options, x);
  if (y >= page.total_line.top && y < page.total_line.bottom)
    return {GridPart::kTotalLine, -1, ColumnAtX(page.columns, x)};
  return row_hit(page, options, x, y);
}

CellPart cell_part_at(const CellParts& parts, bool boolean, int x, int y) {
  if (contains(parts.mark, x, y)) return CellPart::kExpandMark;
  if (boolean && contains(parts.check, x, y)) return CellPart::kCheckBox;
  return contains(parts.image, x, y) ? CellPart::kImage : CellPart::kText;
}

}  // namespace kestrelon::grid_layout
