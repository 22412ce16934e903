#include "controls/us_check_box/us_check_box_layout.h"

namespace kestrelon::check_layout {

PixelRect check_rect(int width, int height, bool right_justify) {
  const int top = (height - kMark) / 2;
  if (right_justify) return {width - kMark - 1, top, width, top + kMark};
  return {0, top, kMark, top + kMark};
}

PixelRect focus_rect(int width, int height, bool right_justify) {
  if (right_justify) return {1, 1, width - 15, height - 1};
  return {16, 1, width - 2, height - 1};
}

PixelRect measure_rect(int width, int height) {
  return {21, 0, width, height};
}

PixelRect caption_rect(int width, int height, int text_height) {
  return {kCaptionLeft, (height - text_height) / 2, width, (height + text_height) / 2};
}

Mark mark_of(int value) {
  switch (value) {
    case 1:
    case -1:
      return Mark::kChecked;
    case 2:
      return Mark::kGrayed;
    default:
      return value > 65534 ? Mark::kChecked : Mark::kUnchecked;
  }
}

int strip_row(Mark mark, bool enabled, int state, bool over) {
  if (!enabled) {
    switch (mark) {
      case Mark::kChecked:
        return 169;
      case Mark::kGrayed:
        return 182;
      default:
        return 156;
    }
  }
  const bool hovered = state == 0 && over;
  int base = 0;
  if (mark == Mark::kChecked)
    base = hovered ? 26 : 52;  // the hover picture stands above the others
  if (mark == Mark::kGrayed) base = 117;
  return base + (hovered ? 1 : state) * kMark;
}

}  // namespace kestrelon::check_layout
