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

TEST(RoundRect, RowsStandBackAsTheEllipseDoes) {
  EXPECT_EQ(round_rect_to_rects(11, 10, 3, 3), (Rects{{1, 0, 9, 1}, {0, 1, 10, 8}, {1, 8, 9, 9}}));
  EXPECT_EQ(round_rect_to_rects(11, 10, 6, 6),
            (Rects{{2, 0, 8, 1}, {1, 1, 9, 2}, {0, 2, 10, 7}, {1, 7, 9, 8}, {2, 8, 8, 9}}));
  EXPECT_EQ(round_rect_to_rects(11, 10, 1, 6), (Rects{{0, 0, 10, 9}}));
}

TEST(RoundRect, EveryShapeIsConvexSymmetricAndWithoutGaps) {
  for (int width = 2; width < 26; ++width)
    for (int height = 2; height < 26; ++height)
      for (int across = 1; across < 27; across += 3)
        for (int down = 1; down < 27; down += 2) {
          const Rects rects = round_rect_to_rects(width, height, across, down);
          ASSERT_EQ(rects.front().top, 0);
          ASSERT_EQ(rects.back().bottom, height - 1);
          for (size_t i = 0; i < rects.size(); ++i) {
            const PixelRect& r = rects[i];
            const PixelRect& opposite = rects[rects.size() - 1 - i];
            ASSERT_FALSE(r.empty()) << width << ',' << height << ' ' << across << ',' << down;
            ASSERT_EQ(r.left + r.right, width - 1);
            ASSERT_EQ(r.left, opposite.left);
            ASSERT_EQ(r.top + opposite.bottom, height - 1);
            if (i == 0) continue;
            ASSERT_EQ(r.top, rects[i - 1].bottom);
            if (i <= rects.size() / 2) {
              ASSERT_LT(r.left, rects[i - 1].left);
            }
          }
        }
}

TEST(RoundRect, TinyAndEnormousSizesHold) {
  for (const int side : {INT32_MIN, -1, 0, 1})
    EXPECT_TRUE(round_rect_to_rects(side, 5, 3, 3).empty());
  EXPECT_EQ(round_rect_to_rects(2, 2, 3, 3), (Rects{{0, 0, 1, 1}}));
  const Rects huge = round_rect_to_rects(INT32_MAX, INT32_MAX, INT32_MIN, INT32_MAX);
  for (size_t i = 1; i < huge.size(); ++i) ASSERT_EQ(huge[i].top, huge[i - 1].bottom);
  EXPECT_EQ(huge.back().bottom, INT32_MAX - 1);
}

}  // namespace
}  // namespace kestrelon
