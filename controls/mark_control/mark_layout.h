// Rectangles of a control that is a mark with a caption: pure arithmetic in pixels.
#pragma once

#include "frame/kit/pixel_view.h"

namespace kestrelon::mark_layout {

inline constexpr int kMark = 13;         // side of the place of a mark
inline constexpr int kCaptionLeft = 17;  // also with the mark at the right

/// Where the mark goes.
PixelRect check_rect(int width, int height, bool right_justify);
/// Where the focus mark goes.
PixelRect focus_rect(int width, int height, bool right_justify);
/// Left, top and width with which the caption is measured.
PixelRect measure_rect(int width, int height);
/// Where a caption of the measured height goes; alignment is not considered.
PixelRect caption_rect(int width, int height, int text_height);

}  // namespace kestrelon::mark_layout
