#include "grid/store/column_set.h"

#include <algorithm>
#include <numeric>

#include "base/rounding.h"

namespace kestrelon {

int ColumnSet::position_of(int column) const {
  const auto found = std::find(order_.begin(), order_.end(), column);
  return found == order_.end() ? -1 : static_cast<int>(found - order_.begin());
}

int ColumnSet::add(GridNewColumn&& spec) {
  GridColumn column;
  column.alignment = spec.alignment;
  column.image_alignment = spec.image_alignment;
  column.type = spec.type;
  column.flags = spec.word_wrap ? kGridWordWrap : int16_t{0};
  column.visible = spec.visible;
  column.locked = spec.locked;
  column.heading = std::move(spec.heading);
  column.format = std::move(spec.format);
  column.input_filter = std::move(spec.input_filter);
  if (column.input_filter.empty() && spec.type == GridDataType::Numeric)
    column.input_filter = L"1234567890.-,";
  if (column.input_filter.empty() && spec.type == GridDataType::Date)
    column.input_filter = L"1234567890./-";

  const int index = count();
  columns_.reserve(columns_.size() + 1);
  order_.reserve(order_.size() + 1);
  lines_.push_back({.alignment = static_cast<int32_t>(spec.alignment)});
  columns_.push_back(std::move(column));
  set_width(index, spec.width + 1.0);
  const int position = spec.position > 0 && spec.position < index + 1 ? spec.position : index;
  order_.insert(order_.begin() + position, index);
  return position;
}

void ColumnSet::clear() {
  columns_.clear();
  order_.clear();
  lines_.clear();
}

void ColumnSet::set_scale(double pixels_per_unit) {
  scale_ = pixels_per_unit;
  for (int i = 0; i < count(); ++i) set_width(i, (*this)[i].width);
}

void ColumnSet::set_width(int column, double width) {
  GridColumn& record = (*this)[column];
  // A width comes from files too; layout adds many of them up.
  constexpr double kMost = 1e7;
  record.width = static_cast<float>(width >= 0 ? std::min(width, kMost) : 0);
  record.width_pixels = round_half_even(record.width * scale_);
}

void ColumnSet::set_width_pixels(int column, int pixels) {
  if (scale_ > 0) set_width(column, pixels / scale_);
  (*this)[column].width_pixels = std::max(pixels, 0);
}

bool ColumnSet::set_order(std::span<const int> order) {
  if (order.size() != order_.size()) return false;
  std::vector<bool> seen(order.size());
  for (const int column : order) {
    if (!valid(column) || seen[static_cast<size_t>(column)]) return false;
    seen[static_cast<size_t>(column)] = true;
  }
  std::copy(order.begin(), order.end(), order_.begin());
  return true;
}

bool ColumnSet::move(int from, int to) {
  if (!valid(from) || !valid(to)) return false;
  const auto first = order_.begin();
  if (from < to)
    std::rotate(first + from, first + from + 1, first + to + 1);
  else
    std::rotate(first + to, first + from, first + from + 1);
  return true;
}

bool ColumnSet::swap(int a, int b) {
  if (!valid(a) || !valid(b)) return false;
  std::swap(order_[static_cast<size_t>(a)], order_[static_cast<size_t>(b)]);
  return true;
}

void ColumnSet::restore_order() {
  std::iota(order_.begin(), order_.end(), 0);
}

}  // namespace kestrelon
