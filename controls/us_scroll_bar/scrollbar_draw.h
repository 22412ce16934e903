// `cScrollbarDraw`: the look of a scroll bar, copied from the library's bitmaps.
#pragma once

#include <optional>

#include "contract/us_scroll_bar.h"
#include "frame/mem_dc.h"

namespace kestrelon {

/// Cells of the button strips.
enum ScrollButtonState : int {
  kEndButtonIdle = 0,
  kEndButtonNear = 1,  ///< the pointer is somewhere over the bar
  kEndButtonPressed = 2,
  kEndButtonHot = 3,
  kEndButtonDisabled = 4,
};
/// Cells of the thumb and grip strips.
enum ThumbState : int { kThumbIdle = 0, kThumbHot = 1, kThumbPressed = 2, kThumbDisabled = 3 };
/// Lines of the track strips.
enum BackState : int { kBackIdle = 0, kBackPressed = 1, kBackDisabled = 2 };

/// Painter of the parts, whatever the rectangle; it reads nothing but its own bitmaps. An
/// orientation of `Horizontal` is a bar from top to bottom, as everywhere in `USScrollBar`. Empty
/// rectangles draw nothing. States beyond those named show the idle one. The target must be one
/// that can be read back.
class cScrollbarDraw {
 public:
  void DrawBack(HDC hDC, int state, ENUM_POSITION orientation, const RECT& rectangle) const;
  void DrawBar(HDC hDC, int state, ENUM_POSITION orientation, const RECT& rectangle) const;
  void DrawTopLeftButton(HDC hDC, int state, ENUM_POSITION orientation,
                         const RECT& rectangle) const;
  void DrawBottomRightButton(HDC hDC, int state, ENUM_POSITION orientation,
                             const RECT& rectangle) const;

 private:
  struct Strips {
    pcMemDC back, thumb, grip, face, top_left, bottom_right;
  };
  const Strips& strips(ENUM_POSITION orientation) const;
  void draw_button(HDC dc, int state, ENUM_POSITION orientation, const RECT& place,
                   const pcMemDC& arrow) const;

  // Loaded when a bar of that direction is first drawn; most owners draw one direction only.
  mutable std::optional<Strips> down_;    // bars from top to bottom
  mutable std::optional<Strips> across_;  // bars from left to right
};

}  // namespace kestrelon
