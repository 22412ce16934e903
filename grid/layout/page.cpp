#include "grid/layout/page.h"

#include <algorithm>

namespace kestrelon::grid_layout {
namespace {

class Layout {
 public:
  explicit Layout(const PageInput& input) : in_(input) {
    page_.metrics = input.metrics;
    page_.border = input.border ? input.metrics.scale.line(1) : 0;
  }

  GridPage run() {
    settle_bars();
    page_.columns = place_columns(strip(), page_.first_column);
    page_.columns_right = page_.columns.empty() ? page_.number_width : page_.columns.back().right();
    page_.columns_right = std::min(page_.columns_right, page_.inner.right);
    page_.rows_bottom = page_.rows.empty()
                            ? page_.rows_area.top
                            : std::min(page_.rows.back().bottom(), page_.rows_area.bottom);
    return std::move(page_);
  }

 private:
  // Each bar takes room from the other's direction: the second look decides.
  void settle_bars() {
    place_vertically();
    place_sideways();
    if (!page_.horizontal_bar) return;
    place_vertically();
    place_sideways();
  }

  void place_vertically() {
    cut_bands();
    page_.vertical = vertical_range(*in_.rows, page_.rows_room());
    page_.vertical_bar = in_.vertical_bar && page_.vertical.span() > 0;
    page_.first_row = first_row(*in_.rows, page_.rows_room(), in_.first_row);
    page_.rows =
        place_rows(*in_.rows, page_.first_row, page_.rows_area.top, page_.rows_area.bottom);
    page_.last_row = page_.rows.empty() ? -1 : page_.rows.back().position;
  }

  void place_sideways() {
    cut_bands();
    const int32_t largest = in_.numbers_vary ? page_.last_row + 1 : in_.rows->count();
    page_.number_width =
        row_number_width(in_.row_numbers, largest, in_.digit_width, in_.metrics.scale);
    page_.horizontal = horizontal_range(strip());
    page_.horizontal_bar = in_.horizontal_bar && page_.horizontal.span() > 0;
    page_.first_column = first_column(strip(), in_.first_column);
  }

  ColumnStrip strip() const {
    return {in_.columns, in_.freeze_at, page_.number_width, page_.inner.right};
  }

  void cut_bands() {
    const GridMetrics& metrics = in_.metrics;
    const int right = in_.width - page_.border - (page_.vertical_bar ? in_.bar_size : 0);
    const int bottom = in_.height - page_.border - (page_.horizontal_bar ? in_.bar_size : 0);
    page_.inner = {page_.border, page_.border, std::max(right, page_.border),
                   std::max(bottom, page_.border)};
    page_.caption = {0, 0, page_.inner.right, metrics.caption_pixels};
    page_.header = {0, metrics.caption_pixels, page_.inner.right, metrics.header_height};
    const int total = in_.total_line ? metrics.row_h : 0;
    const int rows_end = std::max(page_.inner.bottom - total, metrics.header_height);
    page_.rows_area = {0, metrics.header_height, page_.inner.right, rows_end};
    page_.total_line = {0, rows_end, page_.inner.right, rows_end + total};
  }

  const PageInput& in_;
  GridPage page_;
};

template <class Placed>
const Placed* find_position(const std::vector<Placed>& placed, int32_t position) {
  const auto found =
      std::lower_bound(placed.begin(), placed.end(), position,
                       [](const Placed& item, int32_t wanted) { return item.position < wanted; });
  return found != placed.end() && found->position == position ? &*found : nullptr;
}

}  // namespace

const PlacedRow* GridPage::row(int32_t position) const {
  return find_position(rows, position);
}

const PlacedColumn* GridPage::column(int32_t position) const {
  return find_position(columns, position);
}

GridPage lay_out(const PageInput& input) {
  return Layout(input).run();
}

}  // namespace kestrelon::grid_layout
