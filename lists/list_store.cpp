#include "lists/list_store.h"

#include <algorithm>

namespace kestrelon {

int ListStore::add(std::wstring_view text, int index) {
  if (count() >= kMaxItems) return -1;
  if (index < 0 || index > count()) index = count();
  const TextRef ref = texts_.add(text);
  const uint32_t slot = take_slot();
  items_[slot].text_at = ref.at;
  items_[slot].text_length = ref.length;
  ranked_ = false;
  order_.insert(order_.begin() + index, slot);
  rows_changed();
  return index;
}

void ListStore::reserve(int more) {
  if (more <= 0) return;
  items_.reserve(items_.size() + static_cast<size_t>(more));
  order_.reserve(order_.size() + static_cast<size_t>(more));
}

uint32_t ListStore::take_slot() {
  if (free_.empty()) {
    items_.emplace_back();
    return static_cast<uint32_t>(items_.size() - 1);
  }
  const uint32_t slot = free_.back();
  free_.pop_back();
  items_[slot] = {};
  return slot;
}

void ListStore::remove(int index) {
  if (!has(index)) return;
  const uint32_t removed = slot(index);
  free_.push_back(removed);
  ListEntry& item = items_[removed];
  checked_ -= item.has(ItemFlag::kChecked);
  hidden_ -= item.has(ItemFlag::kHidden);
  texts_.release({item.text_at, item.text_length});
  texts_.release({item.tag_at, item.tag_length});
  dead_keys_ += item.key_length;
  item = {};
  order_.erase(order_.begin() + index);
  rows_changed();
  compact_if_wasteful();
}

void ListStore::clear() {
  items_.clear();
  order_.clear();
  free_.clear();
  texts_.clear();
  keys_.clear();
  shown_.clear();
  dead_keys_ = 0;
  checked_ = hidden_ = 0;
  ranked_ = false;
  rows_changed();
}

bool ListStore::move(int from, int to) {
  if (!has(from) || !has(to)) return false;
  const auto begin = order_.begin();
  if (from < to)
    std::rotate(begin + from, begin + from + 1, begin + to + 1);
  else
    std::rotate(begin + to, begin + from, begin + from + 1);
  rows_changed();
  return true;
}

const ListEntry& ListStore::item(int index) const {
  static const ListEntry none;
  return has(index) ? items_[slot(index)] : none;
}

ListEntry* ListStore::find_item(int index) {
  return has(index) ? &items_[slot(index)] : nullptr;
}

std::wstring_view ListStore::text(int index) const {
  return text_of(item(index));
}

void ListStore::set_text(int index, std::wstring_view text) {
  ListEntry* item = find_item(index);
  if (item == nullptr) return;
  const TextRef ref = texts_.replace({item->text_at, item->text_length}, text);
  item->text_at = ref.at;
  item->text_length = ref.length;
  dead_keys_ += item->key_length;
  item->key_length = 0;
  ranked_ = false;
  compact_if_wasteful();
}

std::wstring_view ListStore::tag(int index) const {
  const ListEntry& found = item(index);
  return texts_.view({found.tag_at, found.tag_length});
}

void ListStore::set_tag(int index, std::wstring_view text) {
  ListEntry* item = find_item(index);
  if (item == nullptr) return;
  const TextRef ref = texts_.replace({item->tag_at, item->tag_length}, text);
  item->tag_at = ref.at;
  item->tag_length = ref.length;
  compact_if_wasteful();
}

bool ListStore::set_flag(int index, ItemFlag flag, bool value) {
  ListEntry* item = find_item(index);
  if (item == nullptr || item->has(flag) == value) return false;
  item->flags ^= static_cast<uint8_t>(flag);
  const int more = value ? 1 : -1;
  if (flag == ItemFlag::kChecked) checked_ += more;
  if (flag == ItemFlag::kHidden) {
    hidden_ += more;
    rows_changed();
  }
  return true;
}

void ListStore::set_data(int index, int32_t data) {
  if (ListEntry* item = find_item(index)) item->data = data;
}

void ListStore::set_image(int index, int32_t image) {
  if (ListEntry* item = find_item(index)) item->image = image;
}

void ListStore::set_fore_color(int index, uint32_t color) {
  if (ListEntry* item = find_item(index)) item->fore_color = color;
}

void ListStore::set_back_color(int index, uint32_t color) {
  if (ListEntry* item = find_item(index)) item->back_color = color;
}

int ListStore::index_of_slot(uint32_t slot) const {
  const auto found = std::find(order_.begin(), order_.end(), slot);
  return found == order_.end() ? -1 : static_cast<int>(found - order_.begin());
}

void ListStore::compact_if_wasteful() {
  if (!texts_.wasteful()) return;
  TextArena fresh;
  const auto copy = [&](uint32_t& at, uint16_t& length) {
    const TextRef ref = fresh.add(texts_.view({at, length}));
    at = ref.at;
    length = ref.length;
  };
  for (ListEntry& item : items_) {
    copy(item.text_at, item.text_length);
    copy(item.tag_at, item.tag_length);
  }
  texts_.swap(fresh);
}

}  // namespace kestrelon
