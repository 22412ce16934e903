// The columns of a grid: their records in the order of creation, the order shown, total lines.
#pragma once

#include <span>
#include <vector>

#include "grid/grid_types.h"

namespace kestrelon {

/// What a new column is made of; the defaults are those of the public member.
struct GridNewColumn {
  std::wstring heading = {};
  double width = 500;  ///< container units; the column gets 1 more
  GridAlignment alignment = GridAlignment::LeftCenter;
  GridDataType type = GridDataType::String;
  std::wstring format = {};
  std::wstring input_filter = {};
  GridAlignment image_alignment = GridAlignment::LeftCenter;
  bool word_wrap = false;
  int position = 0;  ///< 0, or anything that is no position of another column: last
  bool visible = true;
  bool locked = false;
};

class ColumnSet {
 public:
  int count() const { return static_cast<int>(columns_.size()); }
  bool valid(int index) const { return index >= 0 && index < count(); }
  GridColumn& operator[](int column) { return columns_[static_cast<size_t>(column)]; }
  const GridColumn& operator[](int column) const { return columns_[static_cast<size_t>(column)]; }
  GridTotalLine& total_line(int column) { return lines_[static_cast<size_t>(column)]; }
  const GridTotalLine& total_line(int column) const { return lines_[static_cast<size_t>(column)]; }

  int at(int position) const { return order_[static_cast<size_t>(position)]; }
  int position_of(int column) const;
  const std::vector<int>& order() const { return order_; }

  /// Gives the position where the new column is shown.
  int add(GridNewColumn&& spec);
  void clear();

  /// Container units times this are pixels. Converts the widths of all columns anew.
  void set_scale(double pixels_per_unit);
  double scale() const { return scale_; }
  void set_width(int column, double width);
  /// A drag of the column's edge: the width in container units follows.
  void set_width_pixels(int column, int pixels);

  /// False, and nothing changed, unless `order` names every column once.
  bool set_order(std::span<const int> order);
  /// Moves the entry at one position to another, those between make room; false for a bad position.
  bool move(int from, int to);
  bool swap(int a, int b);
  void restore_order();

 private:
  std::vector<GridColumn> columns_;
  std::vector<int> order_;
  std::vector<GridTotalLine> lines_;
  double scale_ = 1;
};

}  // namespace kestrelon
