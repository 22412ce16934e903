// Items in a row, with an index over the keys that some of them have.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
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
  /// Position of the item with this key, or 0; an empty key is nobody's. Takes no longer in a long
  /// row than in a short one.
  int32_t find(std::wstring_view key) const {
    if (key.empty()) return 0;
    const auto place = by_key_.find(key);
    return place != by_key_.end() ? place->second->position : 0;
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

  /// Room for `count` items, made at once.
  void reserve(size_t count) {
    items_.reserve(count);
    by_key_.reserve(count);
  }
  /// `position` is at most size() + 1; the key, if any, must be free. A null item has no texts.
  /// Throws only for lack of memory, and then has changed nothing.
  void insert(int32_t position, std::shared_ptr<Item> item) {
    if (items_.size() == items_.capacity()) items_.reserve(items_.size() * 2 + 8);
    if (item && !item->key.empty()) by_key_.emplace(item->key, item.get());
    items_.insert(items_.begin() + (position - 1), std::move(item));
    renumber(position);
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
    by_key_.clear();
    items_.clear();
  }
  /// Gives a key, which must be free, or takes it away. The item belongs to this collection.
  void set_key(Item& item, std::wstring_view key) {
    // The entry of the index looks at the text of the item, so that it moves with it.
    std::wstring kept(key);
    auto entry = item.key.empty() ? Entry() : by_key_.extract(item.key);
    if (kept.empty()) {
      item.key.clear();
      return;
    }
    item.key.swap(kept);
    if (entry.empty()) {
      try {
        by_key_.emplace(item.key, &item);
      } catch (...) {
        item.key.clear();
        throw;
      }
      return;
    }
    entry.key() = item.key;
    by_key_.insert(std::move(entry));
  }
  void swap(KeyedItems& other) noexcept {
    items_.swap(other.items_);
    by_key_.swap(other.by_key_);
  }

 private:
  // The texts are those of the items.
  using Index = std::unordered_map<std::wstring_view, Item*>;
  using Entry = typename Index::node_type;

  std::shared_ptr<Item>& slot(int32_t position) {
    return items_[static_cast<size_t>(position - 1)];
  }
  void drop_key(const Item& item) {
    if (!item.key.empty()) by_key_.erase(item.key);
  }
  void renumber(int32_t from) {
    for (int32_t position = from; position <= size(); ++position)
      if (const auto& item = slot(position)) item->position = position;
  }

  std::vector<std::shared_ptr<Item>> items_;
  Index by_key_;
};

}  // namespace kestrelon
