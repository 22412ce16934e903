// A row of bits that rows of the grid come into and leave: which positions are visible, which rows
// are selected.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kestrelon {

/// Bits from 0 to size() - 1. Inserting, counting and seeking go through whole words, so a million
/// bits cost some microseconds; the total is always known.
class BitRow {
 public:
  int size() const { return size_; }
  int count() const { return count_; }
  bool test(int at) const { return (words_[word(at)] >> (at & 63) & 1) != 0; }
  /// True if that changed the bit.
  bool set(int at, bool value);
  void push_back(bool value);
  void insert(int at, bool value);
  void erase(int at);
  void assign(int size, bool value);
  void clear() { assign(0, false); }
  /// Room for so many bits, so that adding one needs no memory.
  void reserve(int size) { words_.reserve(word(size) + 1); }

  /// The first set bit at or after `at`, the last one at or before; -1 for none. `at` may lie
  /// outside.
  int next(int at) const;
  int previous(int at) const;
  /// Set bits before `at`, and the place of the set bit with `rank` such bits before it, or -1.
  int count_before(int at) const;
  int select(int rank) const;

 private:
  static size_t word(int at) { return static_cast<size_t>(at) >> 6; }

  std::vector<uint64_t> words_;  // bits past the end are 0
  int size_ = 0;
  int count_ = 0;
};

}  // namespace kestrelon
