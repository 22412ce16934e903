// Where the parts of a group's header lie: box, image, caption, arrow. Pixels only.
#pragma once

#include "frame/kit/pixel_view.h"
#include "frame/kit/scale.h"

namespace kestrelon {

enum class GroupPart { kNone, kBox, kArrow, kCaption };

struct GroupHeader {
  int width = 0;   // of the control
  int height = 0;  // of the header; 0 without one
  bool box = false, arrow = false;
  int image_width = 0, image_height = 0;  // 0 without an image
  int caption_width = 0;
  int side = 0;  // of the caption: 0 left, 1 right, 2 in the middle, as alignments count
  Scale scale;
};

struct GroupPlaces {
  PixelRect header, box, image, caption, arrow;
};

/// Parts that find no room are empty.
GroupPlaces lay_out_group(const GroupHeader& header);

/// The part at a point; a press on caption and image works the box where there is one.
GroupPart group_part_at(const GroupPlaces& places, int x, int y);

}  // namespace kestrelon
