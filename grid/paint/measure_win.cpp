#include "grid/paint/measure_win.h"

namespace kestrelon::grid_paint {
namespace {

using grid_layout::CellParts;
using grid_layout::CellShape;

const CellFont& font_of(const Measuring& with, const CellFacts& facts) {
  return with.fonts.cell(facts.font_name,
                         {facts.bold, facts.italic, facts.underline, facts.strikethrough});
}

grid_layout::Size image_of(const Measuring& with, const CellFacts& facts) {
  if (with.pictures == nullptr) return {};
  if (facts.picture != nullptr) return with.pictures->picture_size(facts.picture);
  return facts.image != 0 ? with.pictures->image_size(facts.image) : grid_layout::Size{};
}

// As wide as the painter's text, so that both break lines at the same words.
int text_width(const Measuring& with, const CellFacts& facts, int column_width, bool leads_row) {
  const CellShape shape = {{0, 0, column_width, with.metrics.row_h},
                           leads_row,
                           facts.alignment,
                           image_of(with, facts),
                           facts.image_alignment,
                           {}};
  const CellParts parts = grid_layout::cell_parts(with.metrics, shape);
  return parts.text.right - parts.text.left;
}

int cell_height(const Measuring& with, const CellFacts& facts, int width) {
  if (facts.text.empty() || facts.kind == CellKind::kCheckBox) return 0;
  const CellFont& font = font_of(with, facts);
  const bool several = facts.wrap || facts.text.find(L'\r') != std::wstring_view::npos;
  if (!several) return font.height;
  const FontInUse in_use(with.dc, font);
  return wrapped_height(with.dc, facts.text, width, with.metrics.ellipsis_flag != 0);
}

int cell_width(const Measuring& with, const CellFacts& facts) {
  const grid_layout::GridMetrics& metrics = with.metrics;
  const grid_layout::Size image = image_of(with, facts);
  int width = image.empty() ? 0 : image.width + metrics.scale.px(2);
  if (facts.kind == CellKind::kCheckBox) return width + metrics.check_box_size;
  const FontInUse in_use(with.dc, font_of(with, facts));
  for (std::wstring_view rest = facts.text; !rest.empty();) {
    const size_t end = std::min(rest.find_first_of(L"\r\n"), rest.size());
    width = std::max(width, line_width(with.dc, rest.substr(0, end)) +
                                (image.empty() ? 0 : image.width + metrics.scale.px(2)));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return width;
}

}  // namespace

int MeasureRowHeight(const Measuring& with, std::span<const grid_layout::Column> columns,
                     int32_t row, int max_line_count) {
  if (!with.look.word_wrap) return with.metrics.row_h;
  int tallest = 0;
  bool leads_row = true;
  CellFacts facts;
  for (const grid_layout::Column& column : columns) {
    if (!column.visible) continue;
    facts.clear();
    with.contents.cell(row, column.store, facts);
    const int width = text_width(with, facts, column.width, leads_row);
    tallest = std::max(tallest, cell_height(with, facts, width));
    leads_row = false;
  }
  return grid_layout::measured_row_height(with.metrics, tallest, max_line_count);
}

int auto_column_width(const Measuring& with, int32_t column, int32_t row_count, bool leads_row) {
  const grid_layout::GridMetrics& metrics = with.metrics;
  int widest = 0;
  CellFacts facts;
  for (int32_t row = 0; row < row_count; ++row) {
    facts.clear();
    with.contents.cell(row, column, facts);
    widest = std::max(widest, cell_width(with, facts));
  }
  const int before = leads_row ? metrics.row_content_left : metrics.padding;
  const HeadingFacts heading = with.contents.heading(column);
  const FontInUse in_use(with.dc, with.fonts.header());
  const int arrow = heading.sort != 0 ? metrics.scale.px(4) * 2 + metrics.scale.px(5) : 0;
  const int title = 2 * metrics.padding + line_width(with.dc, heading.text) + arrow;
  return std::max(before + widest + metrics.padding + metrics.line_width,
                  title + metrics.line_width);
}

}  // namespace kestrelon::grid_paint
