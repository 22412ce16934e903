// Where the parts of a tool bar lie, what of it fits, and how a button looks: numbers alone.
#pragma once

#include <span>
#include <vector>

#include "frame/kit/pixel_view.h"
#include "frame/kit/scale.h"

namespace kestrelon::tool_bar {

enum class IconSide { kLeft = 0, kRight = 1, kTop = 2, kBottom = 3 };

/// What layout knows of a button; pixels of the screen.
struct Item {
  bool separator = false;
  int text_width = 0;
  int text_height = 0;
  int icon = 0;  ///< edge of the icon's square; 0 without one
  IconSide side = IconSide::kLeft;
  bool drop_mark = false;
};

struct Shape {
  int width = 0;
  int height = 0;
  bool gripper = true;
  bool end_panel = true;
  bool stretch = false;
  Scale scale;
};

struct Place {
  PixelRect area;
  int natural_height = 0;  ///< before stretching
  bool shown = false;      ///< a button that does not fit is hidden whole
};

struct Arrangement {
  PixelRect gripper, center, end_panel, chevron;  // empty where the bar has none
  std::vector<Place> places;
};

/// Buttons from left to right. When not all fit, the chevron takes the right end of the centre, and
/// the first that does not fit is hidden with all behind it; a separator is never the last shown.
Arrangement arrange(const Shape& shape, std::span<const Item> items);

/// Parts beside the buttons, which count from 1.
inline constexpr int kNothing = 0, kGripper = -1, kEndPanel = -2, kChevron = -3;
int hit(const Arrangement& bar, int x, int y);

/// Icon, caption and drop mark within a button.
struct Face {
  PixelRect icon, text, drop_mark;
};
Face face(const PixelRect& area, const Item& item, Scale scale);

/// The next button from `from` (0: before the first) in a direction of 1 or -1 that `takes(index)`
/// accepts, round the end; `from` itself when there is no other. Indices from 1.
template <class Takes>
int walk(int from, int direction, int count, Takes&& takes) {
  int at = from;
  for (int step = 0; step < count; ++step) {
    at += direction;
    if (at < 1) at = count;
    if (at > count) at = 1;
    if (takes(at)) return at;
  }
  return from;
}

/// The looks of a button, numbered as ENUM_BUTTON_STATE.
enum class Look {
  kNormal = 0,
  kOver = 1,
  kPressed = 2,
  kOverDown = 3,
  kSelected = 4,
  kDisabled = 5
};

struct Condition {
  bool usable = true;
  bool hot = false;
  bool pressed = false;  ///< under the pointer that presses it
  bool checked = false;
  Look stored = Look::kNormal;
};
Look look(const Condition& condition);

}  // namespace kestrelon::tool_bar
