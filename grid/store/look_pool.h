// The interned formats of cells: colours, font name, hand pointer and image, kept once each.
#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

#include "grid/grid_types.h"

namespace kestrelon {

/// Looks under numbers of 16 bits, each with the number of its users. A look without users keeps
/// its number until another look needs one.
class LookPool {
 public:
  static constexpr int kMost = 32767;
  static constexpr int kFull = -1;

  /// The number of `look`, with `uses` more users; kFull, and nothing changed, if it is a new one
  /// and there is no room.
  int acquire(const GridLook& look, int uses = 1);
  void add_uses(int style, int uses) { entries_[static_cast<size_t>(style)].uses += uses; }
  void release(int style, int uses = 1);
  void clear();

  const GridLook& look(int style) const { return *entries_[static_cast<size_t>(style)].look; }
  int use_count(int style) const { return entries_[static_cast<size_t>(style)].uses; }
  int size() const { return static_cast<int>(entries_.size()); }

 private:
  struct Hash {
    size_t operator()(const GridLook& look) const;
  };
  struct Entry {
    const GridLook* look = nullptr;  // the key in numbers_
    int uses = 0;
    bool listed = false;  // in free_
  };

  int take_number();

  std::unordered_map<GridLook, int, Hash> numbers_;
  std::vector<Entry> entries_;
  std::vector<int> free_;  // numbers that had no users when they came here
};

}  // namespace kestrelon
