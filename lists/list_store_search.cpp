// Finding and filtering.
#include "lists/list_store.h"

namespace kestrelon {

/// After sorting, neighbours lie far apart in memory: what comes soon is asked for early.
void ListStore::fetch_ahead(int index) const {
  constexpr int kRecords = 24, kTexts = 12;  // items ahead
  if (has(index + kRecords)) __builtin_prefetch(&items_[slot(index + kRecords)]);
  if (has(index + kTexts)) __builtin_prefetch(text_of(items_[slot(index + kTexts)]).data());
}

int ListStore::find(const TextMatcher& matcher, int start, int column) const {
  if (matcher.matches_nothing()) return -1;
  for (int i = has(start) ? start : 0; i < count(); ++i) {
    fetch_ahead(i);
    if (matcher.matches(column_text(text_of(items_[slot(i)]), column))) return i;
  }
  return -1;
}

bool ListStore::hide_others(const TextMatcher& matcher, int column) {
  if (matcher.matches_nothing()) return false;
  const int before = hidden_;
  for (int i = 0; i < count(); ++i) {
    fetch_ahead(i);
    ListEntry& item = items_[slot(i)];
    if (item.has(ItemFlag::kHidden) || matcher.matches(column_text(text_of(item), column)))
      continue;
    item.flags |= static_cast<uint8_t>(ItemFlag::kHidden);
    ++hidden_;
  }
  if (hidden_ != before) rows_changed();
  return hidden_ != before;
}

bool ListStore::show_all() {
  if (hidden_ == 0) return false;
  for (ListEntry& item : items_) item.flags &= ~static_cast<uint8_t>(ItemFlag::kHidden);
  hidden_ = 0;
  rows_changed();
  return true;
}

std::span<const int32_t> ListStore::shown() const {
  if (!shown_valid_) {
    shown_.clear();
    shown_.reserve(order_.size() - static_cast<size_t>(hidden_));
    for (int i = 0; i < count(); ++i)
      if (!items_[slot(i)].has(ItemFlag::kHidden)) shown_.push_back(i);
    shown_valid_ = true;
  }
  return shown_;
}

}  // namespace kestrelon
