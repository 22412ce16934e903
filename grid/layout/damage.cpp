#include "grid/layout/damage.h"

#include <algorithm>

namespace kestrelon::grid_layout {
namespace {

bool same_frame(const Shown& a, const Shown& b) {
  return a.look == b.look && a.inner == b.inner && a.header == b.header &&
         a.rows_area == b.rows_area && a.total_line == b.total_line &&
         a.number_width == b.number_width && a.columns == b.columns &&
         a.headers.size() == b.headers.size();
}

const ShownRow* find_row(const Shown& shown, int32_t position) {
  const auto found = std::lower_bound(
      shown.rows.begin(), shown.rows.end(), position,
      [](const ShownRow& row, int32_t wanted) { return row.place.position < wanted; });
  return found != shown.rows.end() && found->place.position == position ? &*found : nullptr;
}

class Comparison {
 public:
  Comparison(const Shown& before, const Shown& now) : before_(before), now_(now) {}

  Damage run() {
    if (!same_frame(before_, now_)) {
      add(now_.inner);
      return std::move(damage_);
    }
    compare_headers();
    find_move();
    for (const ShownRow& row : now_.rows) compare_row(row);
    compare_rest();
    if (before_.totals != now_.totals) add(now_.total_line);
    return std::move(damage_);
  }

 private:
  void compare_headers() {
    for (size_t i = 0; i < now_.headers.size(); ++i)
      if (now_.headers[i] != before_.headers[i])
        add({now_.columns[i].left, now_.header.top, now_.columns[i].right(), now_.header.bottom});
  }

  // All rows that stay in view move by as much as the first of them, or are drawn.
  void find_move() {
    for (const ShownRow& row : now_.rows) {
      const ShownRow* const old = find_row(before_, row.place.position);
      if (old == nullptr) continue;
      by_ = row.place.top - old->place.top;
      break;
    }
    if (by_ == 0) return;
    const PixelRect& area = now_.rows_area;
    damage_.moved = {now_.inner.left, std::max(area.top, area.top - by_), area.right,
                     std::min(area.bottom, area.bottom - by_)};
    if (damage_.moved.empty())
      damage_.moved = {};
    else
      damage_.move_by = by_;
  }

  // Whether rows top to bottom of the area show, after the move, what they showed before.
  bool carried(int top, int bottom) const {
    const PixelRect& area = now_.rows_area;
    return top - by_ >= area.top && bottom - by_ <= area.bottom;
  }

  void compare_row(const ShownRow& row) {
    const PixelRect& area = now_.rows_area;
    const int top = row.place.top;
    const int bottom = std::min(row.place.bottom(), area.bottom);
    const ShownRow* const old = find_row(before_, row.place.position);
    const bool stays = old != nullptr && old->state == row.state &&
                       old->place.height == row.place.height && old->place.top + by_ == top &&
                       carried(top, bottom);
    if (stays)
      compare_focus(top, bottom);
    else
      add({area.left, top, area.right, bottom});
  }

  // The focus mark lies within one row, so its old and new place are looked for row by row.
  void compare_focus(int top, int bottom) {
    PixelRect old = before_.focus;
    old.top += by_;
    old.bottom += by_;
    if (old == now_.focus) return;
    for (const PixelRect& mark : {old, now_.focus})
      if (!mark.empty() && mark.top < bottom && mark.bottom > top)
        add({mark.left, std::max(mark.top, top), mark.right, std::min(mark.bottom, bottom)});
  }

  // The room below the last row, where the upright lines go on if there is a row at all.
  void compare_rest() {
    const PixelRect& area = now_.rows_area;
    const int end = now_.rows.empty() ? area.top : now_.rows.back().place.bottom();
    const int old_end = before_.rows.empty() ? area.top : before_.rows.back().place.bottom();
    const bool lines_change = now_.rows.empty() != before_.rows.empty();
    if (end < area.bottom && (by_ != 0 || old_end > end || lines_change))
      add({area.left, end, area.right, area.bottom});
  }

  void add(PixelRect area) {
    area = intersect(area, now_.inner);
    if (area.empty()) return;
    if (!damage_.draw.empty()) {
      PixelRect& last = damage_.draw.back();
      if (last.left == area.left && last.right == area.right && last.bottom == area.top) {
        last.bottom = area.bottom;
        return;
      }
    }
    damage_.draw.push_back(area);
  }

  const Shown& before_;
  const Shown& now_;
  Damage damage_;
  int by_ = 0;
};

}  // namespace

Shown shown_page(const GridPage& page) {
  Shown shown;
  shown.inner = page.inner;
  shown.header = page.header;
  shown.rows_area = page.rows_area;
  shown.total_line = page.total_line;
  shown.number_width = page.number_width;
  shown.columns_right = page.columns_right;
  shown.columns = page.columns;
  shown.headers.assign(page.columns.size(), 0);
  shown.rows.reserve(page.rows.size());
  for (const PlacedRow& row : page.rows) shown.rows.push_back({row, 0});
  return shown;
}

Damage damage_between(const Shown& before, const Shown& now) {
  return Comparison(before, now).run();
}

}  // namespace kestrelon::grid_layout
