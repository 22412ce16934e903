// Items in a row, with a sorted index over the keys that some of them have.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "imaging/image_list/item_data.h"
#include "imaging/image_list/list_error.h"

namespace kestrelon {

/// How a caller names an item: by its position from 1 or by its key.
using ItemIndex = std::variant<int64_t, std::wstring>;

/// Positions count from 1. Keys are told apart by their code units, upper from lower case. An item
/// without texts need not exist: it is made when someone asks for it.
template <class Item>
class KeyedItems {
 public:
  int32_t size() const { return static_cast<int32_t>(items_.size()); }
  bool has(int64_t position) const { return position >= 1 && position <= size(); }
  /// Position of the item with this key, or 0; an empty key is nobody's. Logarithmic.
  int32_t find(std::wstring_view key) const {
    if (key.empty()) return 0;
    const auto place = lower_bound(key);
    return place != by_key_.end() && (*place)->key == key ? (*place)->position : 0;
  }
  /// Position of the item that is named; throws an error from `source` if there is none.
  int32_t resolve(const ItemIndex& index, const wchar_t* source) const {
    if (const auto* const key = std::get_if<std::wstring>(&index)) {
      if (const int32_t position = find(*key)) return position;
    } else if (has(std::get<int64_t>(index))) {
      return static_cast<int32_t>(std::get<int64_t>(index));
    }
    throw_invalid_item(source);
  }

  /// The item at `position`, where all items exist.
  const std::shared_ptr<Item>& at_existing(int32_t position) const {
    return items_[static_cast<size_t>(position - 1)];
  }
  /// The item at `position`, made on demand.
  std::shared_ptr<Item> at(int32_t position) {
    auto& item = slot(position);
    if (!item) {
      item = std::make_shared<Item>();
      item->position = position;
    }
    return item;
  }
  /// The same, null while nobody has asked for it and it has no texts.
  const Item* peek(int32_t position) const {
    return items_[static_cast<size_t>(position - 1)].get();
  }

  /// Room for `count` items, so that insert() of them does not throw.
  void reserve(size_t count) {
    items_.reserve(count);
    by_key_.reserve(count);
  }
  /// `position` is at most size() + 1; the key, if any, must be free. A null item has no texts.
  void insert(int32_t position, std::shared_ptr<Item> item) {
    make_room_for_key();
    Item* const added = item.get();
    items_.insert(items_.begin() + (position - 1), std::move(item));
    renumber(position);
    if (added != nullptr && !added->key.empty()) by_key_.insert(lower_bound(added->key), added);
  }
  /// Appends items without texts.
  void append_plain(int32_t count) { items_.resize(items_.size() + static_cast<size_t>(count)); }
  void remove(int32_t position) {
    const auto item = std::move(slot(position));
    items_.erase(items_.begin() + (position - 1));
    renumber(position);
    if (!item) return;
    drop_key(*item);
    item->position = 0;
  }
  void clear() {
    for (const auto& item : items_)
      if (item) item->position = 0;
    items_.clear();
    by_key_.clear();
  }
  /// Gives a key, which must be free, or takes it away. The item belongs to this collection.
  void set_key(Item& item, std::wstring_view key) {
    make_room_for_key();
    std::wstring copy(key);
    drop_key(item);
    item.key = std::move(copy);
    if (!item.key.empty()) by_key_.insert(lower_bound(item.key), &item);
  }
  void swap(KeyedItems& other) noexcept {
    items_.swap(other.items_);
    by_key_.swap(other.by_key_);
  }

 private:
  std::shared_ptr<Item>& slot(int32_t position) {
    return items_[static_cast<size_t>(position - 1)];
  }
  auto lower_bound(std::wstring_view key) const {
    return std::lower_bound(
        by_key_.begin(), by_key_.end(), key,
        [](const Item* item, std::wstring_view wanted) { return item->key < wanted; });
  }
  void drop_key(const Item& item) {
    if (!item.key.empty()) by_key_.erase(lower_bound(item.key));
  }
  // So that the index takes a key without an exception.
  void make_room_for_key() {
    if (by_key_.size() == by_key_.capacity()) by_key_.reserve(by_key_.size() * 2 + 8);
  }
  void renumber(int32_t from) {
    for (int32_t position = from; position <= size(); ++position)
      if (const auto& item = slot(position)) item->position = position;
  }

  std::vector<std::shared_ptr<Item>> items_;
  std::vector<Item*> by_key_;  // in the order of their keys
};

}  // namespace kestrelon
