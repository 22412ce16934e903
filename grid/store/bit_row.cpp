#include "grid/store/bit_row.h"

#include <algorithm>
#include <bit>

namespace kestrelon {
namespace {

constexpr uint64_t below(int bit) {  // 0 to 63
  return (uint64_t{1} << bit) - 1;
}

}  // namespace

bool BitRow::set(int at, bool value) {
  if (test(at) == value) return false;
  words_[word(at)] ^= uint64_t{1} << (at & 63);
  count_ += value ? 1 : -1;
  return true;
}

void BitRow::push_back(bool value) {
  if ((size_ & 63) == 0) words_.push_back(0);
  ++size_;
  if (value) set(size_ - 1, true);
}

void BitRow::insert(int at, bool value) {
  push_back(false);
  const size_t first = word(at);
  for (size_t i = words_.size() - 1; i > first; --i)
    words_[i] = words_[i] << 1 | words_[i - 1] >> 63;
  const uint64_t keep = below(at & 63);
  words_[first] = (words_[first] & keep) | (words_[first] & ~keep) << 1;
  if (value) set(at, true);
}

void BitRow::erase(int at) {
  set(at, false);
  const size_t first = word(at);
  const uint64_t keep = below(at & 63);
  words_[first] = (words_[first] & keep) | (words_[first] >> 1 & ~keep);
  for (size_t i = first + 1; i < words_.size(); ++i) {
    words_[i - 1] |= words_[i] << 63;
    words_[i] >>= 1;
  }
  --size_;
  if ((size_ & 63) == 0) words_.pop_back();
}

void BitRow::assign(int size, bool value) {
  words_.assign((static_cast<size_t>(size) + 63) / 64, value ? ~uint64_t{0} : 0);
  if (value && (size & 63) != 0) words_.back() = below(size & 63);
  size_ = size;
  count_ = value ? size : 0;
}

int BitRow::next(int at) const {
  at = std::max(at, 0);
  if (at >= size_) return -1;
  uint64_t bits = words_[word(at)] & ~below(at & 63);
  for (size_t i = word(at);;) {
    if (bits != 0) return static_cast<int>(i * 64) + std::countr_zero(bits);
    if (++i == words_.size()) return -1;
    bits = words_[i];
  }
}

int BitRow::previous(int at) const {
  at = std::min(at, size_ - 1);
  if (at < 0) return -1;
  uint64_t bits = words_[word(at)] << (63 - (at & 63));
  if (bits != 0) return at - std::countl_zero(bits);
  for (size_t i = word(at); i-- > 0;)
    if (words_[i] != 0) return static_cast<int>(i * 64) + 63 - std::countl_zero(words_[i]);
  return -1;
}

int BitRow::count_before(int at) const {
  if (at >= size_) return count_;
  if (at <= 0) return 0;
  if (count_ == size_) return at;
  int count = std::popcount(words_[word(at)] & below(at & 63));
  for (size_t i = 0; i < word(at); ++i) count += std::popcount(words_[i]);
  return count;
}

int BitRow::select(int rank) const {
  if (rank < 0 || rank >= count_) return -1;
  if (count_ == size_) return rank;
  size_t i = 0;
  for (int here; (here = std::popcount(words_[i])) <= rank; ++i) rank -= here;
  uint64_t bits = words_[i];
  for (; rank > 0; --rank) bits &= bits - 1;
  return static_cast<int>(i * 64) + std::countr_zero(bits);
}

}  // namespace kestrelon
