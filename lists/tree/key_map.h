// Finds a node by its key: numbers of nodes in an open table, the keys themselves stay in the
// store.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "lists/tree/tree_node.h"

namespace kestrelon {

uint32_t hash_key(std::wstring_view key);

class KeyMap {
 public:
  /// `same(id)` tells whether a node has the key that is looked for.
  template <class Same>
  NodeId find(uint32_t hash, Same&& same) const {
    if (slots_.empty()) return kNoNode;
    for (size_t at = hash & mask();; at = (at + 1) & mask()) {
      const Slot& slot = slots_[at];
      if (slot.id == kNoNode) return kNoNode;
      if (slot.hash == hash && same(slot.id)) return slot.id;
    }
  }
  /// The key must not be there yet.
  void insert(uint32_t hash, NodeId id);
  void erase(uint32_t hash, NodeId id);
  void reserve(size_t keys);
  void clear();

 private:
  struct Slot {
    uint32_t hash = 0;
    NodeId id = kNoNode;
  };
  size_t mask() const { return slots_.size() - 1; }
  void grow(size_t size);

  std::vector<Slot> slots_;  // a power of two, at most two thirds taken
  size_t count_ = 0;
};

}  // namespace kestrelon
