// A stable merge sort that trusts no comparison: whatever `before` answers, it ends after n log n
// questions with every row in its place once.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

namespace kestrelon {

/// `before(a, b)` is true where `a`, which stands behind `b`, belongs before it; it sets `stop` to
/// end the sort, which then answers false and leaves `rows` in any order.
template <class Before>
bool merge_sort(std::span<int32_t> rows, std::span<int32_t> scratch, Before before) {
  std::span<int32_t> from = rows, to = scratch.first(rows.size());
  bool stop = false;
  for (size_t width = 1; width < rows.size(); width *= 2) {
    for (size_t begin = 0; begin < rows.size(); begin += 2 * width) {
      const size_t middle = std::min(begin + width, rows.size());
      const size_t end = std::min(begin + 2 * width, rows.size());
      size_t left = begin, right = middle;
      for (size_t at = begin; at < end; ++at) {
        const bool take_right =
            right < end && (left == middle || before(from[right], from[left], stop));
        if (stop) return false;
        to[at] = from[take_right ? right++ : left++];
      }
    }
    std::swap(from, to);
  }
  if (from.data() != rows.data()) std::copy(from.begin(), from.end(), rows.begin());
  return true;
}

}  // namespace kestrelon
