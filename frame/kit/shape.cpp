#include "frame/kit/shape.h"

#include <cstdlib>

#include "frame/kit/row_ops.h"

namespace kestrelon {
namespace {

// Collects rectangles band by band. A row equal to the one above makes that band taller instead.
class Bands {
 public:
  /// The runs of this row follow by add_run().
  void begin_row() { row_start_ = rects_.size(); }
  void add_run(int left, int right, int y, int height = 1) {
    rects_.push_back({left, y, right, y + height});
  }
  void end_row() {
    if (row_start_ == rects_.size()) return;
    if (continues_band(rects_.back().top)) {
      const int bottom = rects_.back().bottom;
      for (size_t i = band_start_; i < row_start_; ++i) rects_[i].bottom = bottom;
      rects_.resize(row_start_);
    } else {
      band_start_ = row_start_;
    }
  }
  std::vector<PixelRect> take() { return std::move(rects_); }

 private:
  bool continues_band(int y) const {
    const size_t runs = rects_.size() - row_start_;
    if (row_start_ - band_start_ != runs || rects_[band_start_].bottom != y) return false;
    for (size_t i = 0; i < runs; ++i) {
      const PixelRect& above = rects_[band_start_ + i];
      const PixelRect& here = rects_[row_start_ + i];
      if (above.left != here.left || above.right != here.right) return false;
    }
    return true;
  }

  std::vector<PixelRect> rects_;
  size_t band_start_ = 0;
  size_t row_start_ = 0;
};

// How far each row of an ellipse, from its top to its middle, stands back from the ellipse's left
// edge. Alois Zingl, "A Rasterizing Algorithm for Drawing Curves" (2012), the ellipse within a
// rectangle.
std::vector<int> ellipse_insets(int width, int height) {
  const int64_t a = width - 1;
  const int64_t b = height - 1;
  const int64_t odd = b & 1;
  int64_t dx = 4 * (1 - a) * b * b;
  int64_t dy = 4 * (odd + 1) * a * a;
  int64_t error = dx + dy + odd * a * a;
  int left = 0;
  int64_t right = a;
  int row = static_cast<int>(b / 2);  // of the upper half, on its way from the middle to the top
  std::vector<int> insets(static_cast<size_t>(row) + 1, 0);
  bool entered = true;
  while (left <= right && row >= 0) {
    if (entered) insets[static_cast<size_t>(row)] = left;
    const int64_t doubled = 2 * error;
    entered = doubled <= dy;
    if (entered) {
      --row;
      error += dy += 8 * a * a;
    }
    if (doubled >= dx) {
      ++left;
      --right;
      error += dx += 8 * b * b;
    }
  }
  if (!entered) --row;
  for (; row >= 0; --row) insets[static_cast<size_t>(row)] = left - 1;  // the tip of a thin ellipse
  return insets;
}

}  // namespace

std::vector<PixelRect> mask_to_rects(const PixelView& view, ColorRef key) {
  const uint32_t key_pixel = to_pixel(key);
  Bands bands;
  for (int y = 0; y < view.height; ++y) {
    const uint32_t* const row = view.row(y);
    bands.begin_row();
    for (int x = find_in_row(row, 0, view.width, key_pixel, false); x < view.width;) {
      const int end = find_in_row(row, x, view.width, key_pixel, true);
      bands.add_run(x, end, y);
      x = find_in_row(row, end, view.width, key_pixel, false);
    }
    bands.end_row();
  }
  return bands.take();
}

std::vector<PixelRect> round_rect_to_rects(int width, int height, int ellipse_width,
                                           int ellipse_height) {
  // A window is at most this long; larger diameters would only overflow the arithmetic.
  constexpr int kLongest = 32767;
  if (width <= 1 || height <= 1) return {};
  const int right = width - 1;
  const int bottom = height - 1;
  const auto diameter = [](int wanted, int side) {
    return static_cast<int>(
        std::min({std::abs(int64_t{wanted}), int64_t{side}, int64_t{kLongest}}));
  };
  const int across = diameter(ellipse_width, right);
  const int down = diameter(ellipse_height, bottom);
  if (across < 2 || down < 2) return {{0, 0, right, bottom}};

  const std::vector<int> insets = ellipse_insets(across, down);
  const int corner = std::min(static_cast<int>(insets.size()), bottom / 2);
  Bands bands;
  const auto add = [&](int inset, int y, int rows) {
    bands.begin_row();
    bands.add_run(inset, right - inset, y, rows);
    bands.end_row();
  };
  for (int y = 0; y < corner; ++y) add(insets[static_cast<size_t>(y)], y, 1);
  if (bottom > 2 * corner) add(0, corner, bottom - 2 * corner);
  for (int y = corner; y-- > 0;) add(insets[static_cast<size_t>(y)], bottom - 1 - y, 1);
  return bands.take();
}

}  // namespace kestrelon
