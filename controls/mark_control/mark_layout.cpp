#include "controls/mark_control/mark_layout.h"

namespace kestrelon::mark_layout {

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

}  // namespace kestrelon::mark_layout
