// Where the parts of a message box lie: from measured texts to rectangles.
#pragma once

#include <vector>

#include "frame/kit/pixel_view.h"
#include "frame/kit/scale.h"

namespace kestrelon::msg_box {

/// Lengths at 96 dots an inch.
inline constexpr int kTextRoom = 480;  ///< longer lines wrap
inline constexpr int kPictureSide = 32;
inline constexpr int kTextHeightPercent = 60;  ///< of the work area; higher texts scroll

/// What is to be placed, in pixels of the scale.
struct Content {
  int title_width = 0;
  bool closes = true;  ///< has a close button
  bool picture = false;
  int text_width = 0;
  int text_height = 0;
  int line_height = 0;
  int bar_width = 0;  ///< of a scroll bar, where one is needed
  std::vector<int> caption_widths;
  int check_width = 0;    ///< of the check box with its mark; 0 for none
  int details_width = 0;  ///< of the caption of the details button; 0 for none
  bool details_open = false;
  int work_width = 0, work_height = 0;  ///< what the monitor leaves
  bool right_to_left = false;
};

/// In pixels of the box's window; empty rectangles for what is not there.
struct Places {
  int width = 0, height = 0;
  PixelRect strip, close, title, picture, text, bar, check, footer, details_button, details;
  std::vector<PixelRect> buttons;
};

Places arrange(const Content& content, Scale scale);

/// Where a box of a size goes: centred on its owner and inside the work area.
PixelRect place_box(int width, int height, const PixelRect& owner, const PixelRect& work_area);

}  // namespace kestrelon::msg_box
