#include "controls/us_text_box/us_text_box_layout.h"

#include <algorithm>

namespace kestrelon {
namespace {

constexpr int kMargin = 3, kMarkWidth = 16, kSpinWidth = 15, kTallestButton = 28;

bool holds(const PixelRect& area, int x, int y) {
  return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

}  // namespace

TextBoxPlaces lay_out_text_box(const TextBoxShape& shape) {
  const Scale& scale = shape.scale;
  const int frame = scale.line();
  const int bottom = std::max(frame, shape.height - frame);
  // Beside several lines the parts stay as tall as beside one.
  const int part_bottom =
      shape.multiline ? std::min(bottom, frame + scale(kTallestButton)) : bottom;
  int right = std::max(frame, shape.width - frame);
  TextBoxPlaces places;
  const auto take = [&](int wanted) {
    const int width = std::clamp(wanted, 0, right - frame);
    right -= width;
    return PixelRect{right, frame, right + width, part_bottom};
  };
  if (shape.button) places.button = take(std::min(part_bottom - frame, scale(kTallestButton)));
  if (shape.spin) {
    places.up = places.down = take(scale(kSpinWidth));
    places.up.bottom = places.down.top = (frame + part_bottom) / 2;
  }
  if (shape.clear) places.clear = take(scale(kMarkWidth));

  const int margin = frame + scale(kMargin);
  places.edit = {margin, frame, std::max(margin, right - scale(kMargin)), bottom};
  if (!shape.multiline) {
    const int spare = std::max(0, shape.height - shape.line_height);
    places.edit.top = std::max(frame, spare / 2);
    places.edit.bottom = std::min(bottom, places.edit.top + std::max(shape.line_height, 1));
    places.edit.bottom = std::max(places.edit.top, places.edit.bottom);
  }
  return places;
}

TextBoxPart part_at(const TextBoxPlaces& places, int x, int y) {
  if (holds(places.clear, x, y)) return TextBoxPart::kClear;
  if (holds(places.up, x, y)) return TextBoxPart::kUp;
  return holds(places.down, x, y) ? TextBoxPart::kDown : TextBoxPart::kNone;
}

}  // namespace kestrelon
