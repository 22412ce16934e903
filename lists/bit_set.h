// A set of item numbers that knows its size: selections of millions in one bit each.
#pragma once

#include <cstdint>
#include <vector>

namespace kestrelon {

class BitSet {
 public:
  bool test(uint32_t bit) const {
    return bit / 64 < words_.size() && (words_[bit / 64] >> (bit % 64) & 1) != 0;
  }
  /// True when that changed something. Memory grows to the highest bit that was ever set.
  bool set(uint32_t bit, bool value = true);
  /// Sets the bits from first up to, but not with, end. True when that changed something.
  bool set_range(uint32_t first, uint32_t end);
  bool clear();
  int count() const { return count_; }
  bool operator==(const BitSet& other) const;

 private:
  std::vector<uint64_t> words_;
  int count_ = 0;
};

}  // namespace kestrelon
