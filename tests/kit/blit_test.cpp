#include "frame/kit/blit.h"

#include <gtest/gtest.h>

#include "tests/kit/picture.h"

namespace kestrelon {
namespace {

constexpr int kFar = INT32_MAX;

// Pixels that tell where they stand: row in the high byte, column in the low one.
Picture numbered(int width, int height) {
  Picture picture(width, height);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      picture.view().row(y)[x] = uint32_t(y + 1) << 8 | uint32_t(x + 1);
  return picture;
}

TEST(Blit, CutsWhatLiesOutsideEitherPicture) {
  Picture source = numbered(4, 3);
  for (int at = -5; at <= 5; ++at)
    for (int from = -5; from <= 5; ++from)
      for (const int size : {0, 1, 3, 100, kFar}) {
        Picture target(4, 4);
        blit(target.view(), {at, -at, size, size, from, from}, source.view());
        ASSERT_TRUE(target.margin_untouched());
        for (int y = 0; y < 4; ++y)
          for (int x = 0; x < 4; ++x) {
            const int64_t column = int64_t{x} - at, row = int64_t{y} + at;
            const bool copied = column >= 0 && column < size && row >= 0 && row < size &&
                                column + from >= 0 && column + from < 4 && row + from >= 0 &&
                                row + from < 3;
            const uint32_t want = copied ? source.at(int(column) + from, int(row) + from) : 0;
            ASSERT_EQ(target.at(x, y), want) << at << ' ' << from << ' ' << size;
          }
      }
}

TEST(Blit, ExtremeCoordinatesCopyNothing) {
  Picture source = numbered(4, 4), target(4, 4);
  for (const int far : {INT32_MIN, kFar}) {
    blit(target.view(), {far, 0, kFar, kFar, 0, 0}, source.view());
    blit(target.view(), {0, 0, kFar, kFar, 0, far}, source.view());
    blit(target.view(), {far, far, kFar, kFar, far == kFar ? INT32_MIN : kFar, 0}, source.view());
  }
  EXPECT_EQ(target, Picture(4, 4));
}

TEST(Blit, MovesWithinOnePictureInAnyDirection) {
  for (const bool flipped : {false, true})
    for (int dy = -2; dy <= 2; ++dy)
      for (int dx = -2; dx <= 2; ++dx) {
        Picture picture = numbered(6, 6);
        Picture before = picture;
        const PixelView view = flipped ? picture.flipped() : picture.view();
        const PixelView old = flipped ? before.flipped() : before.view();
        blit(view, {2 + dx, 2 + dy, 2, 2, 2, 2}, view);
        for (int y = 0; y < 2; ++y)
          for (int x = 0; x < 2; ++x)
            ASSERT_EQ(view.row(2 + dy + y)[2 + dx + x], old.row(2 + y)[2 + x]) << dx << ' ' << dy;
      }
}

TEST(MaskedBlit, KeepsTheTargetUnderTheKeyAtEveryWidth) {
  std::mt19937 random(3);
  for (int width = 1; width < 24; ++width) {
    Picture source(width, 5), target(width, 5, 0x777777);
    source.randomize(random, 3);
    const ColorRef key = to_color(0x204060);
    masked_blit(target.view(), {0, 0, width, 5, 0, 0}, source.view(), key | 0xFF000000);
    for (int y = 0; y < 5; ++y)
      for (int x = 0; x < width; ++x) {
        const bool is_key = (source.at(x, y) & kColorBits) == 0x204060;
        ASSERT_EQ(target.at(x, y), is_key ? 0x777777 : source.at(x, y));
      }
    ASSERT_TRUE(target.margin_untouched());
  }
}

TEST(StretchBlit, TakesThePixelUnderTheCentreAndTheLeftOneOfATie) {
  const auto stretched = [](int from, int to) {
    Picture source = numbered(from, 1), target(to, 2);
    stretch_blit(target.view(), {0, 0, to, 2}, source.view(), {0, 0, from, 1});
    std::vector<int> columns;
    for (int x = 0; x < to; ++x) {
      EXPECT_EQ(target.at(x, 0), target.at(x, 1));
      columns.push_back(int(target.at(x, 0) & 0xFF) - 1);
    }
    return columns;
  };
  using Columns = std::vector<int>;
  EXPECT_EQ(stretched(3, 7), (Columns{0, 0, 1, 1, 1, 2, 2}));
  EXPECT_EQ(stretched(4, 10), (Columns{0, 0, 0, 1, 1, 2, 2, 2, 3, 3}));
  EXPECT_EQ(stretched(5, 5), (Columns{0, 1, 2, 3, 4}));
  EXPECT_EQ(stretched(7, 3), (Columns{1, 3, 5}));
  EXPECT_EQ(stretched(8, 1), (Columns{3}));
}

TEST(StretchBlit, ACutTargetShowsTheSamePixelsAsTheWhole) {
  Picture source = numbered(5, 7);
  Picture whole(12, 20), part(4, 6);
  stretch_blit(whole.view(), {0, 0, 12, 20}, source.view(), {1, 1, 5, 7});
  stretch_blit(part.view(), {-3, -9, 9, 11}, source.view(), {1, 1, 5, 7});
  for (int y = 0; y < 6; ++y)
    for (int x = 0; x < 4; ++x) EXPECT_EQ(part.at(x, y), whole.at(x + 3, y + 9));
  const Picture before = part;
  stretch_blit(part.view(), {0, 0, 4, 6}, source.view(), {0, 0, 6, 7});
  stretch_blit(part.view(), {4, 6, 0, 0}, source.view(), {0, 0, 5, 7});
  EXPECT_EQ(part, before);
}

TEST(TileArea, OffsetsWrapInBothDirections) {
  Picture source = numbered(3, 2);
  for (const int origin : {0, 1, 3, 6, -1, -7, INT32_MIN, kFar}) {
    Picture target(10, 7);
    tile_area(target.view(), {1, 2, 9, 6}, source.view(), origin, origin / -2);
    ASSERT_TRUE(target.margin_untouched());
    for (int y = 0; y < 7; ++y)
      for (int x = 0; x < 10; ++x) {
        const bool inside = x >= 1 && x < 9 && y >= 2 && y < 6;
        const int64_t column = ((x + int64_t{origin}) % 3 + 3) % 3;
        const int64_t row = ((y + int64_t{origin / -2}) % 2 + 2) % 2;
        ASSERT_EQ(target.at(x, y), inside ? source.at(int(column), int(row)) : 0) << origin;
      }
  }
}

TEST(TileArea, HugeAreasAndEmptySourcesAreCut) {
  Picture source = numbered(3, 2), target(5, 5), same(5, 5);
  tile_area(target.view(), {INT32_MIN, INT32_MIN, kFar, kFar}, source.view(), 0, 0);
  tile_area(same.view(), {0, 0, 5, 5}, source.view(), 0, 0);
  EXPECT_EQ(target, same);
  tile_area(target.view(), {0, 0, 5, 5}, PixelView(), 0, 0);
  EXPECT_EQ(target, same);
}

}  // namespace
}  // namespace kestrelon
