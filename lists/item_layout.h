// Where the parts of an item lie: one arithmetic for list, combo box and tree, without a screen.
#pragma once

#include <cstdint>

#include "frame/kit/pixel_view.h"

namespace kestrelon {

/// `at96` pixels of a 96 dpi screen on one of `dpi`, halves away from zero.
constexpr int scale_pixels(int at96, int dpi) {
  const int64_t product = int64_t{at96} * dpi;
  return static_cast<int>((product + (product < 0 ? -48 : 48)) / 96);
}

/// What the parts of an item need, in pixels of the screen it is drawn on.
struct ItemMetrics {
  int text_height = 0;  ///< one line of the font
  int check_side = 0;   ///< 0: no check box
  int image_width = 0;  ///< 0: no image
  int image_height = 0;
  int expander = 0;  ///< width of a tree's expander column; 0: none
  int padding = 3;   ///< between the row's edge or the highlight's and what lies within
  int gap = 4;       ///< between two parts
  int vertical = 1;  ///< above and below the highest part
};

/// Paddings and gaps for a screen; the sizes of the parts are the caller's.
ItemMetrics item_metrics(int dpi, int text_height);

/// The height of a row that holds `lines` lines of text beside its other parts; at least 1.
int item_height(const ItemMetrics& metrics, int lines = 1);

struct ItemParts {
  PixelRect row;       ///< the whole width of the list
  PixelRect expander;  ///< empty without one
  PixelRect check;
  PixelRect image;
  PixelRect text;  ///< from the last part to the row's other edge
};

/// Lays out a row. `indent` shifts every part from the row's beginning (levels of a tree). With
/// `mirrored` the row reads from right to left. Parts that have no room are empty.
ItemParts layout_item(const PixelRect& row, const ItemMetrics& metrics, int indent, bool mirrored);

/// The rectangle within `area` at the other side: what reads from left to right reads from right
/// to left.
PixelRect mirror_rect(const PixelRect& rect, const PixelRect& area);

enum class ItemPart { kNone, kRow, kExpander, kCheck, kImage, kText };

/// The part under a point; check box and expander take the whole height of the row, since they are
/// small to hit.
ItemPart hit_item(const ItemParts& parts, int x, int y);

}  // namespace kestrelon
