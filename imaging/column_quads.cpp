#include "imaging/column_quads.h"

#include <algorithm>

namespace kestrelon {

ColumnQuads::ColumnQuads(std::span<const uint32_t> index, int32_t width, QuadOrder order)
    : firsts_(index.size() / 4, -1), places_(firsts_.size() * kPixels) {
  constexpr size_t kColumns[2][4] = {{0, 1, 2, 3}, {0, 2, 1, 3}};
  const auto& columns = kColumns[order == QuadOrder::kWide ? 1 : 0];
  constexpr auto kReach = static_cast<int32_t>(kPixels);
  for (size_t quad = 0; quad < firsts_.size(); ++quad) {
    const auto four = index.subspan(quad * 4, 4);
    const auto [least, most] = std::minmax_element(four.begin(), four.end());
    const int32_t first = std::min(static_cast<int32_t>(*least), width - kReach);
    if (first < 0 || static_cast<int32_t>(*most) + 1 - first >= kReach) continue;
    firsts_[quad] = first;
    for (size_t k = 0; k < 4; ++k) {
      const int32_t left = static_cast<int32_t>(four[columns[k]]) - first;
      places_[quad * kPixels + k * 2] = left;
      places_[quad * kPixels + k * 2 + 1] = left + 1;
    }
  }
}

}  // namespace kestrelon
