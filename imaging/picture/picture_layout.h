// The size and shape in which a picture control shows its picture: arithmetic only.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "imaging/image_view.h"

namespace kestrelon {

/// Width and height in pixels.
struct PictureSize {
  int32_t width = 0, height = 0;
  bool empty() const { return width <= 0 || height <= 0; }
  bool operator==(const PictureSize&) const = default;
};

/// How a picture takes the room it has (`ENUM_SCALE_METHOD`).
enum class PictureScale : int32_t {
  Fit = 0,      ///< its own ratio, larger or smaller
  Stretch = 1,  ///< the room's size
  FitDown = 2,  ///< its own ratio, never larger than it is
  Actual = 3,   ///< its own size
  Locked = 4,   ///< a size of its own, once given
};

/// The largest size of the picture's ratio inside the room, by exact fractions cut to whole pixels,
/// at least 1 by 1. A negative room counts as 0. Nothing for an empty picture.
PictureSize fit_picture(PictureSize picture, PictureSize room);

/// The size in which a picture is drawn; an unknown method draws its own. `locked` serves
/// PictureScale::Locked; where it is empty, the picture's own size.
PictureSize drawn_size(PictureScale scale, PictureSize picture, PictureSize room,
                       PictureSize locked);

/// The upright box around a rectangle turned by whole degrees; quarter turns are exact.
PictureSize turned_box(PictureSize size, int32_t degrees);

/// The points that belong to a picture, for hit tests.
class HitArea {
 public:
  HitArea() = default;
  /// Rectangles as c32bppDIB::CreateRegion gives them: spans of single rows from top to bottom and
  /// left to right, or one rectangle.
  explicit HitArea(std::vector<ImageRect> rects) : rects_(std::move(rects)) {}
  bool contains(int32_t x, int32_t y) const;

 private:
  std::vector<ImageRect> rects_;
};

/// A fade of the opacity in equal steps.
class FadeSteps {
 public:
  /// Both opacities in percent; `final_opacity` is clamped to 0..100, the sign of `step` does not
  /// matter. Nothing where there is no way to go: a step of 0, or the end reached already.
  static std::optional<FadeSteps> plan(int32_t opacity, int32_t final_opacity, int32_t step);
  /// The opacity after this one; never past the end, which also catches one beyond it.
  int32_t after(int32_t opacity) const;
  int32_t end() const { return end_; }

  /// Milliseconds between steps: what was asked for, at least 10.
  static int32_t interval(int32_t asked) { return asked < kShortest ? kShortest : asked; }

 private:
  static constexpr int32_t kShortest = 10;

  FadeSteps(int32_t end, int64_t step) : end_(end), step_(step) {}

  int32_t end_;
  int64_t step_;
};

}  // namespace kestrelon
