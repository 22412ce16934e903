#include "frame/kit/gradient.h"

#include <cstring>

#include "base/rounding.h"
#include "frame/kit/lines.h"
#include "frame/kit/row_ops.h"

namespace kestrelon {
namespace {

// A number of 0 to 255 to the nearest whole one, halves to even.
int32_t round_channel(double value) {
#ifdef __SSE2__
  return _mm_cvtsd_si32(_mm_set_sd(value));  // in the mode that is never changed
#else
  return round_half_even(value);
#endif
}

// The colours between two ends; the same as BlendColor gives for the part of the way that lies
// between.
class Ramp {
 public:
  Ramp(ColorRef from, ColorRef to) : from_(SplitRGB(from)) {
    const Channels end = SplitRGB(to);
    r_ = end.r - from_.r;
    g_ = end.g - from_.g;
    b_ = end.b - from_.b;
  }
  ColorRef at(double t) const {
    return PackRGB(round_channel(from_.r + t * r_), round_channel(from_.g + t * g_),
                   round_channel(from_.b + t * b_));
  }

 private:
  Channels from_;
  double r_, g_, b_;
};

// The two halves of a scan-line gradient.
class ScanLineColors {
 public:
  ScanLineColors(ColorRef color1, ColorRef color2, double mid_percent, int y1, int y2)
      : upper_(color1, BlendColor(color1, color2, 0.5)),
        lower_(BlendColor(color1, color2, 0.5), color2),
        last_(y2) {
    const double percent = std::clamp(mid_percent, 0.0, 100.0);
    const double band = static_cast<double>(y2) - y1 - 1;
    middle_row_ = static_cast<float>(y1 + percent * band / 100);
    if (middle_row_ == 0) middle_row_ = 1;
  }

  ColorRef at(int y) const {
    if (y > middle_row_) return lower_.at((y - middle_row_) / (last_ - middle_row_));
    return upper_.at(y / middle_row_);
  }

 private:
  Ramp upper_, lower_;
  double last_;
  double middle_row_;  // holds a single's value
};

// floor of the mean of two channels weighted by position, as the system forms it from 16-bit
// channels.
uint32_t weighted(int64_t from, int64_t to, int64_t position, int64_t length) {
  return static_cast<uint32_t>((from * (length - position) + to * position) / length);
}

uint32_t pixel_between(const Channels& from, const Channels& to, int64_t position, int64_t length) {
  return weighted(from.r, to.r, position, length) << 16 |
         weighted(from.g, to.g, position, length) << 8 | weighted(from.b, to.b, position, length);
}

}  // namespace

void DrawGradient(const PixelView& view, ColorRef color1, ColorRef color2, double mid_percent,
                  int x1, int y1, int x2, int y2) {
  x2 = x2 < 0 ? view.width - 1 : std::min(x2, view.width - 1);
  y2 = y2 < 0 ? view.height - 1 : std::min(y2, view.height - 1);
  const ScanLineColors colors(color1, color2, mid_percent, y1, y2);
  for (int y = std::max(y1, 0); y <= y2; ++y) DrawLineTo(view, colors.at(y), x1, y, x2, y);
}

void fill_system_gradient(const PixelView& view, const PixelRect& area, ColorRef color1,
                          ColorRef color2, GradientDirection direction) {
  const bool across = direction == GradientDirection::LeftToRight;
  Channels from = SplitRGB(color1);
  Channels to = SplitRGB(color2);
  if (across ? area.left > area.right : area.top > area.bottom) std::swap(from, to);
  const PixelRect whole = {std::min(area.left, area.right), std::min(area.top, area.bottom),
                           std::max(area.left, area.right), std::max(area.top, area.bottom)};
  const PixelRect seen = intersect(whole, view.bounds());
  if (seen.empty()) return;
  const int width = seen.right - seen.left;
  if (!across) {
    const int64_t length = int64_t{whole.bottom} - whole.top;
    for (int y = seen.top; y < seen.bottom; ++y)
      fill_row(view.row(y) + seen.left, width,
               pixel_between(from, to, y - int64_t{whole.top}, length));
    return;
  }
  const int64_t length = int64_t{whole.right} - whole.left;
  uint32_t* const first = view.row(seen.top) + seen.left;
  for (int x = 0; x < width; ++x)
    first[x] = pixel_between(from, to, seen.left + int64_t{x} - whole.left, length);
  for (int y = seen.top + 1; y < seen.bottom; ++y)
    std::memcpy(view.row(y) + seen.left, first, static_cast<size_t>(width) * sizeof *first);
}

}  // namespace kestrelon
