#include "lists/item_layout.h"

#include <algorithm>

namespace kestrelon {

namespace {

bool within(const PixelRect& rect, int x, int y) {
  return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
}

/// Takes `width` pixels off the beginning of what is left of a row.
class RowCutter {
 public:
  RowCutter(const PixelRect& row, int from)
      : row_(row), left_(std::min(row.left + from, row.right)) {}

  /// A part of the height of the row.
  PixelRect take(int width) {
    const PixelRect part{left_, row_.top, std::min(left_ + width, row_.right), row_.bottom};
    left_ = part.right;
    return part;
  }
  /// A part centred in the height; empty and without a gap behind it where it has no size.
  PixelRect take_centred(int width, int height, int gap) {
    if (width <= 0 || height <= 0) return {};
    PixelRect part = take(width);
    part.top += (row_.bottom - row_.top - height) / 2;
    part.bottom = part.top + height;
    left_ = std::min(left_ + gap, row_.right);
    return part.empty() ? PixelRect{} : part;
  }
  PixelRect rest(int padding) const {
    const PixelRect part{left_, row_.top, row_.right - padding, row_.bottom};
    return part.empty() ? PixelRect{} : part;
  }

 private:
  PixelRect row_;
  int left_;
};

void mirror(ItemParts& parts) {
  for (PixelRect* part : {&parts.expander, &parts.check, &parts.image, &parts.text})
    if (!part->empty()) *part = mirror_rect(*part, parts.row);
}

}  // namespace

ItemMetrics item_metrics(int dpi, int text_height) {
  ItemMetrics metrics;
  metrics.text_height = text_height;
  metrics.padding = scale_pixels(3, dpi);
  metrics.gap = scale_pixels(4, dpi);
  metrics.vertical = scale_pixels(1, dpi);
  return metrics;
}

int item_height(const ItemMetrics& metrics, int lines) {
  const int highest = std::max(
      {metrics.text_height * std::max(lines, 1), metrics.check_side, metrics.image_height});
  return std::max(highest + 2 * metrics.vertical, 1);
}

ItemParts layout_item(const PixelRect& row, const ItemMetrics& metrics, int indent, bool mirrored) {
  ItemParts parts;
  parts.row = row;
  RowCutter cutter(row, indent);
  if (metrics.expander > 0) parts.expander = cutter.take(metrics.expander);
  cutter.take(metrics.padding);
  parts.check = cutter.take_centred(metrics.check_side, metrics.check_side, metrics.gap);
  parts.image = cutter.take_centred(metrics.image_width, metrics.image_height, metrics.gap);
  parts.text = cutter.rest(metrics.padding);
  if (mirrored) mirror(parts);
  return parts;
}

PixelRect mirror_rect(const PixelRect& rect, const PixelRect& area) {
  return {area.left + area.right - rect.right, rect.top, area.left + area.right - rect.left,
          rect.bottom};
}

ItemPart hit_item(const ItemParts& parts, int x, int y) {
  if (!within(parts.row, x, y)) return ItemPart::kNone;
  const auto beside = [x](const PixelRect& part) { return x >= part.left && x < part.right; };
  if (beside(parts.expander)) return ItemPart::kExpander;
  if (beside(parts.check)) return ItemPart::kCheck;
  if (within(parts.image, x, y)) return ItemPart::kImage;
  if (within(parts.text, x, y)) return ItemPart::kText;
  return ItemPart::kRow;
}

}  // namespace kestrelon
