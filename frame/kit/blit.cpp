#include "frame/kit/blit.h"

#include <cstring>
#include <vector>

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

// Which source pixel stands under the centre of a target pixel, along one axis.
class Sampling {
 public:
  Sampling(int to_start, int to_end, int from_start, int from_end)
      : to_start_(to_start),
        from_start_(from_start),
        to_size_(int64_t{to_end} - to_start),
        from_size_(int64_t{from_end} - from_start) {}
  int at(int place) const {
    const int64_t doubled = 2 * (place - to_start_) + 1;
    return static_cast<int>(from_start_ + (doubled * from_size_ - 1) / (2 * to_size_));
  }

 private:
  int64_t to_start_, from_start_, to_size_, from_size_;
};

// The remainder that is never negative.
int wrapped(int64_t value, int size) {
  const int64_t rest = value % size;
  return static_cast<int>(rest < 0 ? rest + size : rest);
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

void stretch_blit(const PixelView& target, const PixelRect& area, const PixelView& source,
                  const PixelRect& from) {
  const PixelRect seen = intersect(area, target.bounds());
  if (seen.empty() || from.empty() || intersect(from, source.bounds()) != from) return;
  const Sampling across(area.left, area.right, from.left, from.right);
  const Sampling down(area.top, area.bottom, from.top, from.bottom);
  const size_t width = static_cast<size_t>(seen.right - seen.left);
  std::vector<int> columns(width);
  for (size_t i = 0; i < width; ++i) columns[i] = across.at(seen.left + static_cast<int>(i));
  int drawn_from = -1;
  for (int y = seen.top; y < seen.bottom; ++y) {
    uint32_t* const to = target.row(y) + seen.left;
    const int source_row = down.at(y);
    if (source_row == drawn_from) {
      std::memcpy(to, target.row(y - 1) + seen.left, width * sizeof *to);
      continue;
    }
    const uint32_t* const row = source.row(source_row);
    for (size_t i = 0; i < width; ++i) to[i] = row[columns[i]];
    drawn_from = source_row;
  }
}

void tile_area(const PixelView& target, const PixelRect& area, const PixelView& source,
               int origin_x, int origin_y) {
  const PixelRect seen = intersect(area, target.bounds());
  if (seen.empty() || source.width <= 0 || source.height <= 0) return;
  const int first_column = wrapped(int64_t{seen.left} + origin_x, source.width);
  int from_y = wrapped(int64_t{seen.top} + origin_y, source.height);
  for (int y = seen.top; y < seen.bottom; ++y) {
    uint32_t* const to = target.row(y);
    const uint32_t* const from = source.row(from_y);
    int from_x = first_column;
    for (int x = seen.left; x < seen.right;) {
      const int run = std::min(source.width - from_x, seen.right - x);
      std::memcpy(to + x, from + from_x, static_cast<size_t>(run) * sizeof *to);
      x += run;
      from_x = 0;
    }
    if (++from_y == source.height) from_y = 0;
  }
}

}  // namespace kestrelon
