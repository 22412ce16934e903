// The current item and the selection in the three modes.
#include <algorithm>

#include "lists/list_model.h"

namespace kestrelon {

void ListModel::set_mode(SelectMode mode) {
  mode_ = mode;
  if (mode == SelectMode::kSingle) select_alone(current_);
}

bool ListModel::select_alone(int index) {
  if (selected(index) && selected_.count() == 1) return false;
  const bool had = selected_.clear();
  return selectable(index) ? selected_.set(bit(index)) : had;
}

bool ListModel::set_current(int index) {
  if (!has(index)) index = -1;
  const bool moved = index != current_;
  current_ = anchor_ = index;
  return (mode_ == SelectMode::kSingle && select_alone(index)) || moved;
}

bool ListModel::selected(int index) const {
  return has(index) && selected_.test(bit(index));
}

bool ListModel::set_selected(int index, bool value) {
  if (!selectable(index) || selected(index) == value) return false;
  if (mode_ == SelectMode::kSingle) return set_current(value ? index : -1);
  return selected_.set(bit(index), value);
}

bool ListModel::select_all() {
  if (mode_ == SelectMode::kSingle) return false;
  const int before = selected_.count();
  select_range(0, count() - 1);
  return selected_.count() != before;
}

bool ListModel::unselect_all() {
  if (mode_ == SelectMode::kSingle) return set_current(-1);
  return selected_.clear();
}

void ListModel::select_range(int from, int to) {
  if (from > to) std::swap(from, to);
  if (is_virtual()) {
    selected_.set_range(static_cast<uint32_t>(from), static_cast<uint32_t>(to) + 1);
    return;
  }
  const auto barred = static_cast<uint8_t>(ItemFlag::kHidden) |
                      static_cast<uint8_t>(ItemFlag::kHeader) |
                      static_cast<uint8_t>(ItemFlag::kDisabled);
  for (int i = from; i <= to; ++i)
    if ((store_.item(i).flags & barred) == 0) selected_.set(store_.slot(i));
}

bool ListModel::toggle(int index) {
  return selected_.set(bit(index), !selected(index));
}

bool ListModel::choose(int index, Choice how) {
  if (!selectable(index)) return false;
  const bool moved = index != current_;
  const bool extends = how == Choice::kExtend || how == Choice::kExtendKeep;
  const int anchor = has(anchor_) ? anchor_ : current_ >= 0 ? current_ : index;
  current_ = index;
  if (!extends) anchor_ = index;
  if (mode_ == SelectMode::kSingle) return select_alone(index) || moved;
  if (how == Choice::kMark) return moved;
  if (how == Choice::kToggle) return toggle(index) || moved;
  if (how == Choice::kPlain) return select_alone(index) || moved;
  anchor_ = anchor;
  const BitSet before = selected_;
  if (how == Choice::kExtend) selected_.clear();
  select_range(anchor, index);
  return moved || before != selected_;
}

bool ListModel::drag_to(int index) {
  if (!selectable(index) || index == current_) return false;
  return choose(index, mode_ == SelectMode::kLatch ? Choice::kExtendKeep : Choice::kExtend);
}

}  // namespace kestrelon
