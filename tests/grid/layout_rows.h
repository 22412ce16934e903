// Rows for layout tests: heights and hidden rows at will, and a count of the questions asked.
#pragma once

#include <algorithm>
#include <set>
#include <vector>

#include "grid/layout/page.h"

namespace kestrelon {

struct TestRows final : grid_layout::Rows {
  int32_t rows = 0;
  std::set<int32_t> visible;  // when `filtered`
  bool filtered = false;
  std::vector<int32_t> heights;  // of the first rows
  int32_t other_height = 20;
  mutable int questions = 0;

  explicit TestRows(int32_t count = 0) : rows(count) {}
  void show_only(std::set<int32_t> some) {
    visible = std::move(some);
    filtered = true;
  }
  int32_t count() const override { return rows; }
  int32_t next_visible(int32_t position) const override {
    ++questions;
    if (!filtered) return std::min(position, rows);
    const auto found = visible.lower_bound(position);
    return found == visible.end() ? rows : *found;
  }
  int32_t previous_visible(int32_t position) const override {
    ++questions;
    if (!filtered) return position;
    const auto found = visible.upper_bound(position);
    return found == visible.begin() ? -1 : *std::prev(found);
  }
  int32_t height(int32_t position) const override {
    ++questions;
    return position < static_cast<int32_t>(heights.size()) ? heights[static_cast<size_t>(position)]
                                                           : other_height;
  }
  bool shows(int32_t position) const { return !filtered || visible.count(position) != 0; }
  /// Height of all visible rows from one to another, both included.
  int64_t between(int32_t from, int32_t to) const {
    int64_t sum = 0;
    for (int32_t i = from; i <= to; ++i)
      if (shows(i)) sum += height(i);
    return sum;
  }
};

}  // namespace kestrelon
