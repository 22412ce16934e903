// Copies between pixel views: plain, with a key colour, stretched, tiled.
#pragma once

#include "frame/kit/pixel_view.h"

namespace kestrelon {

/// One rectangle to copy, and where from.
struct CopyArea {
  int x = 0, y = 0;            ///< in the target
  int width = 0, height = 0;   ///< nothing is copied unless both are positive
  int from_x = 0, from_y = 0;  ///< in the source
};

/// Cuts a copy down to what lies inside both pictures; width and height are 0 when that is nothing.
CopyArea clip_copy(CopyArea area, const PixelRect& target, const PixelRect& source);

/// Copies pixels as they are; what the source does not cover stays. The views may share memory.
void blit(const PixelView& target, const CopyArea& area, const PixelView& source);

/// Copies all pixels but those of the key colour. The views must not overlap.
void masked_blit(const PixelView& target, const CopyArea& area, const PixelView& source,
                 ColorRef key);

/// Fills `area` of the target with the part `from` of the source, one source pixel for each target
/// pixel: the one under its centre, on a border between two the one to the left or above. Enlarging
/// gives the pixels that GDI gives in the mode COLORONCOLOR. Nothing is drawn unless `from` lies
/// inside the source. The views must not overlap.
void stretch_blit(const PixelView& target, const PixelRect& area, const PixelView& source,
                  const PixelRect& from);

/// Fills `area` with copies of the source, laid so that one begins at (-origin_x, -origin_y).
void tile_area(const PixelView& target, const PixelRect& area, const PixelView& source,
               int origin_x, int origin_y);

}  // namespace kestrelon
