#include "lists/bit_set.h"

#include <algorithm>
#include <bit>
#include <tuple>

namespace kestrelon {

bool BitSet::set(uint32_t bit, bool value) {
  if (test(bit) == value) return false;
  if (bit / 64 >= words_.size()) words_.resize(bit / 64 + 1);
  words_[bit / 64] ^= uint64_t{1} << (bit % 64);
  count_ += value ? 1 : -1;
  return true;
}

bool BitSet::set_range(uint32_t first, uint32_t end) {
  if (first >= end) return false;
  const uint32_t last = (end - 1) / 64;
  if (last >= words_.size()) words_.resize(last + 1);
  const int before = count_;
  for (uint32_t word = first / 64; word <= last; ++word) {
    uint64_t mask = ~uint64_t{0};
    if (word == first / 64) mask &= ~uint64_t{0} << (first % 64);
    if (word == last) mask &= ~uint64_t{0} >> (63 - (end - 1) % 64);
    count_ += std::popcount(mask & ~words_[word]);
    words_[word] |= mask;
  }
  return count_ != before;
}

bool BitSet::clear() {
  const bool changed = count_ != 0;
  words_.clear();
  count_ = 0;
  return changed;
}

bool BitSet::operator==(const BitSet& other) const {
  // Memory beyond the highest bit is chance.
  const auto& [shorter, longer] = words_.size() < other.words_.size()
                                      ? std::tie(words_, other.words_)
                                      : std::tie(other.words_, words_);
  return count_ == other.count_ && std::equal(shorter.begin(), shorter.end(), longer.begin());
}

}  // namespace kestrelon
