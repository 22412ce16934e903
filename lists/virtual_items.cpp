#include "lists/virtual_items.h"

#include <algorithm>
#include <utility>

namespace kestrelon {

void VirtualItems::set_page(int rows) {
  const auto capacity = static_cast<size_t>(std::max(rows, 1)) * 2;
  if (capacity == items_.size()) return;
  items_.clear();
  items_.resize(capacity);
}

const VirtualItem* VirtualItems::find(int index) const {
  if (items_.empty() || index < 0) return nullptr;
  const VirtualItem& item = items_[place(index)];
  return item.index == index ? &item : nullptr;
}

void VirtualItems::keep(VirtualItem item, uint32_t asked) {
  if (asked != age_ || items_.empty() || item.index < 0) return;
  items_[place(item.index)] = std::move(item);
}

void VirtualItems::forget() {
  ++age_;
  for (VirtualItem& item : items_) item.index = -1;
}

}  // namespace kestrelon
