#include "imaging/huffman.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <utility>

namespace kestrelon {
namespace {

// A last symbol of the lowest weight takes the code of all ones, which is not allowed, out of use.
constexpr size_t kReserved = 256;

// How many codes of each length an unlimited Huffman code has; index is the length.
std::vector<int> unlimited_lengths(const std::array<uint32_t, 256>& frequencies) {
  struct Node {
    int parent = -1;
  };
  using Weighted = std::pair<uint64_t, int>;
  std::priority_queue<Weighted, std::vector<Weighted>, std::greater<>> open;
  std::vector<Node> nodes;
  const auto add_leaf = [&](uint64_t weight) {
    open.emplace(weight, static_cast<int>(nodes.size()));
    nodes.emplace_back();
  };
  // The reserved symbol weighs less than any other, so that it gets one of the longest codes.
  add_leaf(0);
  for (const uint32_t frequency : frequencies) {
    if (frequency != 0) add_leaf(frequency);
  }
  const size_t leaves = nodes.size();
  while (open.size() > 1) {
    const Weighted first = open.top();
    open.pop();
    const Weighted second = open.top();
    open.pop();
    const int parent = static_cast<int>(nodes.size());
    nodes.emplace_back();
    nodes[static_cast<size_t>(first.second)].parent = parent;
    nodes[static_cast<size_t>(second.second)].parent = parent;
    open.emplace(first.first + second.first, parent);
  }
  std::vector<int> counts(kReserved + 1);
  for (size_t leaf = 0; leaf < leaves; ++leaf) {
    size_t depth = 0;
    for (int at = nodes[leaf].parent; at >= 0; at = nodes[static_cast<size_t>(at)].parent) ++depth;
    ++counts[depth];
  }
  return counts;
}

// Annex K.2: a pair of too long codes gives its prefix to one of them; the other is put beside a
// shorter code, which grows by a bit.
void limit_lengths(std::vector<int>& counts, size_t limit) {
  for (size_t length = counts.size() - 1; length > limit; --length) {
    while (counts[length] > 0) {
      size_t shorter = length - 2;
      while (counts[shorter] == 0) --shorter;
      counts[length] -= 2;
      ++counts[length - 1];
      counts[shorter + 1] += 2;
      --counts[shorter];
    }
  }
}

}  // namespace

void cHuffman::build() {
  std::vector<int> counts = unlimited_lengths(frequencies_);
  limit_lengths(counts, kLongestCode);
  size_t longest = kLongestCode;
  while (counts[longest] == 0) --longest;
  --counts[longest];  // the reserved symbol's
  for (size_t i = 0; i < lengths_.size(); ++i) lengths_[i] = static_cast<uint8_t>(counts[i + 1]);

  symbols_.clear();
  for (size_t symbol = 0; symbol < frequencies_.size(); ++symbol) {
    if (frequencies_[symbol] != 0) symbols_.push_back(static_cast<uint8_t>(symbol));
  }
  std::ranges::stable_sort(symbols_, std::greater<>(),
                           [&](uint8_t symbol) { return frequencies_[symbol]; });
  uint32_t code = 0;
  size_t next = 0;
  for (int bits = 1; bits <= kLongestCode; ++bits, code <<= 1) {
    for (int i = 0; i < lengths_[static_cast<size_t>(bits - 1)]; ++i, ++code, ++next) {
      codes_[symbols_[next]] = static_cast<uint16_t>(code);
      code_bits_[symbols_[next]] = static_cast<uint8_t>(bits);
    }
  }
}

}  // namespace kestrelon
