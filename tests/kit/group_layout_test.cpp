#include "controls/us_group_box/group_layout.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

GroupHeader full(int width, int side) {
  GroupHeader out;
  out.width = width;
  out.height = 22;
  out.box = out.arrow = true;
  out.image_width = out.image_height = 16;
  out.caption_width = 60;
  out.side = side;
  return out;
}

bool overlap(const PixelRect& a, const PixelRect& b) {
  return !intersect(a, b).empty();
}

TEST(GroupLayout, KeepsPartsInsideAndApartAtEveryWidthAndScale) {
  for (const int dpi : {96, 144, 192})
    for (int side = 0; side < 3; ++side)
      for (int width = 1; width < 400; ++width) {
        GroupHeader header = full(width, side);
        header.scale = Scale(dpi);
        const GroupPlaces at = lay_out_group(header);
        const PixelRect parts[] = {at.box, at.image, at.caption, at.arrow};
        for (const PixelRect& part : parts) {
          if (part.empty()) continue;
          EXPECT_GE(part.left, 0);
          EXPECT_LE(part.right, width);
          for (const PixelRect& other : parts)
            EXPECT_FALSE(&other != &part && overlap(part, other)) << width;
        }
      }
}

TEST(GroupLayout, AlignsTheRowAndFindsItsParts) {
  const GroupPlaces left = lay_out_group(full(300, 0)), right = lay_out_group(full(300, 1)),
                    middle = lay_out_group(full(300, 2));
  EXPECT_LT(left.box.left, middle.box.left);
  EXPECT_LT(middle.box.left, right.box.left);
  EXPECT_LT(right.caption.right, right.arrow.left);
  EXPECT_EQ(group_part_at(left, left.caption.left + 3, 11), GroupPart::kBox);
  EXPECT_EQ(group_part_at(left, left.caption.right + 20, 11), GroupPart::kCaption);
  EXPECT_EQ(group_part_at(left, 299, 0), GroupPart::kArrow);
  EXPECT_EQ(group_part_at(left, 30, 22), GroupPart::kNone);
  EXPECT_EQ(group_part_at(left, -1, 5), GroupPart::kNone);
  GroupHeader bare = full(300, 0);
  bare.box = bare.arrow = false;
  EXPECT_EQ(group_part_at(lay_out_group(bare), 40, 5), GroupPart::kCaption);
  bare.height = 0;
  EXPECT_EQ(group_part_at(lay_out_group(bare), 40, 0), GroupPart::kNone);
}

}  // namespace
}  // namespace kestrelon
