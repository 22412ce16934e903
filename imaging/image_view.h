// Windows on pixels that someone else owns.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kestrelon {

/// A rectangle in pixels; width and height are not negative.
struct ImageRect {
  int32_t x = 0, y = 0, width = 0, height = 0;
  bool empty() const { return width <= 0 || height <= 0; }
  bool operator==(const ImageRect&) const = default;
};

/// The part of [x, x + width) by [y, y + height) inside [0, limit_width) by [0, limit_height);
/// sums are taken in 64 bits.
inline ImageRect clip_to(int64_t x, int64_t y, int64_t width, int64_t height, int32_t limit_width,
                         int32_t limit_height) {
  const int64_t left = x < 0 ? 0 : x, top = y < 0 ? 0 : y;
  const int64_t right = x + width < limit_width ? x + width : limit_width;
  const int64_t bottom = y + height < limit_height ? y + height : limit_height;
  if (right <= left || bottom <= top) return {};
  return {static_cast<int32_t>(left), static_cast<int32_t>(top), static_cast<int32_t>(right - left),
          static_cast<int32_t>(bottom - top)};
}

/// 32-bit pixels addressed from the top left; `stride` is negative for bottom-up memory.
template <class Byte>
struct BasicImageView {
  Byte* top = nullptr;
  ptrdiff_t stride = 0;
  int32_t width = 0;
  int32_t height = 0;

  Byte* row(int32_t y) const { return top + y * stride; }
  Byte* pixel(int32_t x, int32_t y) const { return row(y) + ptrdiff_t{x} * 4; }
  /// The view of a rectangle that lies inside this one.
  BasicImageView part(const ImageRect& r) const {
    return {pixel(r.x, r.y), stride, r.width, r.height};
  }
};

using ImageView = BasicImageView<const uint8_t>;
using MutableImageView = BasicImageView<uint8_t>;

/// The rows of a view in rising order of their addresses, the order in which processors fetch
/// ahead.
class RowsInMemoryOrder {
 public:
  template <class Byte>
  explicit RowsInMemoryOrder(const BasicImageView<Byte>& view)
      : first_(view.stride < 0 ? view.height - 1 : 0),
        end_(view.stride < 0 ? -1 : view.height),
        step_(view.stride < 0 ? -1 : 1) {}

  struct Iterator {
    int32_t y, step;
    int32_t operator*() const { return y; }
    void operator++() { y += step; }
    bool operator!=(const Iterator& other) const { return y != other.y; }
  };
  Iterator begin() const { return {first_, step_}; }
  Iterator end() const { return {end_, step_}; }

 private:
  int32_t first_, end_, step_;
};

}  // namespace kestrelon
