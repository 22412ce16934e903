#include "grid/layout/cell_rects.h"

#include <algorithm>

namespace kestrelon::grid_layout {
namespace {

int placed(int from, int to, int size, int where) {
  return where == 0 ? from : where == 1 ? from + (to - from - size) / 2 : to - size;
}

// What a left or right aligned image leaves to the text.
PixelRect beside(PixelRect content, const PixelRect& image, int alignment, int gap) {
  if (across(alignment) == 0) content.left = std::min(image.right + gap, content.right);
  if (across(alignment) == 2) content.right = std::max(image.left - gap, content.left);
  return content;
}

}  // namespace

PixelRect aligned(const PixelRect& area, const Size& size, int alignment) {
  const int left = placed(area.left, area.right, size.width, across(alignment));
  const int top = placed(area.top, area.bottom, size.height, down(alignment));
  return {left, top, left + size.width, top + size.height};
}

Size fitted(const Size& size, const Size& room) {
  if (size.empty() || room.empty()) return {};
  if (size.width <= room.width && size.height <= room.height) return size;
  const int64_t wide = int64_t{room.width} * size.height;
  const int64_t high = int64_t{room.height} * size.width;
  if (wide <= high) return {room.width, std::max(static_cast<int>(wide / size.width), 1)};
  return {std::max(static_cast<int>(high / size.height), 1), room.height};
}

PixelRect cell_rect(const PlacedColumn& column, const PlacedRow& row) {
  return {column.left, row.top, column.right(), row.bottom()};
}

PixelRect cell_face(const GridMetrics& metrics, const PixelRect& cell) {
  return {cell.left, cell.top, std::max(cell.right - metrics.line_width, cell.left),
          std::max(cell.bottom - metrics.line_width, cell.top)};
}

PixelRect row_check_rect(const GridMetrics& metrics, const PlacedRow& row, int strip_left) {
  const int side = std::max(metrics.check_box_size - metrics.check_left, 0);
  const PixelRect area = {strip_left + metrics.check_left, row.top,
                          strip_left + metrics.check_left + side,
                          row.bottom() - metrics.line_width};
  return aligned(area, {side, side}, 4);
}

PixelRect row_image_rect(const GridMetrics& metrics, const PlacedRow& row, int strip_left,
                         bool centered) {
  const int left = strip_left + metrics.row_image_left;
  const PixelRect area = {left, row.top + (centered ? 0 : metrics.vertical_offset),
                          left + metrics.image_width, row.bottom() - metrics.line_width};
  return aligned(area, {metrics.image_width, metrics.image_height}, centered ? 4 : 0);
}

PixelRect CellImageRect(const GridMetrics& metrics, const PixelRect& content, const Size& size,
                        int alignment) {
  PixelRect area = content;
  if (down(alignment) != 1) {
    area.top += metrics.vertical_offset;
    area.bottom -= metrics.vertical_offset;
  }
  return aligned(area, size, alignment);
}

CellParts cell_parts(const GridMetrics& metrics, const CellShape& shape) {
  CellParts parts;
  const PixelRect face = cell_face(metrics, shape.cell);
  const int near = shape.leads_row ? metrics.row_content_left : metrics.padding;
  parts.content = {std::min(shape.cell.left + near, face.right), face.top,
                   std::max(face.right - metrics.padding, shape.cell.left), face.bottom};
  parts.content.right = std::max(parts.content.right, parts.content.left);
  const int side = std::max(metrics.check_box_size - metrics.check_left, 0);
  parts.check = CellImageRect(metrics, parts.content, {side, side}, shape.alignment);
  parts.text = parts.content;
  if (!shape.image.empty()) {
    parts.image = CellImageRect(metrics, parts.content, shape.image, shape.image_alignment);
    parts.text = beside(parts.text, parts.image, shape.image_alignment, metrics.scale.px(2));
  }
  if (!shape.mark.empty()) {
    parts.mark = aligned(parts.content, shape.mark, 10);
    parts.text.right = std::clamp(parts.mark.left, parts.text.left, parts.text.right);
  }
  return parts;
}

int text_room(const GridMetrics& metrics, const PixelRect& text) {
  return text.bottom - text.top - 2 * metrics.vertical_offset;
}

int progress_width(int width, double value) {
  const double held = value > 0 ? std::min(value, 100.0) : 0;
  return width <= 0 ? 0 : round_half_even(width / 100.0 * held);
}

PixelRect editor_rect(const GridMetrics& metrics, const PixelRect& cell) {
  const int line = metrics.line_width;
  return {cell.left + line, cell.top + line, std::max(cell.right, cell.left + line),
          std::max(cell.bottom, cell.top + line)};
}

PixelRect focus_rect(const GridPage& page, FocusMode mode, int32_t row, int32_t column) {
  const PlacedRow* const at = page.row(row);
  if (mode == FocusMode::kNone || at == nullptr) return {};
  const int line = page.metrics.line_width;
  if (mode == FocusMode::kRow)
    return {std::max(page.number_width, page.inner.left), at->top,
            std::max(page.columns_right - line, page.number_width), at->bottom() - line};
  const PlacedColumn* const cell = page.column(column);
  if (cell == nullptr) return {};
  return cell_face(page.metrics, cell_rect(*cell, *at));
}

PixelRect highlight_rect(const GridPage& page, const PlacedRow& row, bool check_boxes, bool inset) {
  PixelRect area = {page.number_width, row.top, page.columns_right,
                    row.bottom() - page.metrics.line_width};
  if (check_boxes) area.left += page.metrics.scale.px(14);
  const int by = inset ? page.metrics.scale.line(1) : 0;
  return {area.left + by, area.top + by, area.right - by, area.bottom - by};
}

HeaderParts header_parts(const GridPage& page, int left, int right, bool arrow) {
  const GridMetrics& metrics = page.metrics;
  const Scale& scale = metrics.scale;
  HeaderParts parts;
  parts.cell = {left, page.header.top, right, page.header.bottom};
  parts.text = {left + metrics.padding, page.header.top + scale.px(1), right - metrics.padding,
                page.header.bottom - scale.px(2)};
  if (arrow) {
    const int half = scale.px(4);
    const PixelRect area = {left, page.header.top, right - metrics.padding - scale.px(2),
                            page.header.bottom};
    parts.arrow = aligned(area, {2 * half - 1, half}, 6);
    parts.text.right = parts.arrow.left - scale.px(3);
  }
  parts.text.right = std::max(parts.text.right, parts.text.left);
  return parts;
}

}  // namespace kestrelon::grid_layout
