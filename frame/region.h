// Window regions out of shapes. A region returned is the caller's, to give to a window or delete.
#pragma once

#include <windows.h>

#include <vector>

#include "frame/kit/pixel_view.h"

namespace kestrelon {

/// A region of rectangles that touch nowhere, in bands from top to bottom. Null without memory.
HRGN region_from_rects(const std::vector<PixelRect>& rects);

/// The half, or halves, that stay square in a rounded region; the values of `ENUM_BUTTON_SHAPES`.
enum class SquareSides { kNone = 0, kLeft = 1, kRight = 2, kBoth = 3 };

/// A window of width by height pixels with corners rounded by the diameters rx and ry.
HRGN round_region(int width, int height, int rx, int ry, SquareSides square = SquareSides::kNone);

/// Gives the window that shape and has it repainted.
void SetRoundRegion(HWND window, int width, int height, int rx, int ry,
                    SquareSides square = SquareSides::kNone);

}  // namespace kestrelon
