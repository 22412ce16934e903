// Items that the program holds itself: asked for when they show, kept while they are near.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kestrelon {

struct VirtualItem {
  int index = -1;
  std::wstring text;
  int32_t image = 0;
  bool checked = false;
};

/// The last two pages of items. An item's place is its index modulo the capacity, so that no two of
/// a run that shows displace each other.
class VirtualItems {
 public:
  /// Room for two pages of `rows` rows; keeps what it holds when that is the same.
  void set_page(int rows);
  /// The item if it is kept, else null. Valid until the next call of another member.
  const VirtualItem* find(int index) const;
  /// Keeps an item. An answer that was asked for before `forget` ran is out of date: `asked` is
  /// what age() was when it was asked.
  void keep(VirtualItem item, uint32_t asked);
  void forget();
  uint32_t age() const { return age_; }

 private:
  size_t place(int index) const { return static_cast<size_t>(index) % items_.size(); }

  std::vector<VirtualItem> items_;
  uint32_t age_ = 0;
};

}  // namespace kestrelon
