#include "lists/list_model.h"

#include <algorithm>

namespace kestrelon {

void ListModel::set_virtual_count(int count) {
  selected_.clear();
  current_ = anchor_ = -1;
  virtual_count_ = std::max(count, 0);
}

// --- rows --------------------------------------------------------------------------------------

int ListModel::row_count() const {
  if (is_virtual() || store_.all_shown()) return count();
  return static_cast<int>(store_.shown().size());
}

int ListModel::index_of_row(int row) const {
  if (row < 0 || row >= row_count()) return -1;
  return is_virtual() || store_.all_shown() ? row : store_.shown()[static_cast<size_t>(row)];
}

int ListModel::row_of_index(int index) const {
  if (is_virtual() || store_.all_shown()) return index;
  const auto shown = store_.shown();
  return static_cast<int>(std::lower_bound(shown.begin(), shown.end(), index) - shown.begin());
}

bool ListModel::shows(int index) const {
  return has(index) && (is_virtual() || !store_.has_flag(index, ItemFlag::kHidden));
}

bool ListModel::selectable(int index) const {
  if (!has(index)) return false;
  return is_virtual() || !(store_.has_flag(index, ItemFlag::kHeader) ||
                           store_.has_flag(index, ItemFlag::kDisabled));
}

int ListModel::nearest(int row, bool down) const {
  const int rows = row_count(), by = down ? 1 : -1;
  for (int i = std::clamp(row, 0, std::max(rows - 1, 0)); i >= 0 && i < rows; i += by)
    if (selectable(index_of_row(i))) return index_of_row(i);
  for (int i = std::min(row, rows) - by; i >= 0 && i < rows; i -= by)
    if (selectable(index_of_row(i))) return index_of_row(i);
  return -1;
}

int ListModel::find_choice(const TextMatcher& matcher, int start, int column) const {
  for (int i = start; store_.has(i); ++i) {
    i = store_.find(matcher, i, column);
    if (i < 0 || (shows(i) && selectable(i))) return i;
  }
  return -1;
}

int ListModel::find_ahead(const TextMatcher& matcher, bool from_next, int column) const {
  const int start = std::max(current_, 0) + (from_next && current_ >= 0 ? 1 : 0);
  const int found = find_choice(matcher, start, column);
  return found >= 0 ? found : find_choice(matcher, 0, column);
}

int ListModel::step(int rows) const {
  if (row_count() == 0) return -1;
  if (current_ < 0) return nearest(rows > 0 ? 0 : row_count() - 1, rows > 0);
  int row = row_of_index(current_);
  // From a hidden item the next row is already the one that stands in its place.
  if (!shows(current_) && rows > 0) --row;
  return nearest(std::clamp(row + rows, 0, row_count() - 1), rows > 0);
}

// --- order and contents --------------------------------------------------------------------------

void ListModel::shift_marks(int from, int by) {
  if (current_ >= from) current_ += by;
  if (anchor_ >= from) anchor_ += by;
}

int ListModel::add(std::wstring_view text, int index) {
  if (is_virtual()) return -1;
  const int at = store_.add(text, index);
  if (at < 0) return -1;
  selected_.set(store_.slot(at), false);  // the record may have been another item's
  shift_marks(at, 1);
  return new_index_ = at;
}

bool ListModel::remove(int index) {
  if (is_virtual() || !store_.has(index)) return false;
  const bool was_current = index == current_;
  bool changed = selected_.set(store_.slot(index), false) || was_current;
  store_.remove(index);
  if (anchor_ == index) anchor_ = -1;
  new_index_ = -1;
  if (!was_current) {
    changed = changed || current_ > index;
    shift_marks(index + 1, -1);
    return changed;
  }
  shift_marks(index + 1, -1);
  current_ = nearest(std::min(row_of_index(index), row_count() - 1), true);
  if (mode_ == SelectMode::kSingle && current_ >= 0) select_alone(current_);
  return true;
}

bool ListModel::clear() {
  const bool changed = current_ >= 0 || selected_.count() > 0;
  store_.clear();
  selected_.clear();
  current_ = anchor_ = new_index_ = -1;
  return changed;
}

bool ListModel::move(int from, int to) {
  if (is_virtual() || !store_.move(from, to)) return false;
  const auto follow = [=](int mark) {
    if (mark == from) return to;
    if (from < mark && mark <= to) return mark - 1;
    return to <= mark && mark < from ? mark + 1 : mark;
  };
  current_ = follow(current_);
  anchor_ = follow(anchor_);
  new_index_ = -1;
  return true;
}

void ListModel::sort(bool descending) {
  if (is_virtual()) return;
  const uint32_t current = current_ >= 0 ? store_.slot(current_) : 0;
  store_.sort(descending);
  if (current_ >= 0) current_ = store_.index_of_slot(current);
  anchor_ = current_;
  new_index_ = -1;
}

}  // namespace kestrelon
