#include "frame/kit/shape.h"

#include "frame/kit/row_ops.h"

namespace kestrelon {
namespace {

// Collects rectangles band by band. A row equal to the one above makes that band taller instead.
class Bands {
 public:
  /// The runs of this row follow by add_run().
  void begin_row() { row_start_ = rects_.size(); }
  void add_run(int left, int right, int y) { rects_.push_back({left, y, right, y + 1}); }
  void end_row(int y) {
    if (row_start_ == rects_.size()) return;
    if (continues_band(y)) {
      for (size_t i = band_start_; i < row_start_; ++i) rects_[i].bottom = y + 1;
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
    bands.end_row(y);
  }
  return bands.take();
}

}  // namespace kestrelon
