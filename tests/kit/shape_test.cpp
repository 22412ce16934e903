#include "frame/kit/shape.h"

#include <gtest/gtest.h>

#include "tests/kit/picture.h"

namespace kestrelon {
namespace {

using Rects = std::vector<PixelRect>;

TEST(MaskToRects, JoinsEqualRowsOnlyWhereTheyTouch) {
  Picture picture(6, 5);
  for (const int y : {0, 1, 3}) {
    picture.view().row(y)[1] = picture.view().row(y)[2] = 0x123456;
    picture.view().row(y)[5] = 0x00FF00;
  }
  EXPECT_EQ(mask_to_rects(picture.view(), 0),
            (Rects{{1, 0, 3, 2}, {5, 0, 6, 2}, {1, 3, 3, 4}, {5, 3, 6, 4}}));
}

TEST(MaskToRects, TheKeyIsAColourAndTheAlphaByteIsNotPartOfIt) {
  Picture picture(3, 1, 0x80302010);
  EXPECT_TRUE(mask_to_rects(picture.view(), 0x102030).empty());
  EXPECT_EQ(mask_to_rects(picture.view(), 0x302010), (Rects{{0, 0, 3, 1}}));
  EXPECT_TRUE(mask_to_rects(PixelView(), 0).empty());
}

TEST(MaskToRects, CoversExactlyWhatDiffersAtEveryWidth) {
  std::mt19937 random(7);
  for (int width = 1; width < 40; ++width) {
    Picture picture(width, 17);
    picture.randomize(random, width % 3 == 0 ? 2 : 5);
    Picture covered(width, 17);
    for (const PixelRect& r : mask_to_rects(picture.view(), 0))
      for (int y = r.top; y < r.bottom; ++y)
        for (int x = r.left; x < r.right; ++x) ++covered.view().row(y)[x];
    for (int y = 0; y < 17; ++y)
      for (int x = 0; x < width; ++x)
        ASSERT_EQ(covered.at(x, y), (picture.at(x, y) & kColorBits) != 0) << width;
  }
}

}  // namespace
}  // namespace kestrelon
