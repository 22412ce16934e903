// Rectangles and strip places of a check mark control: pure arithmetic in pixels.
#pragma once

#include "frame/kit/pixel_view.h"

namespace kestrelon::check_layout {

inline constexpr int kMark = 13;         // side of a mark and step of the strip
inline constexpr int kCaptionLeft = 17;  // also with the mark at the right

/// Where the mark goes.
PixelRect check_rect(int width, int height, bool right_justify);
/// Where the focus mark goes.
PixelRect focus_rect(int width, int height, bool right_justify);
/// Left, top and width with which the caption is measured.
PixelRect measure_rect(int width, int height);
/// Where a caption of the measured height goes; alignment is not considered.
PixelRect caption_rect(int width, int height, int text_height);

/// How a stored value is drawn; -1 (a Boolean true) counts as checked, other unknown values as
/// unchecked.
enum class Mark { kUnchecked, kChecked, kGrayed };
Mark mark_of(int value);

/// First row in the strip of the picture for a mark in a state (0 normal, 1 hover, 2 pressed).
/// `over` is the pointer over the control, which turns the normal state into hover.
int strip_row(Mark mark, bool enabled, int state, bool over);

}  // namespace kestrelon::check_layout
