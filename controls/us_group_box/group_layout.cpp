#include "controls/us_group_box/group_layout.h"

#include <algorithm>

namespace kestrelon {
namespace {

constexpr int kEdge = 8, kGap = 5, kBox = 13, kArrow = 11;  // at 96 dpi

// A part of a size, in the middle of the header's height.
PixelRect centred(const PixelRect& header, int left, int width, int height) {
  const int top = header.top + (header.bottom - header.top - height) / 2;
  return {left, top, left + width, top + height};
}

bool inside(const PixelRect& area, int x, int y) {
  return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

}  // namespace

GroupPlaces lay_out_group(const GroupHeader& header) {
  GroupPlaces out;
  if (header.height < 1 || header.width < 1) return out;
  const Scale scale = header.scale;
  out.header = {0, 0, header.width, header.height};
  int left = scale(kEdge), right = header.width - scale(kEdge);
  if (header.arrow && right - left >= scale(kArrow)) {
    out.arrow = centred(out.header, right - scale(kArrow), scale(kArrow), scale(kArrow));
    right = out.arrow.left - scale(kGap);
  }
  int row = header.caption_width;
  if (header.box) row += scale(kBox) + scale(kGap);
  if (header.image_width > 0) row += header.image_width + scale(kGap);
  const int free = std::max(0, right - left - row);
  left += header.side == 1 ? free : header.side == 2 ? free / 2 : 0;
  if (header.box && right - left >= scale(kBox)) {
    out.box = centred(out.header, left, scale(kBox), scale(kBox));
    left = out.box.right + scale(kGap);
  }
  if (header.image_width > 0 && right - left >= header.image_width) {
    out.image = centred(out.header, left, header.image_width, header.image_height);
    left = out.image.right + scale(kGap);
  }
  if (right > left)
    out.caption = {left, 0, std::min(right, left + header.caption_width), header.height};
  return out;
}

GroupPart group_part_at(const GroupPlaces& places, int x, int y) {
  if (!inside(places.header, x, y)) return GroupPart::kNone;
  // The arrow is small: everything to its right and a little beside it counts.
  if (!places.arrow.empty() &&
      x >= places.arrow.left - (places.arrow.right - places.arrow.left) / 2)
    return GroupPart::kArrow;
  if (!places.box.empty() && x >= places.box.left &&
      x < std::max(places.box.right, places.caption.right))
    return GroupPart::kBox;
  return GroupPart::kCaption;
}

}  // namespace kestrelon
