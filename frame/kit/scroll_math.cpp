#include "frame/kit/scroll_math.h"

#include <algorithm>
#include <limits>

namespace kestrelon {
namespace {

constexpr int kWheelNotch = 120;

constexpr int32_t to_long(int64_t value) {
  return static_cast<int32_t>(std::clamp<int64_t>(value, std::numeric_limits<int32_t>::min(),
                                                  std::numeric_limits<int32_t>::max()));
}

// numerator / denominator to the nearest, halves to even; neither below 0, the latter not 0.
constexpr int64_t divide_nearest(int64_t numerator, int64_t denominator) {
  const int64_t quotient = numerator / denominator;
  const int64_t rest = numerator % denominator;
  const int64_t gap = denominator - rest;  // to the next whole number
  const bool up = rest > gap || (rest == gap && quotient % 2 != 0);
  return quotient + (up ? 1 : 0);
}

int thumb_size(int track, const ScrollRange& range, int32_t page, int last) {
  const int64_t span = std::max<int64_t>(range.span(), 1);
  const int64_t pages = page != 0 ? span / page + 1 : 0;
  const int64_t size = pages != 0 ? track / pages : last;
  return static_cast<int>(std::clamp<int64_t>(size, kMinThumb, track));
}

bool inside(const PixelRect& r, int x, int y) {
  return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
}

}  // namespace

BarLayout layout_bar(const BarShape& shape, const ScrollRange& range, int32_t value, int32_t page,
                     int last_thumb_size) {
  const int length = std::max(shape.vertical ? shape.height : shape.width, 0);
  const auto stretch = [&shape](int from, int to) {
    return shape.vertical ? PixelRect{0, from, shape.width, to}
                          : PixelRect{from, 0, to, shape.height};
  };
  BarLayout out;
  out.vertical = shape.vertical;
  const int button = shape.buttons ? kBarButton : 0;
  out.has_thumb = int64_t{2} * button + kMinThumb <= length;
  const int start = out.has_thumb ? button : length / 2;
  const int end = out.has_thumb ? length - button : start;  // an odd pixel is the second button's
  out.top_left = stretch(0, start);
  out.bottom_right = stretch(end, length);
  out.track_start = start;
  out.track_length = end - start;
  out.thumb_start = start;
  out.thumb_size = last_thumb_size;  // kept for the time when there is room again
  if (!out.has_thumb) return out;

  out.thumb_size = thumb_size(out.track_length, range, page, last_thumb_size);
  // At most 2^31 pixels by 2^32 values: the product fits in 63 bits.
  const int64_t room = out.track_length - out.thumb_size;
  const int64_t steps = int64_t{range.limit(value)} - range.min;
  out.thumb_start += static_cast<int>(room * steps / std::max<int64_t>(range.span(), 1));
  const int thumb_end = out.thumb_start + out.thumb_size;
  out.before = stretch(start, out.thumb_start);
  out.thumb = stretch(out.thumb_start, thumb_end);
  out.after = stretch(thumb_end, end);
  return out;
}

int32_t value_at(const BarLayout& layout, const ScrollRange& range, int thumb_start,
                 int32_t value) {
  const int room = layout.track_length - layout.thumb_size;
  if (!layout.has_thumb || room <= 0) return value;
  const int64_t moved = std::clamp<int64_t>(int64_t{thumb_start} - layout.track_start, 0, room);
  return range.limit(range.min + divide_nearest(moved * range.span(), room));
}

BarPart BarLayout::hit(int x, int y) const {
  for (const BarPart candidate : {BarPart::kTopLeft, BarPart::kBottomRight, BarPart::kBefore,
                                  BarPart::kAfter, BarPart::kThumb})
    if (inside(part(candidate), x, y)) return candidate;
  return BarPart::kNone;
}

const PixelRect& BarLayout::part(BarPart part) const {
  static constexpr PixelRect kNowhere;
  switch (part) {
    case BarPart::kTopLeft:
      return top_left;
    case BarPart::kBottomRight:
      return bottom_right;
    case BarPart::kBefore:
      return before;
    case BarPart::kAfter:
      return after;
    case BarPart::kThumb:
      return thumb;
    case BarPart::kNone:
      break;
  }
  return kNowhere;
}

int WheelNotches::add(int delta) {
  kept_ -= delta;
  const int notches = kept_ / kWheelNotch;
  kept_ -= notches * kWheelNotch;
  return notches;
}

int32_t info_end(int32_t max, int32_t page) {
  return to_long(int64_t{max} + std::max(page, 1) - 1);
}

int32_t max_of_info(int32_t end, int32_t page) {
  return to_long(int64_t{end} - std::max(page, 1) + 1);
}

}  // namespace kestrelon
