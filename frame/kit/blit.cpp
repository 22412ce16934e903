#include "frame/kit/blit.h"

#include <cstring>

#include "frame/kit/row_ops.h"

namespace kestrelon {
namespace {

// One axis of a copy, against the ranges of both pictures.
void clip_axis(int& at, int& size, int& from, int target_from, int target_to, int source_from,
               int source_to) {
  const int64_t skip =
      std::max<int64_t>({0, int64_t{target_from} - at, int64_t{source_from} - from});
  const int64_t room =
      std::min({int64_t{size}, int64_t{target_to} - at, int64_t{source_to} - from});
  if (room <= skip) {
    size = 0;
    return;
  }
  size = static_cast<int>(room - skip);
  at = static_cast<int>(at + skip);
  from = static_cast<int>(from + skip);
}

}  // namespace

CopyArea clip_copy(CopyArea area, const PixelRect& target, const PixelRect& source) {
  clip_axis(area.x, area.width, area.from_x, target.left, target.right, source.left, source.right);
  clip_axis(area.y, area.height, area.from_y, target.top, target.bottom, source.top, source.bottom);
  if (area.width == 0 || area.height == 0) area.width = area.height = 0;
  return area;
}

void blit(const PixelView& target, const CopyArea& wanted, const PixelView& source) {
  const CopyArea area = clip_copy(wanted, target.bounds(), source.bounds());
  if (area.width == 0) return;
  const size_t bytes = static_cast<size_t>(area.width) * sizeof(uint32_t);
  // Rows that lie later in memory first when the target does, for a copy within one picture.
  const bool backwards = target.row(area.y) + area.x > source.row(area.from_y) + area.from_x;
  const bool from_last = backwards == (target.stride > 0);
  for (int i = 0; i < area.height; ++i) {
    const int y = from_last ? area.height - 1 - i : i;
    std::memmove(target.row(area.y + y) + area.x, source.row(area.from_y + y) + area.from_x, bytes);
  }
}

void masked_blit(const PixelView& target, const CopyArea& wanted, const PixelView& source,
                 ColorRef key) {
  const CopyArea area = clip_copy(wanted, target.bounds(), source.bounds());
  for (int y = 0; y < area.height; ++y)
    copy_row_except(target.row(area.y + y) + area.x, source.row(area.from_y + y) + area.from_x,
                    area.width, to_pixel(key));
}

}  // namespace kestrelon
