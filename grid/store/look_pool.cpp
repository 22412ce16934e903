#include "grid/store/look_pool.h"

#include <functional>

namespace kestrelon {

size_t LookPool::Hash::operator()(const GridLook& look) const {
  size_t hash = std::hash<std::wstring>()(look.font_name);
  for (const uint32_t part : {look.back_color, look.fore_color, static_cast<uint32_t>(look.image),
                              static_cast<uint32_t>(look.hand_pointer)})
    hash = (hash ^ part) * size_t{0x01000193} + (hash >> 15);
  return hash;
}

int LookPool::take_number() {
  while (!free_.empty()) {
    const int style = free_.back();
    Entry& entry = entries_[static_cast<size_t>(style)];
    free_.pop_back();
    entry.listed = false;
    if (entry.uses != 0) continue;  // found new users meanwhile
    numbers_.erase(numbers_.find(*entry.look));
    entry.look = nullptr;
    return style;
  }
  if (size() == kMost) return kFull;
  free_.reserve(entries_.size() + 1);  // so that a release needs no memory
  entries_.emplace_back();
  return size() - 1;
}

int LookPool::acquire(const GridLook& look, int uses) {
  if (const auto known = numbers_.find(look); known != numbers_.end()) {
    add_uses(known->second, uses);
    return known->second;
  }
  // Entered first: a failure to find memory must leave no number without its look.
  const auto entered = numbers_.emplace(look, kFull).first;
  const int style = take_number();
  if (style == kFull) {
    numbers_.erase(entered);
    return kFull;
  }
  entered->second = style;
  entries_[static_cast<size_t>(style)] = {&entered->first, uses, false};
  if (uses == 0) release(style, 0);
  return style;
}

void LookPool::release(int style, int uses) {
  Entry& entry = entries_[static_cast<size_t>(style)];
  entry.uses -= uses;
  if (entry.uses != 0 || entry.listed) return;
  entry.listed = true;
  free_.push_back(style);
}

void LookPool::clear() {
  *this = LookPool();
}

}  // namespace kestrelon
