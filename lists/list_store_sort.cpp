// Sorting by keys that are made once for each text. The first sort turns keys into ranks; as long
// as no text is new, later ones compare numbers alone.
#include <algorithm>
#include <compare>
#include <cstring>

#include "lists/list_store.h"

namespace kestrelon {

namespace {

using Key = std::span<const uint8_t>;

constexpr size_t kMaxKey = 0xFFFF;

size_t common_length(Key a, Key b) {
  return static_cast<size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first -
                             a.begin());
}

std::strong_ordering compare(Key a, Key b) {
  const size_t common = std::min(a.size(), b.size());
  const int by_bytes = common == 0 ? 0 : std::memcmp(a.data(), b.data(), common);
  return by_bytes != 0 ? by_bytes <=> 0 : a.size() <=> b.size();
}

/// The eight bytes of a key from `from` on as a number that compares as they do: most comparisons
/// end here, without a look at the keys.
uint64_t head_of(Key key, size_t from) {
  uint64_t head = 0;
  for (size_t i = from; i < from + 8; ++i) head = head << 8 | (i < key.size() ? key[i] : 0);
  return head;
}

struct SortEntry {
  uint64_t head;
  uint32_t slot;
};

}  // namespace

void ListStore::make_key(ListEntry& item) {
  if (item.key_length != 0 || item.text_length == 0) return;
  const size_t at = keys_.size();
  collation_->append_key(text_of(item), keys_);
  keys_.resize(std::min(keys_.size(), at + kMaxKey));
  item.key_at = static_cast<uint32_t>(at);
  item.key_length = static_cast<uint16_t>(keys_.size() - at);
}

void ListStore::make_keys() {
  if (dead_keys_ > keys_.size() / 2) {
    keys_.clear();
    dead_keys_ = 0;
    for (ListEntry& item : items_) item.key_length = 0;
  }
  for (const uint32_t slot : order_) make_key(items_[slot]);
}

Key ListStore::key_of(const ListEntry& item) const {
  if (item.key_length == 0) return {};
  return {keys_.data() + item.key_at, item.key_length};
}

std::vector<uint32_t> ListStore::slots_by_key() {
  const Key first = key_of(items_[order_[0]]);
  size_t shared = first.size();  // by all keys: texts of a list often begin alike
  for (const uint32_t slot : order_)
    shared = std::min(shared, common_length(first.first(shared), key_of(items_[slot])));
  std::vector<SortEntry> entries;
  entries.reserve(order_.size());
  for (const uint32_t slot : order_)
    entries.push_back({head_of(key_of(items_[slot]), shared), slot});
  std::sort(entries.begin(), entries.end(), [&](const SortEntry& a, const SortEntry& b) {
    if (a.head != b.head) return a.head < b.head;
    return std::is_lt(compare(key_of(items_[a.slot]), key_of(items_[b.slot])));
  });
  std::vector<uint32_t> slots(entries.size());
  std::transform(entries.begin(), entries.end(), slots.begin(), [](auto& e) { return e.slot; });
  return slots;
}

void ListStore::rank_items() {
  make_keys();
  const std::vector<uint32_t> slots = slots_by_key();
  uint32_t rank = 0;
  for (size_t i = 0; i < slots.size(); ++i) {
    if (i > 0 && std::is_neq(compare(key_of(items_[slots[i - 1]]), key_of(items_[slots[i]]))))
      ++rank;
    items_[slots[i]].rank = rank;
  }
  ranked_ = true;
}

void ListStore::sort(bool descending) {
  if (count() < 2) return;
  if (!ranked_) rank_items();
  // Rank above, present position below: equal ranks keep their order either way.
  std::vector<uint64_t> places;
  places.reserve(order_.size());
  for (size_t i = 0; i < order_.size(); ++i) {
    const uint32_t rank = items_[order_[i]].rank;
    places.push_back(uint64_t{descending ? ~rank : rank} << 32 | i);
  }
  std::sort(places.begin(), places.end());
  const std::vector<uint32_t> former = order_;
  for (size_t i = 0; i < places.size(); ++i) order_[i] = former[static_cast<uint32_t>(places[i])];
  rows_changed();
}

int ListStore::sorted_position(std::wstring_view text) {
  std::vector<uint8_t> key;
  collation_->append_key(text.substr(0, kMaxItemText), key);
  key.resize(std::min(key.size(), kMaxKey));
  const auto place =
      std::upper_bound(order_.begin(), order_.end(), Key(key), [&](Key sought, uint32_t slot) {
        make_key(items_[slot]);
        return std::is_lt(compare(sought, key_of(items_[slot])));
      });
  return static_cast<int>(place - order_.begin());
}

}  // namespace kestrelon
