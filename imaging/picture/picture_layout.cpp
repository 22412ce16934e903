#include "imaging/picture/picture_layout.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace kestrelon {

PictureSize fit_picture(PictureSize picture, PictureSize room) {
  if (picture.empty()) return {};
  const int64_t w = std::max(room.width, 0), h = std::max(room.height, 0);
  const bool by_width = w * picture.height <= h * picture.width;
  const int64_t width = by_width ? w : h * picture.width / picture.height;
  const int64_t height = by_width ? w * picture.height / picture.width : h;
  return {static_cast<int32_t>(std::max<int64_t>(width, 1)),
          static_cast<int32_t>(std::max<int64_t>(height, 1))};
}

PictureSize drawn_size(PictureScale scale, PictureSize picture, PictureSize room,
                       PictureSize locked) {
  if (picture.empty()) return {};
  switch (scale) {
    case PictureScale::Fit:
      return fit_picture(picture, room);
    case PictureScale::Stretch:
      return {std::max(room.width, 1), std::max(room.height, 1)};
    case PictureScale::FitDown:
      if (room.width >= picture.width && room.height >= picture.height) return picture;
      return fit_picture(picture, room);
    case PictureScale::Locked:
      return locked.empty() ? picture : locked;
    case PictureScale::Actual:
      break;
  }
  return picture;
}

PictureSize turned_box(PictureSize size, int32_t degrees) {
  degrees = (degrees % 360 + 360) % 360;
  if (size.empty() || degrees % 180 == 0) return size;
  if (degrees % 90 == 0) return {size.height, size.width};
  const double radians = std::numbers::pi * degrees / 180;
  const double across = std::abs(std::cos(radians)), down = std::abs(std::sin(radians));
  // A hair's breadth of the arithmetic must not add a pixel.
  const auto whole = [](double length) {
    constexpr double kHair = 1e-6;
    return static_cast<int32_t>(std::min(std::ceil(length - kHair), double{INT32_MAX}));
  };
  return {whole(size.width * across + size.height * down),
          whole(size.width * down + size.height * across)};
}

bool HitArea::contains(int32_t x, int32_t y) const {
  const auto found = std::partition_point(rects_.begin(), rects_.end(), [&](const ImageRect& r) {
    return r.y + r.height <= y || (r.y <= y && r.x + r.width <= x);
  });
  return found != rects_.end() && found->y <= y && found->x <= x;
}

std::optional<FadeSteps> FadeSteps::plan(int32_t opacity, int32_t final_opacity, int32_t step) {
  final_opacity = std::clamp(final_opacity, 0, 100);
  if (step == 0 || final_opacity == opacity) return {};
  const int64_t size = std::abs(int64_t{step});
  return FadeSteps(final_opacity, final_opacity < opacity ? -size : size);
}

int32_t FadeSteps::after(int32_t opacity) const {
  const int64_t next = opacity + step_;
  const bool reached = step_ > 0 ? next >= end_ : next <= end_;
  return reached ? end_ : static_cast<int32_t>(next);
}

}  // namespace kestrelon
