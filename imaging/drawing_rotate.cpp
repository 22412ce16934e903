// Drawing at an angle: for each destination pixel the source position is found and sampled.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "imaging/drawing.h"

namespace kestrelon {
namespace {

// Positions in the source are kept in units of 2^-32 pixels, so that stepping along a row adds up
// exactly.
constexpr double kUnit = 0x1p32;

// A row at an angle crosses many rows of the source. Narrow strips of the destination find them
// still in the cache when they come to the next row.
constexpr int32_t kStrip = 128;

// Where a destination row lies in the source, and the part of it that falls inside.
struct Line {
  int64_t x, y;  // of the first column
  int32_t first, last;
};

struct Turn {
  double sine, cosine;
};

// Quarter turns are exact.
Turn turn_by(int32_t degrees) {
  switch (((degrees % 360) + 360) % 360) {
    case 0:
      return {0, 1};
    case 90:
      return {1, 0};
    case 180:
      return {0, -1};
    case 270:
      return {-1, 0};
    default:
      break;
  }
  const double radians = std::numbers::pi * degrees / 180;
  return {std::sin(radians), std::cos(radians)};
}

// Positions may be any a program names; beyond this they are far outside every picture, and the
// sums that follow stay within 64 bits.
constexpr double kFarthest = 1 << 30;

int64_t to_units(double value) {
  return static_cast<int64_t>(std::nearbyint(std::clamp(value, -kFarthest, kFarthest) * kUnit));
}

int64_t floor_div(int64_t a, int64_t b) {
  const int64_t quotient = a / b;
  return quotient * b != a && (a < 0) != (b < 0) ? quotient - 1 : quotient;
}

// Narrows [first, last) to the steps i at which 0 <= start + i * step < limit.
void keep_inside(int64_t start, int64_t step, int64_t limit, int64_t& first, int64_t& last) {
  if (step == 0) {
    if (start < 0 || start >= limit) last = first;
    return;
  }
  // The steps at which the value crosses 0 and the limit.
  const int64_t to_zero = step > 0 ? -floor_div(start, step) : floor_div(start, -step) + 1;
  const int64_t to_limit =
      step > 0 ? -floor_div(start - limit, step) : floor_div(start - limit, -step) + 1;
  first = std::max(first, step > 0 ? to_zero : to_limit);
  last = std::min(last, step > 0 ? to_limit : to_zero);
}

}  // namespace

ImageRect rotated_bounds(const ScaledSource& source) {
  const double width = source.dest_width, height = source.dest_height;
  const auto side = static_cast<int64_t>(std::ceil(std::sqrt(width * width + height * height)));
  // One more pixel each way, as the centres of rectangle and square may differ by half a pixel.
  const int64_t x = source.dest_x + (int64_t{source.dest_width} - side) / 2 - 1;
  const int64_t y = source.dest_y + (int64_t{source.dest_height} - side) / 2 - 1;
  constexpr int64_t kFar = INT32_MAX;
  return {static_cast<int32_t>(std::clamp(x, -kFar, kFar)),
          static_cast<int32_t>(std::clamp(y, -kFar, kFar)),
          static_cast<int32_t>(std::min(side + 2, kFar)),
          static_cast<int32_t>(std::min(side + 2, kFar))};
}

void draw_rotated(const ScaledSource& source, int32_t degrees, const BlendEffects& effects,
                  const BlendTarget& target) {
  const Turn turn = turn_by(degrees);
  const double scale_x = static_cast<double>(source.pixels.width) / source.dest_width;
  const double scale_y = static_cast<double>(source.pixels.height) / source.dest_height;
  const double mirror_x = source.mirror_x ? -1 : 1, mirror_y = source.mirror_y ? -1 : 1;
  const double centre_x = source.dest_x + source.dest_width / 2.0;
  const double centre_y = source.dest_y + source.dest_height / 2.0;
  const int64_t limit_x = int64_t{source.pixels.width} << 32;
  const int64_t limit_y = int64_t{source.pixels.height} << 32;

  RotatedRun run{source.pixels.top,
                 source.pixels.stride,
                 source.pixels.width - 1,
                 source.pixels.height - 1,
                 0,
                 0,
                 to_units(turn.cosine * scale_x * mirror_x),
                 to_units(-turn.sine * scale_y * mirror_y)};
  const int32_t width = target.view.width;
  std::vector<Line> lines(static_cast<size_t>(target.view.height));
  const double x0 = target.x + 0.5 - centre_x;
  for (int32_t y = 0; y < target.view.height; ++y) {
    Line& line = lines[static_cast<size_t>(y)];
    const double y0 = target.y + y + 0.5 - centre_y;
    line.x = to_units((x0 * turn.cosine + y0 * turn.sine) * scale_x * mirror_x +
                      source.pixels.width / 2.0);
    line.y = to_units((y0 * turn.cosine - x0 * turn.sine) * scale_y * mirror_y +
                      source.pixels.height / 2.0);
    int64_t first = 0, last = width;
    keep_inside(line.x, run.dx, limit_x, first, last);
    keep_inside(line.y, run.dy, limit_y, first, last);
    line.first = static_cast<int32_t>(std::min<int64_t>(first, width));
    line.last = static_cast<int32_t>(std::max<int64_t>(last, 0));
  }

  const RowKernels& kernels = row_kernels();
  const auto sample = source.high_quality ? kernels.rotate_bilinear : kernels.rotate_nearest;
  const int32_t strip_width = std::min(width, kStrip);
  std::vector<uint8_t> samples(static_cast<size_t>(strip_width) * 4);
  EffectRow row(effects, static_cast<size_t>(strip_width));
  for (int32_t strip = 0; strip < width; strip += strip_width) {
    for (const int32_t y : RowsInMemoryOrder(target.view)) {
      const Line& line = lines[static_cast<size_t>(y)];
      const int32_t first = std::max(line.first, strip);
      const int32_t last = std::min(line.last, strip + std::min(strip_width, width - strip));
      if (first >= last) continue;
      run.x = line.x + first * run.dx;
      run.y = line.y + first * run.dy;
      const auto count = static_cast<size_t>(last - first);
      sample(samples.data(), run, count);
      kernels.blend(target.view.pixel(first, y), 0, row.apply(samples.data()), 0, count, 1,
                    effects.global_alpha, target.keep_alpha);
    }
  }
}

}  // namespace kestrelon
